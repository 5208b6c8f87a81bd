#include "platform/qt/pictures/PictureHeader.h"

#include "platform/qt/pictures/wmf/WmfFile.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace trovarium {

namespace {

using Bytes = std::vector<unsigned char>;

constexpr std::int64_t MostPixels = 500'000'000;
// Below this a torn file may well promise more than it holds: decoding it costs little.
constexpr std::int64_t HarmlessPixels = 64'000'000;

[[noreturn]] void refuse()
{
    throw Failure(FailureKind::InvalidPicture);
}

Bytes exactBytes(const PictureFile& file, std::int64_t offset, std::size_t length)
{
    Bytes bytes = file.bytes(offset, length);
    if (bytes.size() < length)
        refuse();
    return bytes;
}

std::int64_t colourTableLength(unsigned packed)
{
    return (packed & 0x80U) != 0 ? std::int64_t{3} << ((packed & 7U) + 1) : 0;
}

std::int64_t behindSubBlocks(const PictureFile& file, std::int64_t offset)
{
    while (const unsigned length = exactBytes(file, offset, 1)[0])
        offset += 1 + length;
    return offset + 1;
}

} // namespace

PictureFormat formatOf(const PictureFile& file)
{
    const Bytes head = file.bytes(0, 12);
    const std::string_view text(reinterpret_cast<const char*>(head.data()), head.size());
    if (text.starts_with("\xFF\xD8\xFF"))
        return PictureFormat::Jpeg;
    if (text.starts_with("GIF87a") || text.starts_with("GIF89a"))
        return PictureFormat::Gif;
    if (text.starts_with("BM"))
        return PictureFormat::Bitmap;
    if (WmfFile::startsWith(head))
        return PictureFormat::Metafile;
    if (text.starts_with("\x89PNG\r\n\x1A\n"))
        return PictureFormat::Png;
    if (text.starts_with("RIFF") && text.ends_with("WEBP"))
        return PictureFormat::WebP;
    for (const std::string_view start : {std::string_view("II*\0", 4), std::string_view("MM\0*", 4)})
        if (text.starts_with(start))
            return PictureFormat::Tiff;
    refuse();
}

void checkSize(std::int64_t width, std::int64_t height, std::int64_t length, std::int64_t mostPixelsInAByte)
{
    if (width <= 0 || height <= 0 || height > MostPixels / width)
        refuse();
    const std::int64_t pixels = width * height;
    if (pixels > HarmlessPixels && pixels / mostPixelsInAByte > length)
        refuse();
}

void checkGif(const PictureFile& file)
{
    constexpr unsigned Extension = '!';
    constexpr unsigned ImageStart = ',';
    constexpr std::int64_t ScreenEnd = 13;
    // The table of codes has 4096 entries, so that none stands for more pixels; the longest takes 12 bits.
    constexpr std::int64_t MostPixelsInAByte = 4096 * 8 / 12 + 1;

    const Bytes screen = exactBytes(file, 6, ScreenEnd - 6);
    std::int64_t offset = ScreenEnd + colourTableLength(screen[4]);
    while (exactBytes(file, offset, 1)[0] == Extension)
        offset = behindSubBlocks(file, offset + 2);
    const Bytes image = exactBytes(file, offset, 10);
    if (image[0] != ImageStart)
        refuse();
    const std::int64_t right = littleEndian(image, 1, 2) + littleEndian(image, 5, 2);
    const std::int64_t bottom = littleEndian(image, 3, 2) + littleEndian(image, 7, 2);
    checkSize(std::max<std::int64_t>(littleEndian(screen, 0, 2), right),
        std::max<std::int64_t>(littleEndian(screen, 2, 2), bottom), file.length(), MostPixelsInAByte);
}

std::uint32_t littleEndian(std::span<const unsigned char> bytes, std::size_t position, std::size_t length)
{
    std::uint32_t value = 0;
    for (std::size_t i = length; i-- > 0;)
        value = value << 8U | bytes[position + i];
    return value;
}

std::uint32_t bigEndian(std::span<const unsigned char> bytes, std::size_t position, std::size_t length)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < length; ++i)
        value = value << 8U | bytes[position + i];
    return value;
}

} // namespace trovarium
