#include "support/PlainBitmap.h"

#include <cstdint>

namespace trovarium {

namespace {

void appendLittleEndian(std::string& bytes, std::uint32_t value, int count)
{
    for (int i = 0; i < count; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFFU);
}

} // namespace

std::string plainBitmap(int width, int height)
{
    const std::uint32_t pixelBytes = static_cast<std::uint32_t>((width * 3 + 3) / 4 * 4 * height);
    std::string bytes = "BM";
    for (const std::uint32_t value :
        {54 + pixelBytes, 0U, 54U, 40U, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)})
        appendLittleEndian(bytes, value, 4);
    appendLittleEndian(bytes, 1, 2);
    appendLittleEndian(bytes, 24, 2);
    bytes.append(24, '\0');
    for (std::uint32_t i = 0; i < pixelBytes; ++i)
        bytes += static_cast<char>(i % 251);
    return bytes;
}

} // namespace trovarium
