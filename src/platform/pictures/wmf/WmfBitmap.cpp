// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/wmf/WmfBitmap.h"

#include "platform/pictures/PictureHeader.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace trovarium {

namespace {

constexpr std::size_t OldHeaderLength = 12;
constexpr std::size_t NewHeaderLength = 40;
constexpr std::size_t LongestHeader = 124;
constexpr std::size_t FileHeaderLength = 14;
constexpr std::uint32_t Masks = 3; // the highest kind of compression that is read

// How far the lines stand behind the start of the bitmap's own header.
std::size_t linesOffset(WmfBytes bytes)
{
    const std::size_t header = littleEndian(bytes, 0, 4);
    const bool old = header == OldHeaderLength;
    const std::size_t bits = littleEndian(bytes, old ? 10 : 14, 2);
    std::size_t colors = old ? 0 : littleEndian(bytes, 32, 4);
    if (colors == 0 && bits <= 8)
        colors = std::size_t{1} << bits;
    const bool masksBehind = header == NewHeaderLength && littleEndian(bytes, 16, 4) == Masks;
    return header + (masksBehind ? 12 : 0) + colors * (old ? 3 : 4);
}

} // namespace

WmfBitmap::WmfBitmap(WmfBytes bytes)
    : m_bytes(bytes)
{
    if (bytes.size() < OldHeaderLength)
        refusePicture();
    const std::size_t header = littleEndian(bytes, 0, 4);
    if (header == OldHeaderLength) {
        m_width = littleEndian(bytes, 4, 2);
        m_height = littleEndian(bytes, 6, 2);
        return;
    }
    m_isKnown = header >= NewHeaderLength && header <= LongestHeader;
    if (!m_isKnown)
        return;
    if (bytes.size() < NewHeaderLength)
        refusePicture();
    m_isKnown = littleEndian(bytes, 16, 4) <= Masks;
    const auto height = static_cast<std::int32_t>(littleEndian(bytes, 8, 4));
    m_width = littleEndian(bytes, 4, 4);
    m_height = std::abs(static_cast<double>(height));
    m_topDown = height < 0;
}

double WmfBitmap::pixelCount() const
{
    return m_width * m_height;
}

QImage WmfBitmap::image(ReadBitmap read, const std::atomic<bool>& cancelled) const
{
    constexpr double MostPixels = 64'000'000;
    if (pixelCount() > MostPixels)
        refusePicture();
    const std::size_t offset = FileHeaderLength + linesOffset(m_bytes);
    std::vector<unsigned char> file(FileHeaderLength + m_bytes.size());
    file[0] = 'B';
    file[1] = 'M';
    for (std::size_t i = 0; i < 4; ++i)
        file[10 + i] = static_cast<unsigned char>(offset >> (8 * i) & 0xffU);
    std::copy(m_bytes.begin(), m_bytes.end(), file.begin() + FileHeaderLength);
    return read(std::move(file), cancelled).convertToFormat(QImage::Format_RGB32);
}

} // namespace trovarium
