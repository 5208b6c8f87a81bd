#include "platform/pictures/ExifOrientation.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace trovarium {

namespace {

using Bytes = std::span<const unsigned char>;

constexpr int Upright = 1;
constexpr std::uint32_t OrientationTag = 0x0112;
constexpr std::uint32_t ShortType = 3;

// Big-endian where the TIFF header says so; 0 beyond the end, which no caller takes for a value.
std::uint32_t number(Bytes bytes, std::size_t position, std::size_t length, bool bigEndian)
{
    if (position > bytes.size() || bytes.size() - position < length)
        return 0;
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < length; ++i)
        value = value << 8U | bytes[position + (bigEndian ? i : length - 1 - i)];
    return value;
}

int orientationInTiff(Bytes tiff)
{
    constexpr std::size_t EntryLength = 12;
    if (tiff.size() < 8 || tiff[0] != tiff[1] || (tiff[0] != 'I' && tiff[0] != 'M'))
        return Upright;
    const bool bigEndian = tiff[0] == 'M';
    if (number(tiff, 2, 2, bigEndian) != 42)
        return Upright;
    const std::size_t directory = number(tiff, 4, 4, bigEndian);
    const std::size_t count = number(tiff, directory, 2, bigEndian);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t entry = directory + 2 + i * EntryLength;
        if (number(tiff, entry, 2, bigEndian) != OrientationTag)
            continue;
        const std::uint32_t value = number(tiff, entry + 8, 2, bigEndian);
        const bool known = number(tiff, entry + 2, 2, bigEndian) == ShortType && value >= 1 && value <= 8;
        return known ? static_cast<int>(value) : Upright;
    }
    return Upright;
}

} // namespace

int exifOrientation(Bytes file)
{
    constexpr std::string_view Signature{"Exif\0\0", 6};
    constexpr unsigned char App1 = 0xE1;
    constexpr unsigned char StartOfScan = 0xDA;
    constexpr unsigned char Padding = 0xFF;

    std::size_t position = 2; // behind the start of the image
    while (position + 4 <= file.size() && file[position] == 0xFF) {
        const unsigned char marker = file[position + 1];
        if (marker == Padding) {
            ++position;
            continue;
        }
        if (marker == StartOfScan)
            break;
        const std::size_t length = number(file, position + 2, 2, true);
        if (length < 2)
            break;
        const Bytes segment = file.subspan(position + 4).first(std::min(length - 2, file.size() - position - 4));
        if (marker == App1 && segment.size() > Signature.size()
            && std::equal(Signature.begin(), Signature.end(), segment.begin(),
                [](char a, unsigned char b) { return static_cast<unsigned char>(a) == b; }))
            return orientationInTiff(segment.subspan(Signature.size()));
        position += 2 + length;
    }
    return Upright;
}

} // namespace trovarium
