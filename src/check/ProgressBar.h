#pragma once

#include <cstdint>

namespace trovarium {

class Desktop;
class PictureBox;
class Shape;

// Draws `bar` inside its outline at `value` of `maximum` and lets pending events run. Outside 0 to `maximum`
// nothing happens, and no events run.
void growBar(Desktop& desktop, PictureBox& bar, const Shape& outline, float value, std::int16_t maximum);

} // namespace trovarium
