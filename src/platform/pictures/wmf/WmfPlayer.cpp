// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/wmf/WmfPlayer.h"

#include "platform/pictures/PictureHeader.h"

#include <QTransform>
#include <QtMath>

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

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

QPainterPath polyline(const QPolygonF& points)
{
    QPainterPath path;
    path.addPolygon(points);
    return path;
}

QPainterPath closed(QPainterPath path)
{
    path.closeSubpath();
    return path;
}

// Of the ray from the middle of an arc's ellipse on which one of its ends lies.
double angleOf(const QRectF& box, QPointF point)
{
    const QPointF ray = point - box.center();
    return qRadiansToDegrees(std::atan2(-ray.y() * box.width(), ray.x() * box.height()));
}

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

// Height, width, top and left.
QRectF boxOfSize(const WmfRecord& record, std::size_t index)
{
    return {record.point(index + 2), record.size(index)};
}

} // namespace

WmfPlayer::WmfPlayer(
    const WmfMapping& mapping, WmfCanvas& canvas, ReadBitmap readBitmap, const std::atomic<bool>& cancelled)
    : m_canvas(canvas)
    , m_readBitmap(readBitmap)
    , m_cancelled(cancelled)
    , m_state{.mapping = mapping, .clip = canvas.area()}
{
}

void WmfPlayer::play(const WmfFile& file)
{
    constexpr double RecordWork = 100;
    for (const WmfRecord& record : file.records) {
        if (m_cancelled)
            refusePicture();
        m_canvas.charge(RecordWork);
        if (const Action action = actionOf(record.function()))
            action(*this, record);
    }
}

