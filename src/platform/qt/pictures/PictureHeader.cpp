#include "platform/qt/pictures/PictureHeader.h"

#include "runtime/Failure.h"

#include <algorithm>
#include <cstdlib>
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

std::uint32_t little(const Bytes& bytes, std::size_t position, std::size_t length)
{
    std::uint32_t value = 0;
    for (std::size_t i = length; i-- > 0;)
        value = value << 8U | bytes.at(position + i);
    return value;
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
    const Bytes head = file.bytes(0, 6);
    const std::string_view text(reinterpret_cast<const char*>(head.data()), head.size());
    if (text.starts_with("\xFF\xD8\xFF"))
        return PictureFormat::Jpeg;
    if (text == "GIF87a" || text == "GIF89a")
        return PictureFormat::Gif;
    if (text.starts_with("BM"))
        return PictureFormat::Bitmap;
    refuse();
}

void checkSize(std::int64_t width, std::int64_t height, std::int64_t length, std::int64_t mostPixelsInAByte)
{
    const std::int64_t pixels = width * height;
    if (width <= 0 || height <= 0 || pixels > MostPixels
        || (pixels > HarmlessPixels && pixels / mostPixelsInAByte > length))
        refuse();
}

void checkBitmap(const PictureFile& file)
{
    constexpr std::int64_t FileHeaderLength = 14;
    constexpr std::uint32_t OldHeaderLength = 12;
    constexpr std::uint32_t ShortestNewHeader = 40;
    constexpr std::int64_t MostPixelsInARun = 255; // which takes two bytes
    enum Compression : std::uint32_t { None, Runs8, Runs4, Masks };

    const std::int64_t dataOffset = little(exactBytes(file, 10, 4), 0, 4);
    const std::uint32_t headerLength = little(exactBytes(file, FileHeaderLength, 4), 0, 4);
    std::int64_t width = 0;
    std::int64_t height = 0;
    std::int64_t bitsPerPixel = 0;
    std::uint32_t compression = None;
    if (headerLength == OldHeaderLength) {
        const Bytes header = exactBytes(file, FileHeaderLength, OldHeaderLength);
        width = little(header, 4, 2);
        height = little(header, 6, 2);
        bitsPerPixel = little(header, 10, 2);
    } else if (headerLength >= ShortestNewHeader) {
        const Bytes header = exactBytes(file, FileHeaderLength, ShortestNewHeader);
        width = static_cast<std::int32_t>(little(header, 4, 4));
        height = std::abs(std::int64_t{static_cast<std::int32_t>(little(header, 8, 4))}); // negative: top down
        bitsPerPixel = little(header, 14, 2);
        compression = little(header, 16, 4);
    } else {
        refuse();
    }

    const bool packed = compression == Runs8 || compression == Runs4;
    if (compression > Masks)
        refuse();
    checkSize(width, height, file.length(), packed ? MostPixelsInARun / 2 + 1 : HarmlessPixels);
    const std::int64_t lineLength = (width * bitsPerPixel + 31) / 32 * 4;
    if (!packed && dataOffset + lineLength * height > file.length())
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
    const std::int64_t right = little(image, 1, 2) + little(image, 5, 2);
    const std::int64_t bottom = little(image, 3, 2) + little(image, 7, 2);
    checkSize(std::max<std::int64_t>(little(screen, 0, 2), right), std::max<std::int64_t>(little(screen, 2, 2), bottom),
        file.length(), MostPixelsInAByte);
}

} // namespace trovarium
