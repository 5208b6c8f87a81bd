// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/wmf/WmfBitmap.h"
#include "platform/pictures/wmf/WmfCanvas.h"
#include "platform/pictures/wmf/WmfFile.h"
#include "platform/pictures/wmf/WmfMapping.h"
#include "platform/pictures/wmf/WmfObjects.h"
#include "platform/pictures/wmf/WmfText.h"

#include <QRegion>

#include <atomic>
#include <set>
#include <string_view>
#include <tuple>
#include <vector>

namespace trovarium {

// Carries out records on a canvas. Skips what it doesn't support: escapes, palettes, regions, flood fills and
// device-dependent bitmaps.
class WmfPlayer {
public:
    WmfPlayer(const WmfMapping& mapping, WmfCanvas& canvas, ReadBitmap readBitmap, const std::atomic<bool>& cancelled);

    // "Invalid picture" for a damaged record, and when `cancelled` was set meanwhile.
    void play(const WmfFile& file);

private:
    struct State {
        WmfMapping mapping;
        QPen pen{Qt::black, 0};
        QBrush brush{Qt::white};
        WmfFont font{};
        QColor background{Qt::white};
        QColor textColor{Qt::black};
        bool backgroundIsOpaque = true;
        unsigned operation = WmfInk::Copy;
        Qt::FillRule fillRule = Qt::OddEvenFill;
        unsigned textAlign = 0;
        QPointF position{}; // in logical units
        QRegion clip{};
    };

    using Action = void (*)(WmfPlayer& player, const WmfRecord& record);
    static Action actionOf(unsigned function); // null if it isn't supported

    void saveDc();
    void restoreDc(int number);
    void setRasterOperation(unsigned number);
    void offsetClip(const WmfRecord& record);
    void createPatternBrush(const WmfRecord& record);
    void selectObject(const WmfRecord& record);

    void lineTo(QPointF position);
    void roundRectangle(const WmfRecord& record);
    void setPixel(const WmfRecord& record);
    void polyPolygon(const WmfRecord& record);
    void textOut(const WmfRecord& record);
    void extendedTextOut(const WmfRecord& record);
    void dibBlit(const WmfRecord& record, std::size_t targetIndex);
    void stretchDib(const WmfRecord& record);
    void setDibToDevice(const WmfRecord& record);

    QPointF pointAt(const WmfRecord& record, std::size_t index) const; // y, x; on the canvas
    QRectF boxAt(const WmfRecord& record, std::size_t index) const;    // bottom, right, top, left
    QRectF mapped(const QRectF& units) const;
    QPainterPath arc(const WmfRecord& record, bool fromMiddle) const;
    QPolygonF pointsAt(const WmfRecord& record, std::size_t index, std::size_t count) const;

    WmfInk ink() const;
    void paintShape(QPainterPath path);
    void paintLine(const QPainterPath& path);
    void paintText(QPointF place, std::string_view text, const std::vector<int>& advances);
    void paintPattern(const QRectF& target, std::uint32_t operation);
    // The target is in logical units. `runsUp`: y of the source counts from the lower edge of a bottom-up bitmap.
    void paintBitmap(std::uint32_t operation, QRectF source, const QRectF& target, WmfBytes bytes, bool runsUp = false);
    void setClip(const QRegion& clip);

    WmfCanvas& m_canvas;
    ReadBitmap m_readBitmap;
    const std::atomic<bool>& m_cancelled;
    State m_state;
    std::vector<State> m_saved;
    WmfObjects m_objects;
    std::set<std::tuple<QString, int, bool>> m_fonts; // that were seen before: name, weight and whether italic
};

} // namespace trovarium
