// What the player paints: shapes, text and bitmaps.
#include "platform/pictures/wmf/WmfPlayer.h"

#include <QTransform>

#include <algorithm>
#include <cmath>

namespace trovarium {

namespace {

QPainterPath rectanglePath(const QRectF& rectangle)
{
    QPainterPath path;
    path.addRect(rectangle);
    return path;
}

QPainterPath ellipsePath(const QRectF& box)
{
    QPainterPath path;
    path.addEllipse(box);
    return path;
}

// Both ends of an arc lie on rays from the middle of its ellipse; it runs against the clock.
struct ArcAngles {
    ArcAngles(const QRectF& box, QPointF from, QPointF to)
        : start(angle(box, from))
        , sweep(angle(box, to) - start)
    {
        if (sweep <= 0)
            sweep += 360;
    }

    static double angle(const QRectF& box, QPointF point)
    {
        constexpr double DegreesPerRadian = 57.29577951308232;
        const QPointF ray = point - box.center();
        return std::atan2(-ray.y() * box.width(), ray.x() * box.height()) * DegreesPerRadian;
    }

    double start;
    double sweep;
};

// The operation's third byte tells, bit by bit, the result for pattern, source and destination. Where all
// three count, the source is copied.
unsigned sourceOperation(std::uint32_t operation)
{
    const unsigned bits = operation >> 16U & 0xffU;
    return bits >> 4U == (bits & 0xfU) ? bits & 0xfU : WmfInk::Copy;
}

bool needsNoSource(std::uint32_t operation)
{
    const unsigned bits = operation >> 16U & 0xffU;
    return (bits >> 2U & 0x33U) == (bits & 0x33U);
}

unsigned patternOperation(std::uint32_t operation)
{
    const unsigned bits = operation >> 16U & 0xffU;
    return (bits & 3U) | (bits >> 2U & 0xcU);
}

std::string_view textAt(const WmfRecord& record, std::size_t index, std::size_t length)
{
    const WmfBytes bytes = record.bytes(index, length);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

QRectF boxOfSize(const WmfRecord& record, std::size_t index)
{
    return {static_cast<double>(record.number(index + 3)), static_cast<double>(record.number(index + 2)),
        static_cast<double>(record.number(index + 1)), static_cast<double>(record.number(index))};
}

} // namespace

void WmfPlayer::paint(const WmfRecord& record)
{
    switch (record.function()) {
    case WmfFunction::MoveTo:
        m_state.position = QPointF(record.number(1), record.number(0));
        return;
    case WmfFunction::LineTo:
        return lineTo(QPointF(record.number(1), record.number(0)));
    case WmfFunction::Rectangle:
        return paintShape(rectanglePath(boxAt(record, 0)));
    case WmfFunction::RoundRectangle:
        return roundRectangle(record);
    case WmfFunction::Ellipse:
        return paintShape(ellipsePath(boxAt(record, 0)));
    case WmfFunction::Arc:
    case WmfFunction::Pie:
    case WmfFunction::Chord:
        return arc(record);
    case WmfFunction::Polyline:
    case WmfFunction::Polygon:
        return polygon(record);
    case WmfFunction::PolyPolygon:
        return polyPolygon(record);
    case WmfFunction::SetPixel:
        return m_canvas.paint(
            rectanglePath(QRectF(pointAt(record, 2), QSizeF(m_canvas.hairline(), m_canvas.hairline()))),
            {.brush = wmfColor(record.doubleWord(0))});
    case WmfFunction::TextOut: {
        const std::size_t length = record.word(0);
        const std::size_t behind = 1 + (length + 1) / 2;
        return paintText(QPointF(record.number(behind + 1), record.number(behind)), textAt(record, 1, length), {});
    }
    case WmfFunction::ExtendedTextOut:
        return extendedTextOut(record);
    case WmfFunction::PatternBlit:
        return paintPattern(boxOfSize(record, 2), record.doubleWord(0));
    case WmfFunction::DibBitBlit:
        return dibBlit(record, 4);
    case WmfFunction::DibStretchBlit:
        return dibBlit(record, 6);
    case WmfFunction::StretchDib:
        if (record.word(2) == 0) // else colors by a palette
            paintBitmap({record.doubleWord(0), boxOfSize(record, 3), boxOfSize(record, 7), true}, record.bytesFrom(11));
        return;
    case WmfFunction::SetDibToDevice:
        if (record.word(0) == 0) { // else colors by a palette
            constexpr std::uint32_t SourceCopy = 0x00CC0020;
            const QRectF target = boxOfSize(record, 5);
            const QPointF from(record.number(4), record.number(3));
            paintBitmap({SourceCopy, QRectF(from, target.size()), target, true}, record.bytesFrom(9));
        }
        return;
    default:
        return;
    }
}

void WmfPlayer::lineTo(QPointF position)
{
    QPainterPath path(m_state.mapping.map(m_state.position));
    m_state.position = position;
    path.lineTo(m_state.mapping.map(position));
    paintLine(path);
}

void WmfPlayer::roundRectangle(const WmfRecord& record)
{
    const double radiusX = std::abs(record.number(1) * m_state.mapping.scaleX()) / 2;
    const double radiusY = std::abs(record.number(0) * m_state.mapping.scaleY()) / 2;
    QPainterPath path;
    path.addRoundedRect(boxAt(record, 2), radiusX, radiusY);
    paintShape(path);
}

// A bare arc, or one closed over the middle (a pie) or straight (a chord).
void WmfPlayer::arc(const WmfRecord& record)
{
    const QRectF box = boxAt(record, 4);
    const ArcAngles angles(box, pointAt(record, 2), pointAt(record, 0));
    QPainterPath path(box.center());
    if (record.function() != WmfFunction::Pie)
        path.arcMoveTo(box, angles.start);
    path.arcTo(box, angles.start, angles.sweep);
    if (record.function() == WmfFunction::Arc)
        return paintLine(path);
    path.closeSubpath();
    paintShape(path);
}

void WmfPlayer::polygon(const WmfRecord& record)
{
    QPainterPath path;
    path.addPolygon(pointsAt(record, 1, record.word(0)));
    if (record.function() == WmfFunction::Polyline)
        return paintLine(path);
    path.closeSubpath();
    paintShape(path);
}

void WmfPlayer::polyPolygon(const WmfRecord& record)
{
    const std::size_t count = record.word(0);
    std::size_t at = 1 + count;
    QPainterPath path;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t points = record.word(1 + i);
        path.addPolygon(pointsAt(record, at, points));
        path.closeSubpath();
        at += points * 2;
    }
    paintShape(path);
}

void WmfPlayer::extendedTextOut(const WmfRecord& record)
{
    constexpr unsigned Opaque = 2;
    constexpr unsigned Clipped = 4;
    constexpr unsigned Pairs = 0x2000; // of advances: to the right and up
    constexpr unsigned Glyphs = 0x10;  // numbers of a font that isn't here, no characters
    const std::size_t length = record.word(2);
    const unsigned options = record.word(3);
    std::size_t at = 4;
    const QPointF place(record.number(1), record.number(0));
    if ((options & (Opaque | Clipped)) != 0) {
        const QPointF corner(record.number(at), record.number(at + 1));
        const QPointF opposite(record.number(at + 2), record.number(at + 3));
        const QRectF box = mapped(QRectF(corner, opposite)).normalized();
        at += 4;
        if ((options & Opaque) != 0)
            m_canvas.paint(rectanglePath(box), {.brush = m_state.background});
        if ((options & Clipped) != 0)
            m_canvas.setClip(clip() & box.toRect());
    }
    const std::string_view text = textAt(record, at, length);
    at += (length + 1) / 2;
    const std::size_t step = (options & Pairs) != 0 ? 2 : 1;
    std::vector<int> advances;
    for (std::size_t i = 0; i < length && record.wordCount() >= at + length * step; ++i)
        advances.push_back(record.number(at + i * step));
    if ((options & Glyphs) == 0)
        paintText(place, text, advances);
    if ((options & Clipped) != 0)
        m_canvas.setClip(clip());
}

// The record may hold no bitmap; its target then stands a word further on. Only a stretched one tells the size of its
// source.
void WmfPlayer::dibBlit(const WmfRecord& record, std::size_t targetIndex)
{
    const std::uint32_t operation = record.doubleWord(0);
    if (record.wordCount() == targetIndex + 5)
        return paintPattern(boxOfSize(record, targetIndex + 1), operation);
    const QRectF target = boxOfSize(record, targetIndex);
    const QRectF source = record.function() == WmfFunction::DibStretchBlit
        ? boxOfSize(record, 2)
        : QRectF(QPointF(record.number(3), record.number(2)), target.size());
    paintBitmap({operation, source, target}, record.bytesFrom(targetIndex + 4));
}

QPointF WmfPlayer::pointAt(const WmfRecord& record, std::size_t index) const
{
    return m_state.mapping.map(QPointF(record.number(index + 1), record.number(index)));
}

QRectF WmfPlayer::boxAt(const WmfRecord& record, std::size_t index) const
{
    return QRectF(pointAt(record, index + 2), pointAt(record, index)).normalized();
}

QRectF WmfPlayer::mapped(const QRectF& units) const
{
    return {m_state.mapping.map(units.topLeft()), m_state.mapping.map(units.bottomRight())};
}

QPolygonF WmfPlayer::pointsAt(const WmfRecord& record, std::size_t index, std::size_t count) const
{
    record.bytes(index, count * 4); // all or nothing
    QPolygonF points;
    points.reserve(static_cast<qsizetype>(count));
    for (std::size_t i = 0; i < count; ++i)
        points << m_state.mapping.map(QPointF(record.number(index + i * 2), record.number(index + i * 2 + 1)));
    return points;
}

WmfInk WmfPlayer::ink() const
{
    constexpr double Widest = 4000; // else a stroke reaches beyond what the painter can do
    WmfInk ink{m_state.pen, m_state.brush, {}, m_state.operation};
    const double width = ink.pen.widthF() * std::abs(m_state.mapping.scaleX());
    ink.pen.setWidthF(std::clamp(width, m_canvas.hairline(), Widest));
    ink.brush.setTransform(QTransform::fromScale(m_canvas.hairline(), m_canvas.hairline()));
    if (m_state.backgroundIsOpaque)
        ink.gaps = m_state.background;
    return ink;
}

void WmfPlayer::paintShape(const QPainterPath& path)
{
    QPainterPath shape = path;
    shape.setFillRule(m_state.fillRule);
    m_canvas.paint(shape, ink());
}

void WmfPlayer::paintLine(const QPainterPath& path)
{
    WmfInk line = ink();
    line.brush = Qt::NoBrush;
    m_canvas.paint(path, line);
}

void WmfPlayer::paintText(QPointF place, std::string_view text, const std::vector<int>& advances)
{
    constexpr unsigned UpdatesPosition = 1;
    constexpr unsigned Right = 2;
    constexpr unsigned Center = 6;
    constexpr unsigned Bottom = 8;
    constexpr unsigned Baseline = 24;
    constexpr double StandardHeight = 12; // of an em, in pixels of the natural size
    const WmfMapping& mapping = m_state.mapping;
    WmfFont font = m_state.font;
    if (font.height == 0)
        font.height =
            static_cast<int>(std::min(-1.0, -StandardHeight * m_canvas.hairline() / std::abs(mapping.scaleY())));
    m_canvas.charge(m_typesetter.work(font, text));
    const WmfLine line = m_typesetter.line(font, text, advances);

    const bool updates = (m_state.textAlign & UpdatesPosition) != 0;
    const unsigned across = m_state.textAlign & Center;
    const unsigned upright = m_state.textAlign & Baseline;
    QTransform transform;
    const QPointF start = mapping.map(updates ? m_state.position : place);
    transform.translate(start.x(), start.y());
    transform.rotate(-font.escapement / 10.0);
    transform.scale(std::abs(mapping.scaleX()), std::abs(mapping.scaleY()));
    transform.translate(across == Center ? -line.width / 2
            : across == Right            ? -line.width
                                         : 0,
        upright == Baseline     ? 0
            : upright == Bottom ? -line.descent
                                : line.ascent);
    if (m_state.backgroundIsOpaque)
        m_canvas.paint(transform.map(rectanglePath(QRectF(0, -line.ascent, line.width, line.ascent + line.descent))),
            {.brush = m_state.background});
    m_canvas.paint(transform.map(line.outline), {.brush = m_state.textColor});
    if (updates)
        m_state.position.rx() += std::clamp(line.width, 0.0, WmfMapping::Reach);
}

void WmfPlayer::paintPattern(const QRectF& target, std::uint32_t operation)
{
    WmfInk pattern = ink();
    pattern.pen = Qt::NoPen;
    pattern.operation = patternOperation(operation);
    m_canvas.paint(rectanglePath(mapped(target).normalized()), pattern);
}

void WmfPlayer::paintBitmap(const Blit& blit, WmfBytes bytes)
{
    if (needsNoSource(blit.operation)) {
        paintPattern(blit.target, blit.operation);
        return;
    }
    constexpr double PixelWork = 4;
    const WmfBitmap bitmap(bytes);
    if (!bitmap.isKnown())
        return;
    m_canvas.charge(bitmap.pixelCount() * PixelWork);
    const QImage image = bitmap.image(m_readBitmap, m_cancelled);
    QRectF source = blit.source.normalized();
    if (blit.sourceRunsUp && !bitmap.topDown())
        source.moveTop(image.height() - source.bottom());
    if (!image.isNull())
        m_canvas.paintImage(image, source, mapped(blit.target), sourceOperation(blit.operation));
}

} // namespace trovarium
