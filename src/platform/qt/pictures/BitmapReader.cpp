#include "platform/qt/pictures/BitmapReader.h"

#include "platform/qt/pictures/PictureHeader.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <span>
#include <vector>

namespace trovarium {

namespace {

using Bytes = std::span<const unsigned char>;

constexpr std::int64_t FileHeaderLength = 14;
constexpr std::size_t OldHeaderLength = 12;
constexpr std::size_t NewHeaderLength = 40;
constexpr std::size_t LongestHeader = 124;
constexpr std::size_t MostColours = 256;
constexpr QRgb Opaque = 0xff000000U;

enum class Compression : std::uint32_t { None, Runs8, Runs4, Masks };

[[noreturn]] void refuse()
{
    throw Failure(FailureKind::InvalidPicture);
}

// One colour's bits within a pixel of 16 or 32 bits.
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
};

struct Header {
    int width = 0;
    int height = 0;
    bool topDown = false;
    unsigned bits = 0;
    Compression compression = Compression::None;
    std::int64_t dataOffset = 0;
    Channel red, green, blue, alpha;
    std::array<QRgb, MostColours> colours{};

    std::int64_t lineLength() const { return (std::int64_t{width} * bits + 31) / 32 * 4; }
    bool inRuns() const { return compression == Compression::Runs8 || compression == Compression::Runs4; }
    // Where a line of the file stands in the image.
    int row(int line) const { return topDown ? line : height - 1 - line; }
    bool hasPlainMasks() const
    {
        return red.mask == 0xff0000U && green.mask == 0xff00U && blue.mask == 0xffU && alpha.mask == 0;
    }
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
        refuse();
    checkSize(header.width, header.height, fileLength, MostPixelsInAByte);
    if (!header.inRuns() && header.dataOffset + header.lineLength() * header.height > fileLength)
        refuse();
}

void readMasks(Header& header, Bytes behindNewHeader, bool withAlpha)
{
    const auto mask = [&](std::size_t index) { return Channel{littleEndian(behindNewHeader, index * 4, 4)}; };
    header.red = mask(0);
    header.green = mask(1);
    header.blue = mask(2);
    if (withAlpha)
        header.alpha = mask(3);
}

void readColours(Header& header, const PictureBytes& file, std::int64_t offset, std::size_t count, std::size_t length)
{
    const auto bytes = file.bytes(offset, std::min(count, MostColours) * length);
    header.colours.fill(Opaque);
    for (std::size_t i = 0; i < bytes.size() / length; ++i)
        header.colours[i] = Opaque | littleEndian(bytes, i * length, 3);
}

Header readHeader(const PictureBytes& file)
{
    const auto start = file.bytes(0, FileHeaderLength + LongestHeader);
    if (start.size() < FileHeaderLength + OldHeaderLength)
        refuse();
    Header header;
    header.dataOffset = littleEndian(start, 10, 4);
    const Bytes info = Bytes(start).subspan(FileHeaderLength);
    const std::size_t length = littleEndian(info, 0, 4);
    const bool old = length == OldHeaderLength;
    if (!old && (length < NewHeaderLength || info.size() < NewHeaderLength))
        refuse();

    std::size_t colourCount = 0;
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
        colourCount = littleEndian(info, 32, 4);
    }
    checkHeader(header, file.length());

    if (header.bits == 16)
        header.red.mask = 0x7c00U, header.green.mask = 0x03e0U, header.blue.mask = 0x001fU;
    else
        header.red.mask = 0xff0000U, header.green.mask = 0xff00U, header.blue.mask = 0xffU;
    constexpr std::size_t FourMasks = 16;
    if (header.compression == Compression::Masks && info.size() >= NewHeaderLength + FourMasks)
        readMasks(header, info.subspan(NewHeaderLength), length >= NewHeaderLength + FourMasks);
    if (header.bits <= 8)
        readColours(header, file, FileHeaderLength + static_cast<std::int64_t>(length),
            colourCount == 0 ? std::size_t{1} << header.bits : colourCount, old ? 3 : 4);
    return header;
}

void convertIndexes(const Header& header, Bytes line, QRgb* pixels)
{
    const unsigned perByte = 8 / header.bits;
    const unsigned mask = (1U << header.bits) - 1;
    for (unsigned x = 0; x < static_cast<unsigned>(header.width); ++x) {
        const unsigned shift = 8 - header.bits * (x % perByte + 1);
        pixels[x] = header.colours[line[x / perByte] >> shift & mask];
    }
}

