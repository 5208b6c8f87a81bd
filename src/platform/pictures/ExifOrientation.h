#pragma once

#include <span>

namespace trovarium {

// How a JPEG file says that its pixels are to be turned, 1 to 8 as in tag 0x0112 of EXIF 2.3, section
// 4.6.4: 1 upright, 2 mirrored left to right, 3 upside down, 4 mirrored top to bottom, 5 rows and columns
// swapped, 6 to be turned clockwise, 7 swapped over the other diagonal, 8 to be turned anticlockwise.
// A file without a readable value stands as it is: 1.
int exifOrientation(std::span<const unsigned char> file);

} // namespace trovarium