// Under their published names. The high byte of a record's number is the least count of words that it takes.
WmfPlayer::Action WmfPlayer::actionOf(unsigned function)
{
    using P = WmfPlayer;
    using R = const WmfRecord;
    using M = WmfMapping;
    constexpr unsigned Transparent = 1;
    constexpr unsigned Winding = 2;
    constexpr Action AddOther = [](P& p, R&) { p.m_objects.add(WmfOther()); };
    static const std::map<unsigned, Action> Actions = {
        {0x001E, [](P& p, R&) { p.saveDc(); }},                 // SaveDC
        {0x0127, [](P& p, R& r) { p.restoreDc(r.number(0)); }}, // RestoreDC

        {0x0103, [](P& p, R& r) { p.m_state.mapping.mode = r.number(0); }},                       // SetMapMode
        {0x020B, [](P& p, R& r) { p.m_state.mapping.windowOrigin = r.point(0); }},                // SetWindowOrg
        {0x020C, [](P& p, R& r) { p.m_state.mapping.setExtent(&M::windowExtent, r.size(0)); }},   // SetWindowExt
        {0x020D, [](P& p, R& r) { p.m_state.mapping.viewportOrigin = r.point(0); }},              // SetViewportOrg
        {0x020E, [](P& p, R& r) { p.m_state.mapping.setExtent(&M::viewportExtent, r.size(0)); }}, // SetViewportExt
        {0x020F, [](P& p, R& r) { p.m_state.mapping.windowOrigin += r.point(0); }},               // OffsetWindowOrg
        {0x0211, [](P& p, R& r) { p.m_state.mapping.viewportOrigin += r.point(0); }},             // OffsetViewportOrg
        {0x0410, [](P& p, R& r) { p.m_state.mapping.scaleExtent(&M::windowExtent, r); }},         // ScaleWindowExt
        {0x0412, [](P& p, R& r) { p.m_state.mapping.scaleExtent(&M::viewportExtent, r); }},       // ScaleViewportExt

        {0x0102, [](P& p, R& r) { p.m_state.backgroundIsOpaque = r.word(0) != Transparent; }}, // SetBkMode
        {0x0104, [](P& p, R& r) { p.setRasterOperation(r.word(0)); }},                         // SetROP2
        // SetPolyFillMode
        {0x0106, [](P& p, R& r) { p.m_state.fillRule = r.word(0) == Winding ? Qt::WindingFill : Qt::OddEvenFill; }},
        {0x012E, [](P& p, R& r) { p.m_state.textAlign = r.word(0); }},                  // SetTextAlign
        {0x0201, [](P& p, R& r) { p.m_state.background = wmfColor(r.doubleWord(0)); }}, // SetBkColor
        {0x0209, [](P& p, R& r) { p.m_state.textColor = wmfColor(r.doubleWord(0)); }},  // SetTextColor

        // Regions are in pixels of the screen that the file was made on. Most files select none, to remove the clip.
        {0x012C, [](P& p, R&) { p.setClip(p.m_canvas.area()); }},                         // SelectClipRegion
        {0x0220, [](P& p, R& r) { p.offsetClip(r); }},                                    // OffsetClipRgn
        {0x0415, [](P& p, R& r) { p.setClip(p.m_state.clip - p.boxAt(r, 0).toRect()); }}, // ExcludeClipRect
        {0x0416, [](P& p, R& r) { p.setClip(p.m_state.clip & p.boxAt(r, 0).toRect()); }}, // IntersectClipRect

        {0x00F7, AddOther},                                          // CreatePalette
        {0x00F8, AddOther},                                          // CreateBrush
        {0x0142, [](P& p, R& r) { p.createPatternBrush(r); }},       // DibCreatePatternBrush
        {0x01F9, AddOther},                                          // CreatePatternBrush
        {0x02FA, [](P& p, R& r) { p.m_objects.add(wmfPen(r)); }},    // CreatePenIndirect
        {0x02FB, [](P& p, R& r) { p.m_objects.add(wmfFont(r)); }},   // CreateFontIndirect
        {0x02FC, [](P& p, R& r) { p.m_objects.add(wmfBrush(r)); }},  // CreateBrushIndirect
        {0x02FD, AddOther},                                          // CreateBitmapIndirect
        {0x06FE, AddOther},                                          // CreateBitmap
        {0x06FF, AddOther},                                          // CreateRegion
        {0x012D, [](P& p, R& r) { p.selectObject(r); }},             // SelectObject
        {0x01F0, [](P& p, R& r) { p.m_objects.remove(r.word(0)); }}, // DeleteObject

        {0x0213, [](P& p, R& r) { p.lineTo(r.point(0)); }},                                        // LineTo
        {0x0214, [](P& p, R& r) { p.m_state.position = r.point(0); }},                             // MoveTo
        {0x0324, [](P& p, R& r) { p.paintShape(closed(polyline(p.pointsAt(r, 1, r.word(0))))); }}, // Polygon
        {0x0325, [](P& p, R& r) { p.paintLine(polyline(p.pointsAt(r, 1, r.word(0)))); }},          // Polyline
        {0x0418, [](P& p, R& r) { p.paintShape(ellipsePath(p.boxAt(r, 0))); }},                    // Ellipse
        {0x041B, [](P& p, R& r) { p.paintShape(rectanglePath(p.boxAt(r, 0))); }},                  // Rectangle
        {0x041F, [](P& p, R& r) { p.setPixel(r); }},                                               // SetPixel
        {0x0538, [](P& p, R& r) { p.polyPolygon(r); }},                                            // PolyPolygon
        {0x061C, [](P& p, R& r) { p.roundRectangle(r); }},                                         // RoundRect
        {0x0817, [](P& p, R& r) { p.paintLine(p.arc(r, false)); }},                                // Arc
        {0x081A, [](P& p, R& r) { p.paintShape(closed(p.arc(r, true))); }},                        // Pie
        {0x0830, [](P& p, R& r) { p.paintShape(closed(p.arc(r, false))); }},                       // Chord

        {0x0521, [](P& p, R& r) { p.textOut(r); }},                                     // TextOut
        {0x0A32, [](P& p, R& r) { p.extendedTextOut(r); }},                             // ExtTextOut
        {0x061D, [](P& p, R& r) { p.paintPattern(boxOfSize(r, 2), r.doubleWord(0)); }}, // PatBlt
        {0x0940, [](P& p, R& r) { p.dibBlit(r, 4); }},                                  // DibBitBlt
        {0x0B41, [](P& p, R& r) { p.dibBlit(r, 6); }},                                  // DibStretchBlt
        {0x0D33, [](P& p, R& r) { p.setDibToDevice(r); }},                              // SetDibToDev
        {0x0F43, [](P& p, R& r) { p.stretchDib(r); }},                                  // StretchDib
    };
    const auto found = Actions.find(function);
    return found == Actions.end() ? nullptr : found->second;
}

