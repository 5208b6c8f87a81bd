#pragma once

#include "platform/pictures/wmf/WmfCanvas.h"
#include "platform/pictures/wmf/WmfFile.h"
#include "platform/pictures/wmf/WmfMapping.h"
#include "platform/pictures/wmf/WmfObjects.h"
#include "platform/pictures/wmf/WmfText.h"

#include <QRegion>

#include <atomic>
#include <optional>
#include <string_view>
#include <vector>

namespace trovarium {

// Carries out records on a canvas. What isn't known here is skipped: escapes, palettes, regions, floods,
// and bitmaps in the form of a device.
class WmfPlayer {
public:
    WmfPlayer(const WmfFrame& frame, WmfCanvas& canvas, const std::atomic<bool>& cancelled);

    // False when `cancelled` was set meanwhile. "Invalid picture" for a damaged record.
    bool play(const WmfFile& file);

private:
    using Handler = void (WmfPlayer::*)(const WmfRecord&);

    struct State {
        WmfMapping mapping;
        QPen pen{Qt::black, 0};
        QBrush brush{Qt::white};
        WmfFont font{};
        QColor background{Qt::white};
        QColor textColour{Qt::black};
        bool backgroundIsOpaque = true;
        unsigned operation = WmfInk::Copy;
        Qt::FillRule fillRule = Qt::OddEvenFill;
        unsigned textAlign = 0;
        QPointF position{}; // in units
        std::optional<QRegion> clip{};
    };

    // What a blit takes from where to where, in units and pixels of the bitmap.
    struct Blit {
        std::uint32_t operation = 0;
        QRectF source;
        QRectF target;
        bool sourceRunsUp = false; // counted from the bitmap's lower edge if that is its first line
    };

    static Handler handlerFor(WmfFunction function);

    // State
    void saveDc(const WmfRecord& record);
    void restoreDc(const WmfRecord& record);
    void setMapMode(const WmfRecord& record);
    void setWindowOrigin(const WmfRecord& record);
    void setWindowExtent(const WmfRecord& record);
    void offsetWindowOrigin(const WmfRecord& record);
    void scaleWindowExtent(const WmfRecord& record);
    void setViewportOrigin(const WmfRecord& record);
    void setViewportExtent(const WmfRecord& record);
    void offsetViewportOrigin(const WmfRecord& record);
    void scaleViewportExtent(const WmfRecord& record);
    void setBackgroundMode(const WmfRecord& record);
    void setBackgroundColour(const WmfRecord& record);
    void setTextColour(const WmfRecord& record);
    void setTextAlign(const WmfRecord& record);
    void setPolygonFillMode(const WmfRecord& record);
    void setRasterOperation(const WmfRecord& record);

    // Clipping
    void intersectClip(const WmfRecord& record);
    void excludeClip(const WmfRecord& record);
    void offsetClip(const WmfRecord& record);
    void removeClip(const WmfRecord& record);

    // Objects
    void createPen(const WmfRecord& record);
    void createBrush(const WmfRecord& record);
    void createPatternBrush(const WmfRecord& record);
    void createFont(const WmfRecord& record);
    void createOther(const WmfRecord& record);
    void selectObject(const WmfRecord& record);
    void deleteObject(const WmfRecord& record);

    // Shapes
    void moveTo(const WmfRecord& record);
    void lineTo(const WmfRecord& record);
    void rectangle(const WmfRecord& record);
    void roundRectangle(const WmfRecord& record);
    void ellipse(const WmfRecord& record);
    void arc(const WmfRecord& record);
    void pie(const WmfRecord& record);
    void chord(const WmfRecord& record);
    void polyline(const WmfRecord& record);
    void polygon(const WmfRecord& record);
    void polyPolygon(const WmfRecord& record);
    void setPixel(const WmfRecord& record);

    // Text
    void textOut(const WmfRecord& record);
    void extendedTextOut(const WmfRecord& record);

    // Bitmaps
    void patternBlit(const WmfRecord& record);
    void dibBitBlit(const WmfRecord& record);
    void dibStretchBlit(const WmfRecord& record);
    void stretchDib(const WmfRecord& record);
    void setDibToDevice(const WmfRecord& record);

    QPointF pointAt(const WmfRecord& record, std::size_t index) const; // y, x; on the canvas
    QRectF boxAt(const WmfRecord& record, std::size_t index) const;    // bottom, right, top, left
    QRectF mapped(const QRectF& units) const;
    QPolygonF pointsAt(const WmfRecord& record, std::size_t index, std::size_t count) const;
    WmfInk ink() const;
    void paintShape(const QPainterPath& path);
    void paintLine(const QPainterPath& path);
    void paintText(QPointF place, std::string_view text, const std::vector<int>& advances);
    void paintPattern(const QRectF& target, std::uint32_t operation);
    void paintBitmap(const Blit& blit, WmfBytes bitmap);
    QRegion clip() const;
    void setClip(const QRegion& clip);

    WmfCanvas& m_canvas;
    const std::atomic<bool>& m_cancelled;
    State m_state;
    std::vector<State> m_saved;
    WmfObjects m_objects;
    WmfTypesetter m_typesetter;
};

} // namespace trovarium
