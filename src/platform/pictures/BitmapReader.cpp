// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/BitmapReader.h"

#include "platform/pictures/PictureHeader.h"
#include "platform/pictures/Reduction.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <span>
#include <utility>

namespace trovarium {

namespace {

using Bytes = std::span<const unsigned char>;

constexpr std::int64_t FileHeaderLength = 14;
constexpr std::size_t OldHeaderLength = 12;
constexpr std::size_t NewHeaderLength = 40;
constexpr std::size_t LongestHeader = 124;
constexpr std::size_t MostColors = 256;
constexpr QRgb Opaque = 0xff000000U;

enum class Compression : std::uint32_t { None, Runs8, Runs4, Masks };

// One color's bits within a pixel of 16 or 32 bits.
struct Channel {
    std::uint32_t mask = 0;

    // 0 to 255; a channel without bits gives 0.
    unsigned level(std::uint32_t pixel) const
    {
        if (mask == 0)
            return 0;
        const int shift = std::countr_zero(mask);
        const std::uint64_t most = mask >> shift;
        return static_cast<unsigned>((((pixel & mask) >> shift) * std::uint64_t{255} + most / 2) / most);
    }

    bool operator==(const Channel&) const = default;
};

using Channels = std::array<Channel, 4>; // red, green, blue and alpha
constexpr Channels WholeBytes = {{{0xff0000U}, {0xff00U}, {0xffU}, {}}};
constexpr Channels FiveBits = {{{0x7c00U}, {0x03e0U}, {0x001fU}, {}}};

struct Header {
    int width = 0;
    int height = 0;
    bool topDown = false;
    unsigned bits = 0;
    Compression compression = Compression::None;
    std::int64_t dataOffset = 0;
    Channels channels = WholeBytes;
    std::array<QRgb, MostColors> colors{};

