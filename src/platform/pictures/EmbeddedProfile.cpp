#include "platform/pictures/EmbeddedProfile.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include <zlib.h>

namespace trovarium {

namespace {

using Bytes = std::vector<unsigned char>;

// Those of printers take up to three.
constexpr std::size_t MostBytes = std::size_t{16} << 20;

std::string_view textIn(const Bytes& bytes, std::size_t position, std::size_t length)
{
    return std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()).substr(position, length);
}

Bytes inflated(const Bytes& packed, std::size_t start)
{
    Bytes bytes(MostBytes);
    uLongf length = MostBytes;
    if (uncompress(bytes.data(), &length, packed.data() + start, packed.size() - start) != Z_OK)
        return {};
    bytes.resize(length);
    return bytes;
}

Bytes profileInPng(const PictureFile& file)
{
    constexpr int MostChunks = 100; // it stands before the pixels, among a dozen at most
    std::int64_t offset = 8;
    for (int i = 0; i < MostChunks; ++i) {
        const Bytes head = file.bytes(offset, 8);
        if (head.size() < 8 || textIn(head, 4, 4) == "IDAT")
            break;
        const std::size_t length = bigEndian(head, 0, 4);
        if (textIn(head, 4, 4) == "iCCP") {
            const Bytes data = file.bytes(offset + 8, std::min(length, MostBytes));
            const auto nameEnd = static_cast<std::size_t>(std::find(data.begin(), data.end(), 0) - data.begin());
            return nameEnd + 2 < data.size() ? inflated(data, nameEnd + 2) : Bytes{};
        }
        offset += static_cast<std::int64_t>(length) + 12;
    }
    return {};
}

Bytes profileInWebP(const PictureFile& file)
{
    constexpr std::size_t BehindFlags = 30; // the header, and what says that there is more than an image
    const Bytes head = file.bytes(0, BehindFlags + 8);
    if (head.size() < BehindFlags + 8 || textIn(head, 12, 4) != "VP8X" || textIn(head, BehindFlags, 4) != "ICCP")
        return {};
    return file.bytes(BehindFlags + 8, std::min<std::size_t>(littleEndian(head, BehindFlags + 4, 4), MostBytes));
}

Bytes profileInTiff(const PictureFile& file)
{
    constexpr std::uint32_t ProfileTag = 34675;
    constexpr std::size_t EntryLength = 12;
    const Bytes head = file.bytes(0, 8);
    if (head.size() < 8)
        return {};
    const auto number = head[0] == 'M' ? bigEndian : littleEndian;
    const std::int64_t directory = number(head, 4, 4);
    const Bytes count = file.bytes(directory, 2);
    if (count.size() < 2)
        return {};
    const Bytes entries = file.bytes(directory + 2, number(count, 0, 2) * EntryLength);
    for (std::size_t at = 0; at + EntryLength <= entries.size(); at += EntryLength)
        if (number(entries, at, 2) == ProfileTag)
            return file.bytes(number(entries, at + 8, 4), std::min<std::size_t>(number(entries, at + 4, 4), MostBytes));
    return {};
}

} // namespace

std::vector<unsigned char> embeddedProfile(const PictureFile& file, PictureFormat format)
{
    switch (format) {
    case PictureFormat::Png:
        return profileInPng(file);
    case PictureFormat::WebP:
        return profileInWebP(file);
    case PictureFormat::Tiff:
        return profileInTiff(file);
    default:
        return {};
    }
}

} // namespace trovarium