void WmfPlayer::saveDc()
{
    constexpr std::size_t Most = 4096;
    if (m_saved.size() == Most)
        refusePicture();
    m_saved.push_back(m_state);
}

// Above 0 the level to go back to, below it the count of levels.
void WmfPlayer::restoreDc(int number)
{
    const int level = number > 0 ? number : static_cast<int>(m_saved.size()) + number + 1;
    if (number == 0 || level < 1 || level > static_cast<int>(m_saved.size()))
        return;
    m_saved.erase(m_saved.begin() + level, m_saved.end());
    m_state = std::move(m_saved.back());
    m_saved.pop_back();
    m_canvas.setClip(m_state.clip);
}

void WmfPlayer::setRasterOperation(unsigned number)
{
    if (number >= 1 && number <= 16)
        m_state.operation = number - 1;
}

void WmfPlayer::offsetClip(const WmfRecord& record)
{
    const QPointF scale = m_state.mapping.scale();
    const QPointF by(record.number(1) * scale.x(), record.number(0) * scale.y());
    constexpr double Most = WmfMapping::Reach;
    setClip(m_state.clip.translated(QPointF(std::clamp(by.x(), -Most, Most), std::clamp(by.y(), -Most, Most)).toPoint())
        & m_canvas.area());
}

void WmfPlayer::createPatternBrush(const WmfRecord& record)
{
    const WmfBitmap bitmap(record.bytesFrom(2));
    if (record.word(1) != 0 || !bitmap.isKnown()) { // colors by a palette, or in the form of a device
        m_objects.add(WmfOther());
        return;
    }
    constexpr double KeptPixelWork = 50; // so that all patterns together take up less than 250 MB
    m_canvas.charge(bitmap.pixelCount() * KeptPixelWork);
    m_objects.add(QBrush(bitmap.image(m_readBitmap, m_cancelled)));
}

void WmfPlayer::selectObject(const WmfRecord& record)
{
    const WmfObject* const object = m_objects.at(record.word(0));
    if (!object)
        return;
    if (const auto* pen = std::get_if<QPen>(object))
        m_state.pen = *pen;
    else if (const auto* brush = std::get_if<QBrush>(object))
        m_state.brush = *brush;
    else if (const auto* font = std::get_if<WmfFont>(object))
        m_state.font = *font;
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
    const QPointF scale = m_state.mapping.scale();
    QPainterPath path;
    path.addRoundedRect(
        boxAt(record, 2), std::abs(record.number(1) * scale.x()) / 2, std::abs(record.number(0) * scale.y()) / 2);
    paintShape(path);
}

