// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBrush>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPen>

namespace trovarium {

// What a path is painted with. The pen's width is in pixels of the canvas.
struct WmfInk {
    // A raster operation: the result for each bit of a color, as a table of four bits. From the lowest: the result if
    // the bit is set in neither color, only in the one below, only in the new one, in both.
    static constexpr unsigned Copy = 12;

    QPen pen{Qt::NoPen};
    QBrush brush{};
    QColor gaps{}; // color between dashes and hatches; invalid if nothing is painted there
    unsigned operation = Copy;
};

// Paints a picture on white. Edges aren't antialiased, so that adjoining shapes leave no seam between them; they look
// smooth when a large canvas is shown smaller. All work is counted: "Invalid picture" once a file takes more than some
// seconds of it. Whether it does must not depend on the size of the canvas.
class WmfCanvas {
public:
    // `hairline`: the thinnest line, in pixels. `toLargest`: how many times longer the sides of the largest canvas are;
    // work is counted as it would be on that one.
    WmfCanvas(QImage& image, double hairline, double toLargest);

    double hairline() const { return m_hairline; }
    QRect area() const { return m_area; }

    void setClip(const QRegion& clip);

    // A path that reaches too far for the painter is left out.
    void paint(const QPainterPath& path, const WmfInk& ink);

    // A target that runs to the left or up mirrors the image.
    void paintImage(const QImage& image, const QRectF& source, const QRectF& target, unsigned operation);

    // Counts work, in units of about a nanosecond.
    void charge(double work);

private:
    void setOperation(unsigned operation);
    void fill(const QPainterPath& path, const QBrush& brush);
    void stroke(const QPainterPath& path, const QPen& pen);
    void strokePart(const QPainterPath& path, const QPen& pen);
    void chargeCrossings(const QPainterPath& path, const QRectF& bounds, double width);
    void chargePixels(double pixels);

    QPainter m_painter;
    QRect m_area;
    double m_hairline;
    double m_toLargest;
    double m_clipParts = 1;
    double m_work = 0;
};

} // namespace trovarium
