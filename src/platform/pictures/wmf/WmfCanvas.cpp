// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/wmf/WmfCanvas.h"

#include "platform/pictures/PictureHeader.h"

#include <QRegion>

#include <algorithm>
#include <array>
#include <cmath>

namespace trovarium {

namespace {

constexpr double MostWork = 3e9;

// Work for each pixel, found by experiment.
constexpr double PlainPixel = 0.5;
constexpr double MixedPixel = 1.5; // combined with the color below
constexpr double PatternPixel = 4;
constexpr double ImagePixel = 16;
constexpr double DashedPixel = 400; // of a line's length

QPainter::CompositionMode compositionMode(unsigned operation)
{
    constexpr std::array Modes = {QPainter::RasterOp_ClearDestination, QPainter::RasterOp_NotSourceAndNotDestination,
        QPainter::RasterOp_NotSourceAndDestination, QPainter::RasterOp_NotSource,
        QPainter::RasterOp_SourceAndNotDestination, QPainter::RasterOp_NotDestination,
        QPainter::RasterOp_SourceXorDestination, QPainter::RasterOp_NotSourceOrNotDestination,
        QPainter::RasterOp_SourceAndDestination, QPainter::RasterOp_NotSourceXorDestination,
        QPainter::CompositionMode_Destination, QPainter::RasterOp_NotSourceOrDestination,
        QPainter::CompositionMode_SourceOver, QPainter::RasterOp_SourceOrNotDestination,
        QPainter::RasterOp_SourceOrDestination, QPainter::RasterOp_SetDestination};
    return Modes.at(operation);
}

bool reachesTooFar(const QPainterPath& path)
{
    constexpr double Most = 30000;
    const QRectF bounds = path.controlPointRect();
    return !(bounds.left() > -Most && bounds.top() > -Most && bounds.right() < Most && bounds.bottom() < Most);
}

} // namespace

WmfCanvas::WmfCanvas(QImage& image, double hairline, double toLargest)
    : m_area(image.rect())
    , m_hairline(hairline)
    , m_toLargest(toLargest)
{
    image.fill(Qt::white);
    m_painter.begin(&image);
    m_painter.setRenderHint(QPainter::SmoothPixmapTransform);
}

void WmfCanvas::setClip(const QRegion& clip)
{
    constexpr double PartWork = 200;
    m_clipParts = clip.rectCount();
    if (m_clipParts > 1)
        charge(m_clipParts * PartWork + m_area.height());
    m_painter.setClipRegion(clip);
}

void WmfCanvas::paint(const QPainterPath& path, const WmfInk& ink)
{
    if (reachesTooFar(path))
        return;
    setOperation(ink.operation);
    if (ink.brush.style() != Qt::NoBrush) {
        const bool hasGaps = ink.brush.style() != Qt::TexturePattern && ink.brush.style() != Qt::SolidPattern;
        if (hasGaps && ink.gaps.isValid())
            fill(path, ink.gaps);
        fill(path, ink.brush);
    }
    if (ink.pen.style() != Qt::NoPen) {
        if (ink.pen.style() != Qt::SolidLine && ink.gaps.isValid())
            stroke(path, QPen(ink.gaps, ink.pen.widthF(), Qt::SolidLine, ink.pen.capStyle(), ink.pen.joinStyle()));
        stroke(path, ink.pen);
    }
}

void WmfCanvas::paintImage(const QImage& image, const QRectF& source, const QRectF& target, unsigned operation)
{
    const QRectF visible = target.normalized() & QRectF(m_area);
    if (visible.isEmpty() || source.isEmpty())
        return;
    chargePixels(visible.width() * visible.height() * ImagePixel);
    setOperation(operation);
    // Blended with its neighbours, a pixel of a mask would be neither in nor out.
    m_painter.setRenderHint(QPainter::SmoothPixmapTransform, operation == WmfInk::Copy);
    m_painter.save();
    m_painter.translate(target.topLeft());
    m_painter.scale(target.width() < 0 ? -1 : 1, target.height() < 0 ? -1 : 1);
    m_painter.drawImage(QRectF(0, 0, std::abs(target.width()), std::abs(target.height())), image, source);
    m_painter.restore();
}

void WmfCanvas::charge(double work)
{
    m_work += work;
    if (m_work > MostWork)
        refusePicture();
}

void WmfCanvas::setOperation(unsigned operation)
{
    constexpr double CallWork = 500;
    constexpr double PartWork = 100;
    charge(CallWork + m_clipParts * PartWork);
    m_painter.setCompositionMode(compositionMode(operation));
}

void WmfCanvas::fill(const QPainterPath& path, const QBrush& brush)
{
    const QRectF bounds = path.controlPointRect() & QRectF(m_area);
    const bool isCopied = m_painter.compositionMode() == QPainter::CompositionMode_SourceOver;
    const double pixelWork = brush.style() != Qt::SolidPattern ? PatternPixel : isCopied ? PlainPixel : MixedPixel;
    chargePixels(bounds.width() * bounds.height() * pixelWork);
    chargeCrossings(path, bounds, 0);
    m_painter.fillPath(path, brush);
}

// A path of many points is stroked in parts, since the work for a row of pixels grows with the square of the edges in
// it. Each part starts with the last segment of the one before, so that the corner between them is painted. A path
// isn't split if its dashes would start anew, or if painting a pixel twice would change the result.
void WmfCanvas::stroke(const QPainterPath& path, const QPen& pen)
{
    constexpr int MostElements = 16;
    const bool inParts =
        pen.style() == Qt::SolidLine && m_painter.compositionMode() == QPainter::CompositionMode_SourceOver;
    if (path.elementCount() <= MostElements || !inParts) {
        strokePart(path, pen);
        return;
    }
    QPainterPath part;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo())
            part.moveTo(element);
        else
            part.lineTo(element);
        if (part.elementCount() > MostElements && !element.isMoveTo()) {
            strokePart(part, pen);
            part = QPainterPath(path.elementAt(i - 1));
            part.lineTo(element);
        }
    }
    strokePart(part, pen);
}

