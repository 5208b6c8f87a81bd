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
    // How a color meets the one below it. Bit by bit the result where, from the lowest: neither is set,
    // only the one below, only the new one, both.
    static constexpr unsigned Copy = 12;

    QPen pen{Qt::NoPen};
    QBrush brush{};
    QColor gaps{}; // between dashes and hatches; invalid where they stay open
    unsigned operation = Copy;
};

// The picture as it is painted, on white. Edges are hard, so that shapes that adjoin leave no seam between
// them; a canvas that is larger than it is shown makes them smooth. All work is counted: "Invalid picture"
// once a file asks for more than some seconds of it, whatever the size that it is painted in.
class WmfCanvas {
public:
    // `hairline`: the thinnest line, in pixels. `share`: the size of the largest canvas as a multiple of
    // this one's.
    WmfCanvas(QImage& image, double hairline, double share);

    double hairline() const { return m_hairline; }
    QRect area() const { return m_area; }

    void setClip(const QRegion& clip);

    // A path that reaches too far for the painter is left out.
    void paint(const QPainterPath& path, const WmfInk& ink);

    // A target that runs to the left or up mirrors the image.
    void paintImage(const QImage& image, const QRectF& source, const QRectF& target, unsigned operation);

    // Counts work, about a nanosecond for each 1.
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
    double m_share;
    double m_clipParts = 1;
    double m_work = 0;
};

} // namespace trovarium
