// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace trovarium {

class Desktop;
class PictureBox;
class Shape;

// Two ways to show how far a run is. Both tell screen readers the percent through the picture box; its form gives
// it a name and an `AccessibleValue` of 0 at the start.

// Draws `bar` inside its outline at `value` of `maximum` and lets pending events run. Outside 0 to `maximum`
// nothing happens, and no events run.
void growBar(Desktop& desktop, PictureBox& bar, const Shape& outline, float value, std::int16_t maximum);

// Draws `bar` inside `box` that many units of the box's scale wide, and runs no events. The bar may end beyond
// the box, which then stands at 100 percent; a negative width is "Invalid property value".
void fillBar(PictureBox& box, Shape& bar, float width);

} // namespace trovarium
