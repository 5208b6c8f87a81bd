// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/Reduction.h"

#include "runtime/Failure.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include <sys/mman.h>

namespace trovarium {

namespace {

// The viewing frame shows no picture that is larger than itself at a twentieth of the size, so none with more pixels...
constexpr std::int64_t MostInFrame = 103'000'000;
// ...and a screen has fewer than these.
constexpr std::int64_t MostOnScreen = 32'000'000;

QImage::Format formatFor(bool hasAlpha)
{
    return hasAlpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
}

} // namespace

std::int64_t pixelCount(QSize size)
{
    return std::int64_t{size.width()} * size.height();
}

QImage newImage(QSize size, QImage::Format format)
{
    QImage image(size, format);
    if (image.isNull())
        throw Failure(FailureKind::OutOfMemory);
    // Asks for huge pages: with the usual ones the page faults take as long as filling in the pixels.
    constexpr std::uintptr_t LargePage = std::uintptr_t{2} << 20U;
    const auto first = reinterpret_cast<std::uintptr_t>(image.bits());
    const std::uintptr_t start = (first + LargePage - 1) / LargePage * LargePage;
    if (const std::uintptr_t end = first + static_cast<std::uintptr_t>(image.sizeInBytes()); end > start + LargePage)
        ::madvise(image.bits() + (start - first), end - start, MADV_HUGEPAGE);
    return image;
}

int reductionFor(QSize size, int longerSide)
{
    if (longerSide > 0)
        return static_cast<int>(
            std::max<std::int64_t>(1, std::max(size.width(), size.height()) / (Reserve * std::int64_t{longerSide})));
    const double times = static_cast<double>(pixelCount(size)) / static_cast<double>(MostOnScreen);
    return pixelCount(size) <= MostInFrame ? 1 : static_cast<int>(std::ceil(std::sqrt(times)));
}

ReducedImage::ReducedImage(QSize size, int factor, bool hasAlpha)
    : m_size(size)
    , m_factor(factor)
    , m_image(newImage(
          QSize((size.width() + factor - 1) / factor, (size.height() + factor - 1) / factor), formatFor(hasAlpha)))
    , m_sums(static_cast<std::size_t>(m_image.width()))
{
}

void ReducedImage::add(const QImage& lines)
{
    const QImage converted = lines.convertToFormat(m_image.format());
    if (converted.isNull())
        throw Failure(FailureKind::OutOfMemory);
    for (int i = 0; i < converted.height() && m_row < m_image.height(); ++i)
        addLine(reinterpret_cast<const QRgb*>(converted.constScanLine(i)));
}

void ReducedImage::addLine(const QRgb* pixels)
{
    const QRgb* const end = pixels + m_size.width();
    for (std::array<std::uint64_t, 4>& sums : m_sums) {
        std::uint32_t blue = 0, green = 0, red = 0, alpha = 0;
        for (const QRgb* const next = std::min(end, pixels + m_factor); pixels != next; ++pixels) {
            blue += *pixels & 0xffU;
            green += *pixels >> 8U & 0xffU;
            red += *pixels >> 16U & 0xffU;
            alpha += *pixels >> 24U;
        }
        sums[0] += blue;
        sums[1] += green;
        sums[2] += red;
        sums[3] += alpha;
    }
    ++m_linesInRow;
    if (m_linesInRow == m_factor || m_row * m_factor + m_linesInRow == m_size.height())
        endRow();
}

void ReducedImage::endRow()
{
    auto* pixel = reinterpret_cast<QRgb*>(m_image.scanLine(m_row));
    for (int x = 0; x < m_image.width(); ++x) {
        const int columns = std::min(m_factor, m_size.width() - x * m_factor);
        const double share = 1 / (static_cast<double>(columns) * m_linesInRow);
        QRgb average = 0;
        std::array<std::uint64_t, 4>& sums = m_sums[static_cast<std::size_t>(x)];
        for (std::size_t channel = 0; channel < sums.size(); ++channel)
            // A sum is never negative. NOLINTNEXTLINE(bugprone-incorrect-roundings)
            average |= static_cast<QRgb>(static_cast<double>(sums[channel]) * share + 0.5) << (8U * channel);
        pixel[x] = average;
        sums = {};
    }
    m_linesInRow = 0;
    ++m_row;
}

int linesAtOnce(int width)
{
    constexpr int Pixels = 250'000;
    return std::max(1, Pixels / width);
}

QImage reduced(QImage image, int factor, const std::atomic<bool>& cancelled)
{
    if (factor == 1) {
        // Alpha stays apart: colors are converted behind this, which would show what rounding it in takes away.
        image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
        if (image.isNull())
            throw Failure(FailureKind::OutOfMemory);
        return image;
    }
    ReducedImage target(image.size(), factor, image.hasAlphaChannel());
    const int count = linesAtOnce(image.width());
    for (int top = 0; top < image.height(); top += count) {
        if (cancelled)
            throw Failure(FailureKind::InvalidPicture);
        target.add(image.copy(0, top, image.width(), std::min(count, image.height() - top)));
    }
    return target.take();
}

// Turned here, since what Qt turns lies in small pages.
QImage upright(QImage image, QImageIOHandler::Transformations orientation)
{
    const bool mirrors = orientation.testFlag(QImageIOHandler::TransformationMirror);
    const bool flips = orientation.testFlag(QImageIOHandler::TransformationFlip);
    if (!orientation.testFlag(QImageIOHandler::TransformationRotate90))
        return std::move(image).mirrored(mirrors, flips);
    // Where the first pixel comes from, and how far it is from there to that of the next one to the right or below.
    const std::ptrdiff_t line = image.bytesPerLine() / std::ptrdiff_t{sizeof(QRgb)};
    const std::ptrdiff_t right = flips ? line : -line;
    const std::ptrdiff_t down = mirrors ? -1 : 1;
    const auto* const from = reinterpret_cast<const QRgb*>(image.constBits()) + (mirrors ? image.width() - 1 : 0)
        + (flips ? 0 : (image.height() - 1) * line);
    const QSize size = image.size().transposed();
    QImage target = newImage(size, image.format());
    auto* const to = reinterpret_cast<QRgb*>(target.bits());
    constexpr int Tile = 16; // pixels along a side, so that its lines stay in the cache
    for (int top = 0; top < size.height(); top += Tile)
        for (int left = 0; left < size.width(); left += Tile)
            for (int y = top; y < std::min(top + Tile, size.height()); ++y)
                for (int x = left; x < std::min(left + Tile, size.width()); ++x)
                    to[std::ptrdiff_t{y} * size.width() + x] = from[x * right + y * down];
    return target;
}

} // namespace trovarium