void WmfPlayer::setPixel(const WmfRecord& record)
{
    const QSizeF size(m_canvas.hairline(), m_canvas.hairline());
    m_canvas.paint(rectanglePath(QRectF(pointAt(record, 2), size)), {.brush = wmfColor(record.doubleWord(0))});
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

void WmfPlayer::textOut(const WmfRecord& record)
{
    const std::size_t length = record.word(0);
    paintText(record.point(1 + (length + 1) / 2), textAt(record, 1, length), {});
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
    const QPointF place = record.point(0);
    if ((options & (Opaque | Clipped)) != 0) {
        const QPointF corner(record.number(at), record.number(at + 1));
        const QPointF opposite(record.number(at + 2), record.number(at + 3));
        const QRectF box = mapped(QRectF(corner, opposite)).normalized();
        at += 4;
        if ((options & Opaque) != 0)
            m_canvas.paint(rectanglePath(box), {.brush = m_state.background});
        if ((options & Clipped) != 0)
            m_canvas.setClip(m_state.clip & box.toRect());
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
        m_canvas.setClip(m_state.clip);
}

// In a record without a bitmap the target stands one word further on. DibStretchBlt tells the source's place and size,
// in front of the target. DibBitBlt tells the place alone; the size is that of the target.
void WmfPlayer::dibBlit(const WmfRecord& record, std::size_t targetIndex)
{
    const std::uint32_t operation = record.doubleWord(0);
    if (record.wordCount() == targetIndex + 5)
        return paintPattern(boxOfSize(record, targetIndex + 1), operation);
    const QRectF target = boxOfSize(record, targetIndex);
    const QRectF source = targetIndex == 6 ? boxOfSize(record, 2) : QRectF(record.point(2), target.size());
    paintBitmap(operation, source, target, record.bytesFrom(targetIndex + 4));
}

void WmfPlayer::stretchDib(const WmfRecord& record)
{
    if (record.word(2) == 0) // else colors by a palette
        paintBitmap(record.doubleWord(0), boxOfSize(record, 3), boxOfSize(record, 7), record.bytesFrom(11), true);
}

void WmfPlayer::setDibToDevice(const WmfRecord& record)
{
    constexpr std::uint32_t SourceCopy = 0x00CC0020;
    if (record.word(0) != 0) // colors by a palette
        return;
    const QRectF target = boxOfSize(record, 5);
    paintBitmap(SourceCopy, QRectF(record.point(3), target.size()), target, record.bytesFrom(9), true);
}

QPointF WmfPlayer::pointAt(const WmfRecord& record, std::size_t index) const
{
    return m_state.mapping.map(record.point(index));
}

QRectF WmfPlayer::boxAt(const WmfRecord& record, std::size_t index) const
{
    return QRectF(pointAt(record, index + 2), pointAt(record, index)).normalized();
}

QRectF WmfPlayer::mapped(const QRectF& units) const
{
    return {m_state.mapping.map(units.topLeft()), m_state.mapping.map(units.bottomRight())};
}

QPainterPath WmfPlayer::arc(const WmfRecord& record, bool fromMiddle) const
{
    const QRectF box = boxAt(record, 4);
    const double start = angleOf(box, pointAt(record, 2));
    const double sweep = angleOf(box, pointAt(record, 0)) - start; // against the clock
    QPainterPath path(box.center());
    if (!fromMiddle)
        path.arcMoveTo(box, start);
    path.arcTo(box, start, sweep > 0 ? sweep : sweep + 360);
    return path;
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
    const double width = ink.pen.widthF() * std::abs(m_state.mapping.scale().x());
    ink.pen.setWidthF(std::clamp(width, m_canvas.hairline(), Widest));
    ink.brush.setTransform(QTransform::fromScale(m_canvas.hairline(), m_canvas.hairline()));
    if (m_state.backgroundIsOpaque)
        ink.gaps = m_state.background;
    return ink;
}

void WmfPlayer::paintShape(QPainterPath path)
{
    path.setFillRule(m_state.fillRule);
    m_canvas.paint(path, ink());
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
    constexpr double FontWork = 1e7; // of one that is loaded first
    constexpr double CharacterWork = 2e4;
    constexpr double StandardHeight = 12; // of an em, in pixels of the natural size
    const QPointF scale = m_state.mapping.scale();
    WmfFont font = m_state.font;
    if (font.height == 0)
        font.height = static_cast<int>(std::min(-1.0, -StandardHeight * m_canvas.hairline() / std::abs(scale.y())));
    const bool isNew = m_fonts.emplace(font.face.family(), font.face.weight(), font.face.italic()).second;
    m_canvas.charge((isNew ? FontWork : CharacterWork) + static_cast<double>(text.size()) * CharacterWork);
    const WmfLine line = wmfLine(font, text, advances);

    const bool updates = (m_state.textAlign & UpdatesPosition) != 0;
    const unsigned across = m_state.textAlign & Center;
    const unsigned upright = m_state.textAlign & Baseline;
    QTransform transform;
    const QPointF start = m_state.mapping.map(updates ? m_state.position : place);
    transform.translate(start.x(), start.y());
    transform.rotate(-font.escapement / 10.0);
    transform.scale(std::abs(scale.x()), std::abs(scale.y()));
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

void WmfPlayer::paintBitmap(std::uint32_t operation, QRectF source, const QRectF& target, WmfBytes bytes, bool runsUp)
{
    constexpr double PixelWork = 4;
    if (needsNoSource(operation))
        return paintPattern(target, operation);
    const WmfBitmap bitmap(bytes);
    if (!bitmap.isKnown())
        return;
    m_canvas.charge(bitmap.pixelCount() * PixelWork);
    const QImage image = bitmap.image(m_readBitmap, m_cancelled);
    source = source.normalized();
    if (runsUp && !bitmap.topDown())
        source.moveTop(image.height() - source.bottom());
    m_canvas.paintImage(image, source, mapped(target), sourceOperation(operation));
}

void WmfPlayer::setClip(const QRegion& clip)
{
    m_state.clip = clip;
    m_canvas.setClip(clip);
}

} // namespace trovarium
