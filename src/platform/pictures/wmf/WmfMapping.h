#pragma once

#include "platform/pictures/wmf/WmfFile.h"

#include <QPointF>
#include <QSize>
#include <QSizeF>

namespace trovarium {

// How a file lies before its first record: its natural size in pixels, 96 to the inch, and the part of its
// own units that fills it.
struct WmfFrame {
    QSize naturalSize;
    QPointF windowOrigin;
    QSizeF windowExtent;
    QSizeF viewportExtent; // in the units that the file takes for pixels
};

// A placeable file is as large as its box. A plain one has the size of its viewport if it sets one, else that
// of its first window: in inches when its map mode tells what a unit is, else a unit for a pixel, brought
// down to 1024 for the longer side. "Invalid picture" for one that tells no size, or one beyond the limits.
WmfFrame frameOf(const WmfFile& file);

// From the units of the records to pixels of the canvas. Windows may be changed by records on the way; all
// map modes without a unit of their own work alike, so that a file in pixels fits every canvas.
class WmfMapping {
public:
    WmfMapping(const WmfFrame& frame, QSize canvas);

    void setMode(int mode)
    {
        m_mode = mode;
        update();
    }
    void setWindowOrigin(QPointF origin) { m_windowOrigin = origin; }
    void moveWindowOrigin(QPointF by) { m_windowOrigin += by; }
    void setWindowExtent(QSizeF extent) { setExtent(m_windowExtent, extent); }
    void scaleWindowExtent(double x, double y) { scaleExtent(m_windowExtent, x, y); }
    void setViewportOrigin(QPointF origin) { m_viewportOrigin = origin; }
    void moveViewportOrigin(QPointF by) { m_viewportOrigin += by; }
    void setViewportExtent(QSizeF extent) { setExtent(m_viewportExtent, extent); }
    void scaleViewportExtent(double x, double y) { scaleExtent(m_viewportExtent, x, y); }

    // A place on the canvas, kept within `Reach` of it.
    QPointF map(QPointF point) const;

    // Canvas pixels for a unit, below 0 where it runs to the left or up.
    double scaleX() const { return m_scaleX; }
    double scaleY() const { return m_scaleY; }

    // Beyond 32767 the painter clips paths at a cost without limits; strokes reach further than their points.
    static constexpr double Reach = 24000;

private:
    void setExtent(QSizeF& extent, QSizeF value);
    void scaleExtent(QSizeF& extent, double x, double y);
    void update();

    int m_mode = 0;
    QPointF m_windowOrigin;
    QSizeF m_windowExtent;
    QPointF m_viewportOrigin;
    QSizeF m_viewportExtent;
    double m_pixelsPerViewportX = 1;
    double m_pixelsPerViewportY = 1;
    double m_pixelsPerInchX = 1;
    double m_pixelsPerInchY = 1;
    double m_scaleX = 1;
    double m_scaleY = 1;
};

} // namespace trovarium
