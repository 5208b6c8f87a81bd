#pragma once

#include <string>

class QImage;

namespace trovarium {

// The whole of an uncompressed 24-bit bitmap file, alpha on white.
// Source: BITMAPFILEHEADER and BITMAPINFOHEADER of the Windows bitmap.
std::string bitmapBytes(const QImage& image);

} // namespace trovarium
