#include "platform/pictures/PictureHeader.h"

#include "platform/pictures/wmf/WmfFile.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace trovarium {

namespace {

std::size_t colorTableLength(unsigned packed)
{
    return (packed & 0x80U) != 0 ? std::size_t{3} << ((packed & 7U) + 1) : 0;
}

} // namespace

PictureFormat formatOf(const PictureFile& file)
{
    const std::vector<unsigned char> head = file.bytes(0, 12);
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
    refusePicture();
}

QSize checkGif(const PictureBytes& file)
{
    constexpr unsigned Extension = '!';
    constexpr unsigned ImageStart = ',';
    constexpr std::int64_t SignatureLength = 6;
    // The table of codes has 4096 entries, so that none stands for more pixels; the longest takes 12 bits.
    constexpr std::int64_t MostPixelsInAByte = 4096 * 8 / 12 + 1;

    ByteStream stream(file, SignatureLength);
    unsigned width = stream.number(2);
    unsigned height = stream.number(2);
    const unsigned packed = stream.number(1);
    stream.skip(2 + colorTableLength(packed));
    unsigned kind = stream.number(1);
    for (; kind == Extension; kind = stream.number(1)) {
        stream.skip(1);
        while (const unsigned length = stream.number(1))
            stream.skip(length);
    }
    if (kind != ImageStart)
        refusePicture();
    const unsigned left = stream.number(2);
    const unsigned top = stream.number(2);
    width = std::max(width, left + stream.number(2));
    height = std::max(height, top + stream.number(2));
    checkSize(width, height, file.length(), MostPixelsInAByte);
    return {static_cast<int>(width), static_cast<int>(height)};
}

} // namespace trovarium