void convertLine(const Header& header, Bytes line, QRgb* pixels)
{
    if (header.bits <= 8) {
        convertIndexes(header, line, pixels);
        return;
    }
    const std::size_t length = header.bits / 8;
    const bool plain = header.bits == 24 || (header.bits == 32 && header.hasPlainMasks());
    const unsigned char* bytes = line.data();
    for (QRgb* pixel = pixels; pixel != pixels + header.width; ++pixel, bytes += length) {
        if (plain) {
            *pixel = Opaque | static_cast<unsigned>(bytes[2]) << 16U | static_cast<unsigned>(bytes[1]) << 8U | bytes[0];
            continue;
        }
        const std::uint32_t value = littleEndian(Bytes(bytes, length), 0, length);
        const unsigned alpha = header.alpha.mask == 0 ? 255U : header.alpha.level(value);
        *pixel =
            alpha << 24U | header.red.level(value) << 16U | header.green.level(value) << 8U | header.blue.level(value);
    }
}

bool readLines(const Header& header, const PictureBytes& file, QImage& image, const std::atomic<bool>& cancelled)
{
    constexpr std::int64_t ChunkBytes = 1 << 18;
    const std::int64_t length = header.lineLength();
    const int linesAtOnce = static_cast<int>(std::clamp<std::int64_t>(ChunkBytes / length, 1, header.height));
    for (int first = 0; first < header.height; first += linesAtOnce) {
        if (cancelled)
            return false;
        const int count = std::min(linesAtOnce, header.height - first);
        const auto bytes = file.bytes(header.dataOffset + first * length, static_cast<std::size_t>(count * length));
        if (bytes.size() < static_cast<std::size_t>(count * length))
            refuse(); // it has become shorter meanwhile
        for (int i = 0; i < count; ++i)
            convertLine(header,
                Bytes(bytes).subspan(static_cast<std::size_t>(i * length), static_cast<std::size_t>(length)),
                reinterpret_cast<QRgb*>(image.scanLine(header.row(first + i))));
    }
    return true;
}

// Paints runs and single pixels from the bottom up, and keeps within the image whatever the file says.
class RunPainter {
public:
    RunPainter(const Header& header, QImage& image)
        : m_header(header)
        , m_image(image)
    {
    }

    bool atEnd() const { return m_line >= m_header.height; }
    void nextLine() { skip(-m_x, 1); }
    void skip(int columns, int lines)
    {
        m_x += columns;
        m_line = std::min(m_line + lines, m_header.height);
    }
    void put(unsigned index)
    {
        if (m_x < m_header.width && !atEnd())
            reinterpret_cast<QRgb*>(m_image.scanLine(m_header.row(m_line)))[m_x] = m_header.colours[index];
        m_x = std::min(m_x + 1, m_header.width);
    }

private:
    const Header& m_header;
    QImage& m_image;
    int m_x = 0;
    int m_line = 0;
};

// The colour at a place in a run: a byte each, or its two halves in turn.
unsigned runIndex(const Header& header, unsigned byte, unsigned place)
{
    if (header.bits == 8)
        return byte;
    return place % 2 == 0 ? byte >> 4U : byte & 15U;
}

bool readRuns(const Header& header, const PictureBytes& file, QImage& image, const std::atomic<bool>& cancelled)
{
    constexpr unsigned EndOfLine = 0;
    constexpr unsigned EndOfBitmap = 1;
    constexpr unsigned Move = 2;
    const auto bytes = file.bytes(
        header.dataOffset, static_cast<std::size_t>(std::max<std::int64_t>(0, file.length() - header.dataOffset)));
    image.fill(header.colours[0]);
    RunPainter painter(header, image);
    std::size_t at = 0;
    while (at + 2 <= bytes.size() && !painter.atEnd()) {
        if (cancelled)
            return false;
        const unsigned count = bytes[at];
        const unsigned value = bytes[at + 1];
        at += 2;
        if (count > 0) {
            for (unsigned i = 0; i < count; ++i)
                painter.put(runIndex(header, value, i));
        } else if (value == EndOfLine) {
            painter.nextLine();
        } else if (value == EndOfBitmap) {
            break;
        } else if (value == Move) {
            if (at + 2 > bytes.size())
                break;
            painter.skip(bytes[at], bytes[at + 1]);
            at += 2;
        } else {
            const std::size_t length = header.bits == 8 ? value : (value + 1) / 2;
            for (unsigned i = 0; i < value && at + i * header.bits / 8 < bytes.size(); ++i)
                painter.put(runIndex(header, bytes[at + i * header.bits / 8], i));
            at += (length + 1) / 2 * 2;
        }
    }
    return true;
}

} // namespace

QImage readBitmap(const PictureBytes& file, const std::atomic<bool>& cancelled)
{
    const Header header = readHeader(file);
    QImage image(header.width, header.height, header.alpha.mask == 0 ? QImage::Format_RGB32 : QImage::Format_ARGB32);
    if (image.isNull())
        throw Failure(FailureKind::OutOfMemory);
    const bool done =
        header.inRuns() ? readRuns(header, file, image, cancelled) : readLines(header, file, image, cancelled);
    return done ? image : QImage();
}

} // namespace trovarium
