#include "platform/pictures/wmf/WmfPlayer.h"

#include "platform/pictures/wmf/WmfBitmap.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <array>
#include <utility>

namespace trovarium {

WmfPlayer::WmfPlayer(const WmfFrame& frame, WmfCanvas& canvas, const std::atomic<bool>& cancelled)
    : m_canvas(canvas)
    , m_cancelled(cancelled)
    , m_state{WmfMapping(frame, canvas.area().size())}
{
}

bool WmfPlayer::play(const WmfFile& file)
{
    constexpr double RecordWork = 100;
    for (const WmfRecord& record : file.records()) {
        if (m_cancelled)
            return false;
        m_canvas.charge(RecordWork);
        if (const Handler handler = handlerFor(record.function()))
            (this->*handler)(record);
    }
    return !m_cancelled;
}

WmfPlayer::Handler WmfPlayer::handlerFor(WmfFunction function)
{
    using Entry = std::pair<WmfFunction, Handler>;
    static constexpr std::array Handlers = {
        // by number
        Entry{WmfFunction::SaveDc, &WmfPlayer::saveDc},
        Entry{WmfFunction::CreatePalette, &WmfPlayer::createOther},
        Entry{WmfFunction::CreateBrush, &WmfPlayer::createOther},
        Entry{WmfFunction::SetBackgroundMode, &WmfPlayer::setBackgroundMode},
        Entry{WmfFunction::SetMapMode, &WmfPlayer::setMapMode},
        Entry{WmfFunction::SetRasterOperation, &WmfPlayer::setRasterOperation},
        Entry{WmfFunction::SetPolygonFillMode, &WmfPlayer::setPolygonFillMode},
        Entry{WmfFunction::RestoreDc, &WmfPlayer::restoreDc},
        Entry{WmfFunction::SelectClipRegion, &WmfPlayer::removeClip},
        Entry{WmfFunction::SelectObject, &WmfPlayer::selectObject},
        Entry{WmfFunction::SetTextAlign, &WmfPlayer::setTextAlign},
        Entry{WmfFunction::CreateDibPatternBrush, &WmfPlayer::createPatternBrush},
        Entry{WmfFunction::DeleteObject, &WmfPlayer::deleteObject},
        Entry{WmfFunction::CreatePatternBrush, &WmfPlayer::createOther},
        Entry{WmfFunction::SetBackgroundColour, &WmfPlayer::setBackgroundColour},
        Entry{WmfFunction::SetTextColour, &WmfPlayer::setTextColour},
        Entry{WmfFunction::SetWindowOrigin, &WmfPlayer::setWindowOrigin},
        Entry{WmfFunction::SetWindowExtent, &WmfPlayer::setWindowExtent},
        Entry{WmfFunction::SetViewportOrigin, &WmfPlayer::setViewportOrigin},
        Entry{WmfFunction::SetViewportExtent, &WmfPlayer::setViewportExtent},
        Entry{WmfFunction::OffsetWindowOrigin, &WmfPlayer::offsetWindowOrigin},
        Entry{WmfFunction::OffsetViewportOrigin, &WmfPlayer::offsetViewportOrigin},
        Entry{WmfFunction::LineTo, &WmfPlayer::lineTo},
        Entry{WmfFunction::MoveTo, &WmfPlayer::moveTo},
        Entry{WmfFunction::OffsetClipRegion, &WmfPlayer::offsetClip},
        Entry{WmfFunction::CreatePen, &WmfPlayer::createPen},
        Entry{WmfFunction::CreateFont, &WmfPlayer::createFont},
        Entry{WmfFunction::CreateBrushIndirect, &WmfPlayer::createBrush},
        Entry{WmfFunction::CreateBitmapIndirect, &WmfPlayer::createOther},
        Entry{WmfFunction::Polygon, &WmfPlayer::polygon},
        Entry{WmfFunction::Polyline, &WmfPlayer::polyline},
        Entry{WmfFunction::ScaleWindowExtent, &WmfPlayer::scaleWindowExtent},
        Entry{WmfFunction::ScaleViewportExtent, &WmfPlayer::scaleViewportExtent},
        Entry{WmfFunction::ExcludeClipRectangle, &WmfPlayer::excludeClip},
        Entry{WmfFunction::IntersectClipRectangle, &WmfPlayer::intersectClip},
        Entry{WmfFunction::Ellipse, &WmfPlayer::ellipse},
        Entry{WmfFunction::Rectangle, &WmfPlayer::rectangle},
        Entry{WmfFunction::SetPixel, &WmfPlayer::setPixel},
        Entry{WmfFunction::TextOut, &WmfPlayer::textOut},
        Entry{WmfFunction::PolyPolygon, &WmfPlayer::polyPolygon},
        Entry{WmfFunction::RoundRectangle, &WmfPlayer::roundRectangle},
        Entry{WmfFunction::PatternBlit, &WmfPlayer::patternBlit},
        Entry{WmfFunction::CreateBitmap, &WmfPlayer::createOther},
        Entry{WmfFunction::CreateRegion, &WmfPlayer::createOther},
        Entry{WmfFunction::Arc, &WmfPlayer::arc},
        Entry{WmfFunction::Pie, &WmfPlayer::pie},
        Entry{WmfFunction::Chord, &WmfPlayer::chord},
        Entry{WmfFunction::DibBitBlit, &WmfPlayer::dibBitBlit},
        Entry{WmfFunction::ExtendedTextOut, &WmfPlayer::extendedTextOut},
        Entry{WmfFunction::DibStretchBlit, &WmfPlayer::dibStretchBlit},
        Entry{WmfFunction::SetDibToDevice, &WmfPlayer::setDibToDevice},
        Entry{WmfFunction::StretchDib, &WmfPlayer::stretchDib},
    };
    const auto* const found = std::lower_bound(Handlers.begin(), Handlers.end(), function,
        [](const Entry& entry, WmfFunction number) { return entry.first < number; });
    return found != Handlers.end() && found->first == function ? found->second : nullptr;
}

void WmfPlayer::saveDc(const WmfRecord&)
{
    constexpr std::size_t Most = 4096;
    if (m_saved.size() == Most)
        throw Failure(FailureKind::InvalidPicture);
    m_saved.push_back(m_state);
}

// Above 0 the level to go back to, below it the count of levels.
void WmfPlayer::restoreDc(const WmfRecord& record)
{
    const int number = record.number(0);
    const int level = number > 0 ? number : static_cast<int>(m_saved.size()) + number + 1;
    if (number == 0 || level < 1 || level > static_cast<int>(m_saved.size()))
        return;
    m_saved.erase(m_saved.begin() + level, m_saved.end());
    m_state = std::move(m_saved.back());
    m_saved.pop_back();
    m_canvas.setClip(clip());
}

void WmfPlayer::setMapMode(const WmfRecord& record)
{
    m_state.mapping.setMode(record.number(0));
}

void WmfPlayer::setWindowOrigin(const WmfRecord& record)
{
    m_state.mapping.setWindowOrigin(QPointF(record.number(1), record.number(0)));
}

void WmfPlayer::setWindowExtent(const WmfRecord& record)
{
    m_state.mapping.setWindowExtent(QSizeF(record.number(1), record.number(0)));
}

void WmfPlayer::offsetWindowOrigin(const WmfRecord& record)
{
    m_state.mapping.moveWindowOrigin(QPointF(record.number(1), record.number(0)));
}

void WmfPlayer::scaleWindowExtent(const WmfRecord& record)
{
    if (record.number(0) != 0 && record.number(2) != 0)
        m_state.mapping.scaleWindowExtent(
            double(record.number(3)) / record.number(2), double(record.number(1)) / record.number(0));
}

void WmfPlayer::setViewportOrigin(const WmfRecord& record)
{
    m_state.mapping.setViewportOrigin(QPointF(record.number(1), record.number(0)));
}

void WmfPlayer::setViewportExtent(const WmfRecord& record)
{
    m_state.mapping.setViewportExtent(QSizeF(record.number(1), record.number(0)));
}

void WmfPlayer::offsetViewportOrigin(const WmfRecord& record)
{
    m_state.mapping.moveViewportOrigin(QPointF(record.number(1), record.number(0)));
}

void WmfPlayer::scaleViewportExtent(const WmfRecord& record)
{
    if (record.number(0) != 0 && record.number(2) != 0)
        m_state.mapping.scaleViewportExtent(
            double(record.number(3)) / record.number(2), double(record.number(1)) / record.number(0));
}

void WmfPlayer::setBackgroundMode(const WmfRecord& record)
{
    constexpr unsigned Transparent = 1;
    m_state.backgroundIsOpaque = record.word(0) != Transparent;
}

void WmfPlayer::setBackgroundColour(const WmfRecord& record)
{
    m_state.background = wmfColour(record.doubleWord(0));
}

void WmfPlayer::setTextColour(const WmfRecord& record)
{
    m_state.textColour = wmfColour(record.doubleWord(0));
}

void WmfPlayer::setTextAlign(const WmfRecord& record)
{
    m_state.textAlign = record.word(0);
}

void WmfPlayer::setPolygonFillMode(const WmfRecord& record)
{
    constexpr unsigned Winding = 2;
    m_state.fillRule = record.word(0) == Winding ? Qt::WindingFill : Qt::OddEvenFill;
}

void WmfPlayer::setRasterOperation(const WmfRecord& record)
{
    const unsigned number = record.word(0); // from 1
    if (number >= 1 && number <= 16)
        m_state.operation = number - 1;
}

void WmfPlayer::intersectClip(const WmfRecord& record)
{
    setClip(clip() & boxAt(record, 0).toRect());
}

void WmfPlayer::excludeClip(const WmfRecord& record)
{
    setClip(clip() - boxAt(record, 0).toRect());
}

void WmfPlayer::offsetClip(const WmfRecord& record)
{
    const QPointF by(record.number(1) * m_state.mapping.scaleX(), record.number(0) * m_state.mapping.scaleY());
    constexpr double Most = WmfMapping::Reach;
    setClip(clip().translated(QPointF(std::clamp(by.x(), -Most, Most), std::clamp(by.y(), -Most, Most)).toPoint())
        & m_canvas.area());
}

// A region would be in the pixels of the screen that the file was made on. Most files select none here, to
// be rid of their clips.
void WmfPlayer::removeClip(const WmfRecord&)
{
    m_state.clip.reset();
    m_canvas.setClip(clip());
}

void WmfPlayer::createPen(const WmfRecord& record)
{
    m_objects.add(wmfPen(record));
}

void WmfPlayer::createBrush(const WmfRecord& record)
{
    m_objects.add(wmfBrush(record));
}

void WmfPlayer::createPatternBrush(const WmfRecord& record)
{
    const WmfBitmap bitmap(record.bytesFrom(2));
    if (record.word(1) != 0 || !bitmap.isKnown()) { // colours by a palette, or in the form of a device
        m_objects.add(WmfOther());
        return;
    }
    constexpr double KeptPixelWork = 50; // so that all patterns together take up less than 250 MB
    m_canvas.charge(bitmap.pixelCount() * KeptPixelWork);
    m_objects.add(QBrush(bitmap.image(m_cancelled)));
}

void WmfPlayer::createFont(const WmfRecord& record)
{
    m_objects.add(wmfFont(record));
}

void WmfPlayer::createOther(const WmfRecord&)
{
    m_objects.add(WmfOther());
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

void WmfPlayer::deleteObject(const WmfRecord& record)
{
    m_objects.remove(record.word(0));
}

QRegion WmfPlayer::clip() const
{
    return m_state.clip.value_or(QRegion(m_canvas.area()));
}

void WmfPlayer::setClip(const QRegion& clip)
{
    m_state.clip = clip;
    m_canvas.setClip(clip);
}

} // namespace trovarium