    std::int64_t lineLength() const { return (std::int64_t{width} * bits + 31) / 32 * 4; }
    bool inRuns() const { return compression == Compression::Runs8 || compression == Compression::Runs4; }
    // Where a line of the file stands in the image.
    int row(int line) const { return topDown ? line : height - 1 - line; }
    Channel& alpha() { return channels[3]; }
    const Channel& alpha() const { return channels[3]; }
};

void checkHeader(const Header& header, std::int64_t fileLength)
{
    constexpr std::array<unsigned, 6> Depths = {1, 4, 8, 16, 24, 32};
    // Runs cover up to 255 pixels with two bytes; lines that aren't packed are counted exactly.
    constexpr std::int64_t MostPixelsInAByte = 128;
    const bool knownDepth = std::find(Depths.begin(), Depths.end(), header.bits) != Depths.end();
    const bool fits = header.compression == Compression::None
        || (header.compression == Compression::Runs8 && header.bits == 8)
        || (header.compression == Compression::Runs4 && header.bits == 4)
        || (header.compression == Compression::Masks && (header.bits == 16 || header.bits == 32));
    if (!knownDepth || !fits)
        refusePicture();
    checkSize(header.width, header.height, fileLength, MostPixelsInAByte);
    if (!header.inRuns() && header.dataOffset + header.lineLength() * header.height > fileLength)
        refusePicture();
}

void readColors(Header& header, const PictureFile& file, std::int64_t offset, std::size_t count, std::size_t length)
{
    const auto bytes = file.bytes(offset, std::min(count, MostColors) * length);
    header.colors.fill(Opaque);
    for (std::size_t i = 0; i < bytes.size() / length; ++i)
        header.colors[i] = Opaque | littleEndian(bytes, i * length, 3);
}

Header readHeader(const PictureFile& file)
{
    const auto start = file.bytes(0, FileHeaderLength + LongestHeader);
    if (start.size() < FileHeaderLength + OldHeaderLength)
        refusePicture();
    Header header;
    header.dataOffset = littleEndian(start, 10, 4);
    const Bytes info = Bytes(start).subspan(FileHeaderLength);
    const std::size_t length = littleEndian(info, 0, 4);
    const bool old = length == OldHeaderLength;
    if (!old && (length < NewHeaderLength || info.size() < NewHeaderLength))
        refusePicture();

    std::size_t colorCount = 0;
    if (old) {
        header.width = static_cast<int>(littleEndian(info, 4, 2));
        header.height = static_cast<int>(littleEndian(info, 6, 2));
        header.bits = littleEndian(info, 10, 2);
    } else {
        const auto height = static_cast<std::int32_t>(littleEndian(info, 8, 4));
        header.width = static_cast<std::int32_t>(littleEndian(info, 4, 4));
        header.topDown = height < 0;
        header.height = static_cast<int>(std::min(std::abs(std::int64_t{height}), std::int64_t{INT32_MAX}));
        header.bits = littleEndian(info, 14, 2);
        header.compression = Compression{littleEndian(info, 16, 4)};
        colorCount = littleEndian(info, 32, 4);
    }
    checkHeader(header, file.length());

    if (header.bits == 16)
        header.channels = FiveBits;
    constexpr std::size_t FourMasks = 16;
    if (header.compression == Compression::Masks && info.size() >= NewHeaderLength + FourMasks)
        for (std::size_t i = 0; i < (length >= NewHeaderLength + FourMasks ? 4 : 3); ++i)
            header.channels.at(i).mask = littleEndian(info, NewHeaderLength + i * 4, 4);
    if (header.bits <= 8)
        readColors(header, file, FileHeaderLength + static_cast<std::int64_t>(length),
            colorCount == 0 ? std::size_t{1} << header.bits : colorCount, old ? 3 : 4);
    return header;
}

void convertIndexes(const Header& header, Bytes line, QRgb* pixels)
{
    const unsigned perByte = 8 / header.bits;
    const unsigned mask = (1U << header.bits) - 1;
    for (unsigned x = 0; x < static_cast<unsigned>(header.width); ++x) {
        const unsigned shift = 8 - header.bits * (x % perByte + 1);
        pixels[x] = header.colors[line[x / perByte] >> shift & mask];
    }
}

void convertLine(const Header& header, Bytes line, QRgb* pixels)
{
    if (header.bits <= 8) {
        convertIndexes(header, line, pixels);
        return;
    }
    const std::size_t length = header.bits / 8;
    const bool plain = header.bits == 24 || (header.bits == 32 && header.channels == WholeBytes);
    const auto& [red, green, blue, alpha] = header.channels;
    const unsigned char* bytes = line.data();
    for (QRgb* pixel = pixels; pixel != pixels + header.width; ++pixel, bytes += length) {
        if (plain) {
            *pixel = Opaque | static_cast<unsigned>(bytes[2]) << 16U | static_cast<unsigned>(bytes[1]) << 8U | bytes[0];
            continue;
        }
        const std::uint32_t value = littleEndian(Bytes(bytes, length), 0, length);
        *pixel = (alpha.mask == 0 ? 255U : alpha.level(value)) << 24U | red.level(value) << 16U
            | green.level(value) << 8U | blue.level(value);
    }
}

// Calls `takeLine` with the number and bytes of `count` lines of the file from `first` on, which are read some hundred
// kilobytes at a time.
template <class TakeLine>
void forEachLine(const Header& header, const PictureFile& file, int first, int count, TakeLine takeLine)
{
    constexpr std::int64_t ChunkBytes = 1 << 18;
    const std::int64_t length = header.lineLength();
    const int most = static_cast<int>(std::clamp<std::int64_t>(ChunkBytes / length, 1, count));
    for (const int end = first + count; first < end; first += most) {
        const int now = std::min(most, end - first);
        const auto bytes = file.bytes(header.dataOffset + first * length, static_cast<std::size_t>(now * length));
        if (file.cancelled() || std::ssize(bytes) < now * length)
            refusePicture(); // it has become shorter meanwhile
        for (int i = 0; i < now; ++i)
            takeLine(first + i,
                Bytes(bytes).subspan(static_cast<std::size_t>(i * length), static_cast<std::size_t>(length)));
    }
}

// Fills the strip with the picture's lines from `top` on.
void readLines(const Header& header, const PictureFile& file, int top, QImage& strip)
{
    const int first = header.topDown ? top : header.height - top - strip.height();
    forEachLine(header, file, first, strip.height(), [&](int line, Bytes bytes) {
        convertLine(header, bytes, reinterpret_cast<QRgb*>(strip.scanLine(header.row(line) - top)));
    });
}

// Some programs write alpha 0 into all pixels of an opaque picture.
bool alphaIsMeant(const Header& header, const PictureFile& file)
{
    const std::size_t length = header.bits / 8;
    for (int line = 0; line < header.height; ++line) {
        const auto bytes =
            file.bytes(header.dataOffset + line * header.lineLength(), static_cast<std::size_t>(header.width) * length);
        for (std::size_t at = 0; at + length <= bytes.size(); at += length) {
            if ((littleEndian(bytes, at, length) & header.alpha().mask) != 0)
                return true;
        }
    }
    return false;
}

QImage readPlain(Header header, const PictureFile& file, int factor)
{
    if (header.alpha().mask != 0 && !alphaIsMeant(header, file))
        header.alpha().mask = 0;
    const bool hasAlpha = header.alpha().mask != 0;
    const auto linesFrom = [&](int top, int count) {
        QImage strip = newImage(QSize(header.width, count), hasAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
        readLines(header, file, top, strip);
        return strip;
    };
    if (factor == 1)
        return linesFrom(0, header.height);
    ReducedImage image(QSize(header.width, header.height), factor, hasAlpha);
    const int count = linesAtOnce(header.width);
    for (int top = 0; top < header.height; top += count)
        image.add(linesFrom(top, std::min(count, header.height - top)));
    return image.take();
}

QImage readRuns(const Header& header, const PictureFile& file, int factor)
{
    constexpr unsigned EndOfLine = 0;
    constexpr unsigned EndOfBitmap = 1;
    constexpr unsigned Move = 2;
    QImage image = newImage(QSize(header.width, header.height), QImage::Format_Indexed8);
    image.setColorTable(QList<QRgb>(header.colors.begin(), header.colors.end()));
    image.fill(0);
    // From the bottom up, and within the image whatever the file says.
    int x = 0;
    int line = 0;
    const auto skip = [&](unsigned columns, unsigned lines) {
        x = std::min(x + static_cast<int>(columns), header.width);
        line = std::min(line + static_cast<int>(lines), header.height);
    };
    // The color at a place in a run: a byte each, or its two halves in turn.
    const auto put = [&](unsigned byte, unsigned place) {
        const unsigned index = header.bits == 8 ? byte : place % 2 == 0 ? byte >> 4U : byte & 15U;
        if (x < header.width && line < header.height)
            image.scanLine(header.row(line))[x] = static_cast<unsigned char>(index);
        skip(1, 0);
    };
    ByteStream stream(file, header.dataOffset);
    while (stream.has(2) && line < header.height) {
        const unsigned count = stream.number(1);
        const unsigned value = stream.number(1);
        if (count > 0) {
            for (unsigned i = 0; i < count; ++i)
                put(value, i);
        } else if (value == EndOfLine) {
            x = 0;
            skip(0, 1);
        } else if (value == EndOfBitmap) {
            break;
        } else if (value == Move) {
            if (!stream.has(2))
                break;
            const unsigned columns = stream.number(1);
            skip(columns, stream.number(1));
        } else {
            const std::size_t length = header.bits == 8 ? value : (value + 1) / 2;
            unsigned place = 0;
            for (std::size_t i = 0; i < length && stream.has(1); ++i) {
                const unsigned byte = stream.number(1);
                for (unsigned end = std::min(value, place + 8 / header.bits); place < end; ++place)
                    put(byte, place);
            }
            stream.skip(length % 2);
        }
    }
    return reduced(std::move(image), factor, file.cancelled());
}

} // namespace

QImage readBitmap(const PictureFile& file, const std::function<int(QSize size)>& factor)
{
    const Header header = readHeader(file);
    const int chosen = factor(QSize(header.width, header.height));
    if (chosen == 0)
        return {};
    return header.inRuns() ? readRuns(header, file, chosen) : readPlain(header, file, chosen);
}

} // namespace trovarium
