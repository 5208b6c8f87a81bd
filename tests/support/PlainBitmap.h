#pragma once

#include <string>

namespace trovarium {

// A picture with a gradient as an uncompressed bitmap of 24 bits.
std::string plainBitmap(int width, int height);

} // namespace trovarium
