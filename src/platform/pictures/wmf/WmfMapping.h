// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/wmf/WmfFile.h"

#include <QPointF>
#include <QSize>
#include <QSizeF>

namespace trovarium {

// From the units of the records to pixels of the canvas: a part of those, the window, fills the viewport, which is
// counted in what the file takes for pixels. Both may be changed by records on the way; all map modes without a unit of
// their own work alike, so that a file in pixels fits every canvas.
class WmfMapping {
public:
    // As it is before the first record. A placeable file is as large as its box. A plain one has the size of its
    // viewport if it sets one, else that of its first window: in inches when its map mode tells what a unit is, else a
    // unit for a pixel, brought down to 1024 for the longer side. "Invalid picture" for one that tells no size, or one
    // beyond the limits.
    explicit WmfMapping(const WmfFile& file);

    QSize naturalSize() const { return m_naturalSize; } // in pixels, 96 to the inch
    void setCanvas(QSize canvas);                       // before the first record

    // Sets one of the extents below; what can't be one changes nothing.
    void setExtent(QSizeF WmfMapping::*extent, QSizeF value);
    void scaleExtent(QSizeF WmfMapping::*extent, const WmfRecord& record); // by two fractions

    // Canvas pixels for a unit, below 0 where it runs to the left or up.
    QPointF scale() const;

    // A place on the canvas, kept within `Reach` of it.
    QPointF map(QPointF point) const;

    // Beyond 32767 the painter clips paths at a cost without limits; strokes reach further than their points.
    static constexpr double Reach = 24000;

    int mode = 0;
    QPointF windowOrigin;
    QSizeF windowExtent{0, 0};
    QPointF viewportOrigin;
    QSizeF viewportExtent{0, 0};

private:
    QSizeF plainSize(int mode) const;

    QSize m_naturalSize;
    QPointF m_pixelsPerViewport; // across and down
    QPointF m_pixelsPerInch;
};

} // namespace trovarium
