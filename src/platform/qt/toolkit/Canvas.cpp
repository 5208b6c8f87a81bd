#include "platform/qt/toolkit/Canvas.h"

#include "platform/pictures/PictureData.h"

#include <QPainter>

namespace trovarium {

namespace {

// Beyond this many pictures they become one, at twice the box's pixels, so that a box that is painted on
// for ever doesn't grow for ever.
constexpr std::size_t MostStrokes = 64;
constexpr int FlatScale = 2;

bool isOpaque(const Picture& picture)
{
    const PictureData& data = *picture.data();
    return data.drawing == nullptr && !data.pixels.hasAlphaChannel();
}

} // namespace

void Canvas::add(const Picture& picture, const QRectF& place, QSize box)
{
    if (isOpaque(picture))
        std::erase_if(strokes, [&](const Stroke& below) { return place.contains(below.place); });
    strokes.push_back({picture, place, {}});
    if (strokes.size() <= MostStrokes)
        return;
    QImage flat(box * FlatScale, QImage::Format_ARGB32_Premultiplied);
    flat.fill(Qt::transparent);
    QPainter painter(&flat);
    painter.scale(FlatScale, FlatScale);
    paint(painter);
    painter.end();
    flat.setDevicePixelRatio(FlatScale);
    strokes.clear();
    strokes.push_back({pictureFromImage(flat), QRectF(QPointF(), QSizeF(box)), {}});
}

void Canvas::paint(QPainter& painter)
{
    for (Stroke& stroke : strokes)
        stroke.painter.paint(painter, stroke.picture, stroke.place);
}

} // namespace trovarium
