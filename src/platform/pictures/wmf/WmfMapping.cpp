// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/wmf/WmfMapping.h"

#include "platform/pictures/PictureHeader.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace trovarium {

namespace {

constexpr double PixelsPerInch = 96;
constexpr int Isotropic = 7;

// Records that tell the size, by their numbers.
constexpr unsigned SetMapMode = 0x0103;
constexpr unsigned SetWindowExtent = 0x020C;
constexpr unsigned SetViewportExtent = 0x020E;

// 0 for the modes without a unit of their own. In the others, y runs up.
double unitsPerInch(int mode)
{
    constexpr std::array Units = {0.0, 0.0, 254.0, 2540.0, 100.0, 1000.0, 1440.0};
    return mode < 0 || mode >= static_cast<int>(Units.size()) ? 0 : Units.at(static_cast<std::size_t>(mode));
}

// Beyond the limit nothing of the picture would be left to see.
bool isExtent(QSizeF extent)
{
    constexpr double Most = 1e9;
    const double width = std::abs(extent.width());
    const double height = std::abs(extent.height());
    return std::min(width, height) >= 1 && std::max(width, height) <= Most;
}

QSize wholePixels(QSizeF size)
{
    const QSizeF positive(std::abs(size.width()), std::abs(size.height()));
    if (positive.isEmpty())
        refusePicture();
    const QSize pixels = positive.toSize().expandedTo(QSize(1, 1));
    constexpr std::int64_t AnyPixelsInAByte = INT64_MAX; // a drawing's size costs no bytes
    checkSize(pixels.width(), pixels.height(), 0, AnyPixelsInAByte);
    return pixels;
}

} // namespace

WmfMapping::WmfMapping(const WmfFile& file)
{
    int lastMode = 0;
    int windowMode = 0; // when the window was set
    for (const WmfRecord& record : file.records) {
        if (record.function() == SetMapMode) {
            lastMode = record.number(0);
        } else if (record.function() == SetWindowExtent && !isExtent(windowExtent)) {
            windowExtent = record.size(0);
            windowMode = lastMode;
        } else if (record.function() == SetViewportExtent && !isExtent(viewportExtent)) {
            viewportExtent = record.size(0);
        }
    }
    if (const auto& box = file.box) {
        if (box->word(4) == 0)
            refusePicture();
        windowOrigin = QPointF(box->number(0), box->number(1));
        windowExtent = QSizeF(box->number(2) - box->number(0), box->number(3) - box->number(1));
        m_naturalSize = wholePixels(windowExtent * (PixelsPerInch / box->word(4)));
    } else {
        m_naturalSize = wholePixels(plainSize(windowMode));
        if (!isExtent(windowExtent))
            windowExtent = viewportExtent;
    }
    if (!isExtent(viewportExtent))
        viewportExtent = m_naturalSize;
}

QSizeF WmfMapping::plainSize(int mode) const
{
    constexpr double LongestGuess = 1024;
    if (isExtent(viewportExtent))
        return viewportExtent;
    if (const double units = unitsPerInch(mode); units > 0)
        return windowExtent * (PixelsPerInch / units);
    const double longer = std::max(std::abs(windowExtent.width()), std::abs(windowExtent.height()));
    return windowExtent * (longer > LongestGuess ? LongestGuess / longer : 1);
}

void WmfMapping::setCanvas(QSize canvas)
{
    m_pixelsPerViewport = {
        canvas.width() / std::abs(viewportExtent.width()), canvas.height() / std::abs(viewportExtent.height())};
    m_pixelsPerInch = {PixelsPerInch * canvas.width() / m_naturalSize.width(),
        PixelsPerInch * canvas.height() / m_naturalSize.height()};
}

void WmfMapping::setExtent(QSizeF WmfMapping::*extent, QSizeF value)
{
    if (isExtent(value))
        this->*extent = value;
}

void WmfMapping::scaleExtent(QSizeF WmfMapping::*extent, const WmfRecord& record)
{
    if (record.number(0) == 0 || record.number(2) == 0)
        return;
    const double x = double(record.number(3)) / record.number(2);
    const double y = double(record.number(1)) / record.number(0);
    setExtent(extent, QSizeF(std::trunc((this->*extent).width() * x), std::trunc((this->*extent).height() * y)));
}

QPointF WmfMapping::scale() const
{
    if (const double units = unitsPerInch(mode); units > 0)
        return {m_pixelsPerInch.x() / units, -m_pixelsPerInch.y() / units};
    const double x = viewportExtent.width() / windowExtent.width() * m_pixelsPerViewport.x();
    const double y = viewportExtent.height() / windowExtent.height() * m_pixelsPerViewport.y();
    if (mode != Isotropic)
        return {x, y};
    const double smaller = std::min(std::abs(x), std::abs(y));
    return {std::copysign(smaller, x), std::copysign(smaller, y)};
}

QPointF WmfMapping::map(QPointF point) const
{
    const QPointF scale = this->scale();
    const QPointF place((point.x() - windowOrigin.x()) * scale.x() + viewportOrigin.x() * m_pixelsPerViewport.x(),
        (point.y() - windowOrigin.y()) * scale.y() + viewportOrigin.y() * m_pixelsPerViewport.y());
    return {std::clamp(place.x(), -Reach, Reach), std::clamp(place.y(), -Reach, Reach)};
}

} // namespace trovarium
