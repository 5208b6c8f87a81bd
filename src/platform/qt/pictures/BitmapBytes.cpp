#include "platform/qt/pictures/BitmapBytes.h"

#include <QImage>
#include <QPainter>

#include <cstddef>
#include <cstdint>

namespace trovarium {

namespace {

void append(std::string& bytes, std::uint32_t value, int length)
{
    for (int i = 0; i < length; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xffU);
}

} // namespace

std::string bitmapBytes(const QImage& image)
{
    constexpr std::uint32_t HeaderLength = 14 + 40;
    constexpr std::uint32_t PixelsPerMetre = 3780; // 96 to the inch

    QImage opaque(image.size(), QImage::Format_RGB32);
    opaque.fill(Qt::white);
    QPainter(&opaque).drawImage(0, 0, image);

    const auto width = static_cast<std::uint32_t>(image.width());
    const auto height = static_cast<std::uint32_t>(image.height());
    const std::uint32_t lineLength = (width * 3 + 3) / 4 * 4;
    std::string bytes;
    bytes.reserve(HeaderLength + std::size_t{lineLength} * height);
    bytes += "BM";
    append(bytes, HeaderLength + lineLength * height, 4);
    append(bytes, 0, 4);
    append(bytes, HeaderLength, 4);
    append(bytes, 40, 4);
    append(bytes, width, 4);
    append(bytes, height, 4);
    append(bytes, 1, 2); // planes
    append(bytes, 24, 2);
    append(bytes, 0, 4); // not compressed
    append(bytes, lineLength * height, 4);
    append(bytes, PixelsPerMetre, 4);
    append(bytes, PixelsPerMetre, 4);
    append(bytes, 0, 4); // no colour table
    append(bytes, 0, 4);
    for (int y = opaque.height() - 1; y >= 0; --y) {
        const auto* line = reinterpret_cast<const QRgb*>(opaque.constScanLine(y));
        for (int x = 0; x < opaque.width(); ++x)
            append(bytes, line[x], 3); // blue, green, red
        append(bytes, 0, static_cast<int>(lineLength - width * 3));
    }
    return bytes;
}

} // namespace trovarium
