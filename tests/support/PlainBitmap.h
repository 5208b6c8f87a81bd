#pragma once

#include <string>

namespace trovarium {

// A picture of one colour as an uncompressed bitmap.
std::string plainBitmap(int width, int height);

} // namespace trovarium
