#include "platform/pictures/wmf/WmfPlayer.h"

#include "runtime/Failure.h"

#include <algorithm>
#include <utility>

namespace trovarium {

WmfPlayer::WmfPlayer(
    const WmfFrame& frame, WmfCanvas& canvas, ReadBitmap readBitmap, const std::atomic<bool>& cancelled)
    : m_canvas(canvas)
    , m_readBitmap(readBitmap)
    , m_cancelled(cancelled)
    , m_state{WmfMapping(frame, canvas.area().size())}
{
}

void WmfPlayer::play(const WmfFile& file)
{
    constexpr double RecordWork = 100;
    for (const WmfRecord& record : file.records()) {
        if (m_cancelled)
            throw Failure(FailureKind::InvalidPicture);
        m_canvas.charge(RecordWork);
        carryOut(record);
    }
}

// The records that change the state; what paints follows in `paint`.
void WmfPlayer::carryOut(const WmfRecord& record)
{
    constexpr unsigned Transparent = 1;
    constexpr unsigned Winding = 2;
    const auto point = [&record] { return QPointF(record.number(1), record.number(0)); };
    const auto extent = [&record] { return QSizeF(record.number(1), record.number(0)); };
    switch (record.function()) {
    case WmfFunction::SaveDc:
        return saveDc();
    case WmfFunction::RestoreDc:
        return restoreDc(record.number(0));
    case WmfFunction::SetMapMode:
        return m_state.mapping.setMode(record.number(0));
    case WmfFunction::SetWindowOrigin:
        return m_state.mapping.setWindowOrigin(point());
    case WmfFunction::SetWindowExtent:
        return m_state.mapping.setWindowExtent(extent());
    case WmfFunction::OffsetWindowOrigin:
        return m_state.mapping.moveWindowOrigin(point());
    case WmfFunction::ScaleWindowExtent:
        return scaleExtent(record, &WmfMapping::scaleWindowExtent);
    case WmfFunction::SetViewportOrigin:
        return m_state.mapping.setViewportOrigin(point());
    case WmfFunction::SetViewportExtent:
        return m_state.mapping.setViewportExtent(extent());
    case WmfFunction::OffsetViewportOrigin:
        return m_state.mapping.moveViewportOrigin(point());
    case WmfFunction::ScaleViewportExtent:
        return scaleExtent(record, &WmfMapping::scaleViewportExtent);
    case WmfFunction::SetBackgroundMode:
        m_state.backgroundIsOpaque = record.word(0) != Transparent;
        return;
    case WmfFunction::SetBackgroundColor:
        m_state.background = wmfColor(record.doubleWord(0));
        return;
    case WmfFunction::SetTextColor:
        m_state.textColor = wmfColor(record.doubleWord(0));
        return;
    case WmfFunction::SetTextAlign:
        m_state.textAlign = record.word(0);
        return;
    case WmfFunction::SetPolygonFillMode:
        m_state.fillRule = record.word(0) == Winding ? Qt::WindingFill : Qt::OddEvenFill;
        return;
    case WmfFunction::SetRasterOperation:
        if (const unsigned number = record.word(0); number >= 1 && number <= 16)
            m_state.operation = number - 1;
        return;
    case WmfFunction::IntersectClipRectangle:
        return setClip(clip() & boxAt(record, 0).toRect());
    case WmfFunction::ExcludeClipRectangle:
        return setClip(clip() - boxAt(record, 0).toRect());
    case WmfFunction::OffsetClipRegion:
        return offsetClip(record);
    case WmfFunction::SelectClipRegion:
        // A region would be in pixels of the screen that the file was made on. Most files select none, to remove the
        // clip.
        m_state.clip.reset();
        return m_canvas.setClip(clip());
    case WmfFunction::CreatePen:
        return m_objects.add(wmfPen(record));
    case WmfFunction::CreateBrushIndirect:
        return m_objects.add(wmfBrush(record));
    case WmfFunction::CreateDibPatternBrush:
        return createPatternBrush(record);
    case WmfFunction::CreateFont:
        return m_objects.add(wmfFont(record));
    case WmfFunction::CreatePalette:
    case WmfFunction::CreateBrush:
    case WmfFunction::CreatePatternBrush:
    case WmfFunction::CreateBitmapIndirect:
    case WmfFunction::CreateBitmap:
    case WmfFunction::CreateRegion:
        return m_objects.add(WmfOther());
    case WmfFunction::SelectObject:
        return selectObject(record);
    case WmfFunction::DeleteObject:
        return m_objects.remove(record.word(0));
    default:
        paint(record);
    }
}

void WmfPlayer::saveDc()
{
    constexpr std::size_t Most = 4096;
    if (m_saved.size() == Most)
        throw Failure(FailureKind::InvalidPicture);
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
    m_canvas.setClip(clip());
}

void WmfPlayer::scaleExtent(const WmfRecord& record, void (WmfMapping::*scale)(double x, double y))
{
    if (record.number(0) != 0 && record.number(2) != 0)
        (m_state.mapping.*scale)(
            double(record.number(3)) / record.number(2), double(record.number(1)) / record.number(0));
}

void WmfPlayer::offsetClip(const WmfRecord& record)
{
    const QPointF by(record.number(1) * m_state.mapping.scaleX(), record.number(0) * m_state.mapping.scaleY());
    constexpr double Most = WmfMapping::Reach;
    setClip(clip().translated(QPointF(std::clamp(by.x(), -Most, Most), std::clamp(by.y(), -Most, Most)).toPoint())
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
