#include "platform/pictures/wmf/WmfMapping.h"

#include "platform/pictures/PictureHeader.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <cmath>

namespace trovarium {

namespace {

constexpr double PixelsPerInch = 96;
constexpr int Isotropic = 7;

// 0 for the modes without a unit of their own. In the others, y runs up.
double unitsPerInch(int mode)
{
    switch (mode) {
    case 2:
        return 254;
    case 3:
        return 2540;
    case 4:
        return 100;
    case 5:
        return 1000;
    case 6:
        return 1440;
    default:
        return 0;
    }
}

// Anything else changes nothing; beyond the limit nothing of the picture would be left to see.
bool isExtent(QSizeF extent)
{
    constexpr double Most = 1e9;
    const double width = std::abs(extent.width());
    const double height = std::abs(extent.height());
    return std::min(width, height) >= 1 && std::max(width, height) <= Most;
}

struct FirstExtents {
    int mode = 0; // when the window was set
    QSizeF window{0, 0};
    QSizeF viewport{0, 0};
};

FirstExtents firstExtents(const WmfFile& file)
{
    FirstExtents first;
    int mode = 0;
    for (const WmfRecord& record : file.records()) {
        const auto extent = [&] { return QSizeF(record.number(1), record.number(0)); };
        if (record.function() == WmfFunction::SetMapMode) {
            mode = record.number(0);
        } else if (record.function() == WmfFunction::SetWindowExtent && !isExtent(first.window)) {
            first.window = extent();
            first.mode = mode;
        } else if (record.function() == WmfFunction::SetViewportExtent && !isExtent(first.viewport)) {
            first.viewport = extent();
        }
    }
    return first;
}

QSizeF plainSize(const FirstExtents& first)
{
    constexpr double LongestGuess = 1024;
    if (isExtent(first.viewport))
        return first.viewport;
    if (const double units = unitsPerInch(first.mode); units > 0)
        return first.window * (PixelsPerInch / units);
    const double longer = std::max(std::abs(first.window.width()), std::abs(first.window.height()));
    return first.window * (longer > LongestGuess ? LongestGuess / longer : 1);
}

QSize wholePixels(QSizeF size)
{
    const QSizeF positive(std::abs(size.width()), std::abs(size.height()));
    if (positive.isEmpty())
        throw Failure(FailureKind::InvalidPicture);
    const QSize pixels = positive.toSize().expandedTo(QSize(1, 1));
    constexpr std::int64_t AnyPixelsInAByte = INT64_MAX; // a drawing's size costs no bytes
    checkSize(pixels.width(), pixels.height(), 0, AnyPixelsInAByte);
    return pixels;
}

} // namespace

WmfFrame frameOf(const WmfFile& file)
{
    const FirstExtents first = firstExtents(file);
    WmfFrame frame;
    if (const auto& box = file.box()) {
        if (box->unitsPerInch == 0)
            throw Failure(FailureKind::InvalidPicture);
        frame.windowOrigin = QPointF(box->left, box->top);
        frame.windowExtent = QSizeF(box->right - box->left, box->bottom - box->top);
        frame.naturalSize = wholePixels(frame.windowExtent * (PixelsPerInch / box->unitsPerInch));
    } else {
        frame.windowExtent = isExtent(first.window) ? first.window : first.viewport;
        frame.naturalSize = wholePixels(plainSize(first));
    }
    frame.viewportExtent = isExtent(first.viewport) ? first.viewport : QSizeF(frame.naturalSize);
    return frame;
}

WmfMapping::WmfMapping(const WmfFrame& frame, QSize canvas)
    : m_windowOrigin(frame.windowOrigin)
    , m_windowExtent(frame.windowExtent)
    , m_viewportExtent(frame.viewportExtent)
    , m_pixelsPerViewportX(canvas.width() / std::abs(frame.viewportExtent.width()))
    , m_pixelsPerViewportY(canvas.height() / std::abs(frame.viewportExtent.height()))
    , m_pixelsPerInchX(PixelsPerInch * canvas.width() / frame.naturalSize.width())
    , m_pixelsPerInchY(PixelsPerInch * canvas.height() / frame.naturalSize.height())
{
    update();
}

void WmfMapping::setExtent(QSizeF& extent, QSizeF value)
{
    if (!isExtent(value))
        return;
    extent = value;
    update();
}

void WmfMapping::scaleExtent(QSizeF& extent, double x, double y)
{
    setExtent(extent, QSizeF(std::trunc(extent.width() * x), std::trunc(extent.height() * y)));
}

QPointF WmfMapping::map(QPointF point) const
{
    const QPointF place((point.x() - m_windowOrigin.x()) * m_scaleX + m_viewportOrigin.x() * m_pixelsPerViewportX,
        (point.y() - m_windowOrigin.y()) * m_scaleY + m_viewportOrigin.y() * m_pixelsPerViewportY);
    return {std::clamp(place.x(), -Reach, Reach), std::clamp(place.y(), -Reach, Reach)};
}

void WmfMapping::update()
{
    if (const double units = unitsPerInch(m_mode); units > 0) {
        m_scaleX = m_pixelsPerInchX / units;
        m_scaleY = -m_pixelsPerInchY / units;
        return;
    }
    m_scaleX = m_viewportExtent.width() / m_windowExtent.width() * m_pixelsPerViewportX;
    m_scaleY = m_viewportExtent.height() / m_windowExtent.height() * m_pixelsPerViewportY;
    if (m_mode == Isotropic) {
        const double scale = std::min(std::abs(m_scaleX), std::abs(m_scaleY));
        m_scaleX = std::copysign(scale, m_scaleX);
        m_scaleY = std::copysign(scale, m_scaleY);
    }
}

} // namespace trovarium