void WmfCanvas::strokePart(const QPainterPath& path, const QPen& pen)
{
    const double width = pen.widthF();
    const QRectF bounds = path.controlPointRect().adjusted(-width, -width, width, width) & QRectF(m_area);
    chargeCrossings(path, bounds, width);
    if (pen.style() != Qt::SolidLine)
        charge(path.length() * m_toLargest * DashedPixel);
    m_painter.strokePath(path, pen);
}

// Counts the work of finding a path's edges in each row of pixels. The more edges cross a row, the more each of them
// costs. A stroke has two edges for each edge of its path, and covers its width.
void WmfCanvas::chargeCrossings(const QPainterPath& path, const QRectF& bounds, double width)
{
    constexpr double CrossingWork = 8;
    constexpr double SquareWork = 3; // for each other edge in the row, beyond the first few
    constexpr double Few = 64;
    constexpr double ElementWork = 300;
    double crossings = 0;
    for (int i = 1; i < path.elementCount(); ++i) {
        const double from = path.elementAt(i - 1).y;
        const double to = path.elementAt(i).y;
        const double top = std::max(std::min(from, to) - width, bounds.top());
        const double bottom = std::min(std::max(from, to) + width, bounds.bottom());
        crossings += std::max(0.0, bottom - top);
    }
    if (width > 0)
        crossings *= 2;
    charge(path.elementCount() * ElementWork
        + crossings * m_toLargest
            * (CrossingWork + SquareWork * std::max(0.0, crossings / std::max(1.0, bounds.height()) - Few)));
    if (width > 0)
        chargePixels(crossings * std::min(width, bounds.width()) * PlainPixel);
}

void WmfCanvas::chargePixels(double pixels)
{
    charge(pixels * m_toLargest * m_toLargest);
}

} // namespace trovarium
