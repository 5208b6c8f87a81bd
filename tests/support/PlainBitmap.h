#pragma once

#include <string>

namespace trovarium {

// A picture with a gradient as an uncompressed bitmap of 24 bits.
inline std::string plainBitmap(int width, int height)
{
    const int pixelBytes = (width * 3 + 3) / 4 * 4 * height;
    std::string bytes = "BM";
    // The last one before the pixels: a plane, and the bits of a pixel.
    for (const int value : {54 + pixelBytes, 0, 54, 40, width, height, 24 << 16 | 1})
        for (int shift = 0; shift < 32; shift += 8)
            bytes += static_cast<char>(value >> shift & 0xFF);
    bytes.append(24, '\0');
    for (int i = 0; i < pixelBytes; ++i)
        bytes += static_cast<char>(i % 251);
    return bytes;
}

} // namespace trovarium
