#pragma once

#include "platform/pictures/Picture.h"
#include "platform/pictures/PicturePainter.h"

#include <QRectF>
#include <QSize>

#include <vector>

class QPainter;

namespace trovarium {

// What has been painted on a picture box. Kept as the pictures and their places rather than as pixels, so
// that it is sharp on every screen and needs no window.
struct Canvas {
    struct Stroke {
        Picture picture;
        QRectF place; // in pixels of the box
        PicturePainter painter;
    };

    void add(const Picture& picture, const QRectF& place, QSize box);
    void paint(QPainter& painter);

    std::vector<Stroke> strokes;
};

} // namespace trovarium
