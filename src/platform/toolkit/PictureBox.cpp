// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/PictureBox.h"

#include "platform/media/FilmSurface.h"
#include "platform/pictures/PictureData.h"
#include "platform/pictures/PicturePainter.h"
#include "platform/toolkit/QtValues.h"
#include "runtime/Failure.h"

#include <QAccessible>
#include <QPainter>
#include <QWidget>

#include <cmath>
#include <utility>
#include <vector>

namespace trovarium {

namespace {

// Beyond this many pictures on a canvas they become one, at twice the box's pixels, so that a box that is painted on
// for ever doesn't grow for ever.
constexpr std::size_t MostStrokes = 64;
constexpr int FlatScale = 2;

QSize wholePixels(const PictureBox& box)
{
    const float edges = 2 * box.edge();
    return {static_cast<int>(std::lround(box.parent().toPixels(box.Width()) - edges)),
        static_cast<int>(std::lround(box.parent().toPixels(box.Height()) - edges))};
}

} // namespace

// What has been painted. Kept as the pictures and their places rather than as pixels, so that it is sharp on every
// screen and needs no window.
struct PictureBox::Canvas {
    struct Stroke {
        trovarium::Picture picture;
        QRectF place; // in pixels of the box
        PicturePainter painter;
    };

    void add(const trovarium::Picture& picture, const QRectF& place, QSize box)
    {
        if (trovarium::isOpaque(picture))
            std::erase_if(strokes, [&](const Stroke& below) { return place.contains(below.place); });
        strokes.push_back({picture, place, {}});
        if (strokes.size() <= MostStrokes)
            return;
        QImage flat(box * FlatScale, QImage::Format_ARGB32_Premultiplied);
        flat.fill(Qt::transparent);
        QPainter onFlat(&flat);
        onFlat.scale(FlatScale, FlatScale);
        paint(onFlat);
        onFlat.end();
        flat.setDevicePixelRatio(FlatScale);
        strokes.clear();
        strokes.push_back({pictureFromImage(flat), QRectF(QPointF(), QSizeF(box)), {}});
    }

    void paint(QPainter& target)
    {
        for (Stroke& stroke : strokes)
            stroke.painter.paint(target, stroke.picture, stroke.place);
    }

    void paintAll(QPainter& target, const PictureBox& box, const QRectF& place)
    {
        target.fillRect(place, toQColor(box.BackColor()));
        painter.paint(target, box.Picture(), place);
        paint(target);
        const FilmSurface::Shown film = box.filmSurface()->shown();
        if (film.frame == nullptr)
            return;
        const FilmFrame& frame = *film.frame; // which outlives the picture
        const auto* pixels = reinterpret_cast<const uchar*>(frame.pixels.data());
        painter.paint(target, pictureFromImage(QImage(pixels, frame.width, frame.height, QImage::Format_RGB32)),
            QRectF(film.place.left, film.place.top, film.place.width, film.place.height));
    }

    std::vector<Stroke> strokes;
    PicturePainter painter; // of the picture in the back and of films
};

PictureBox::PictureBox(Container* parent, const Plan& plan, ScaleMode scale)
    : DrawnContainer(parent, plan, scale)
    , m_canvas(std::make_unique<Canvas>())
    , m_film(std::make_shared<FilmSurface>())
{
    m_film->tell([widget = widget()] {
        QMetaObject::invokeMethod(
            widget, [widget] { widget->update(); }, Qt::QueuedConnection);
    });
}

PictureBox::~PictureBox()
{
    m_film->tell({});
}

void PictureBox::setPicture(trovarium::Picture value)
{
    m_film->shut();
    if (value == m_picture && m_canvas->strokes.empty())
        return;
    m_picture = std::move(value);
    m_canvas->strokes.clear();
    repaint();
    takePictureSize();
}

// A box that takes its picture's size has no other size while it holds one.
void PictureBox::takePictureSize()
{
    if (!AutoSize() || m_picture.empty())
        return;
    Width = parent().fromTwips((static_cast<float>(m_picture.width()) + 2 * edge()) * TwipsPerPixel);
    Height = parent().fromTwips((static_cast<float>(m_picture.height()) + 2 * edge()) * TwipsPerPixel);
}

void PictureBox::showBorder()
{
    repaint();
    for (Control* child : controls())
        child->place();
}

void PictureBox::tellValue()
{
    QAccessibleValueChangeEvent event(widget(), AccessibleValue());
    QAccessible::updateAccessibility(&event);
}

void PictureBox::PaintPicture(const trovarium::Picture& picture, float x, float y, float width, float height)
{
    if (picture.empty())
        throw Failure(FailureKind::InvalidPicture);
    const QRectF place(toPixels(x), toPixels(y), toPixels(width), toPixels(height));
    m_canvas->add(picture, place, wholePixels(*this));
    repaint();
}

void PictureBox::Cls()
{
    m_film->shut();
    if (m_canvas->strokes.empty())
        return;
    m_canvas->strokes.clear();
    repaint();
}

Picture PictureBox::Image() const
{
    QImage image(wholePixels(*this), QImage::Format_RGB32);
    if (image.isNull())
        return {};
    QPainter painter(&image);
    m_canvas->paintAll(painter, *this, QRectF(image.rect()));
    painter.end();
    return pictureFromImage(image);
}

void PictureBox::draw(QPainter& painter, const QRectF& place)
{
    if (!Border()) {
        m_canvas->paintAll(painter, *this, place);
        return;
    }
    painter.fillRect(place, toQColor(BorderColor()));
    painter.fillRect(place.adjusted(1, 1, -1, -1), toQColor(BackColor()));
    const QRectF inside(0, 0, place.width() - 2 * edge(), place.height() - 2 * edge());
    painter.save();
    painter.translate(edge(), edge());
    painter.setClipRect(inside, Qt::IntersectClip);
    m_canvas->paintAll(painter, *this, inside);
    painter.restore();
}

QPointF PictureBox::handlerPlace(const QPointF& pixels) const
{
    return handlerPlaceOn(*this, pixels);
}

bool PictureBox::keyDown(int code, int shift)
{
    KeyDown.raise(code, shift);
    return KeyDown.isWired();
}

// A box without a name of its own takes the first text on it.
std::string PictureBox::accessibleName() const
{
    if (!AccessibleName().empty() || !takesFocus())
        return AccessibleName();
    for (const Control* child : controls()) {
        if (child->Visible() && child->drawn() != nullptr && !child->drawn()->accessibleName().empty())
            return child->drawn()->accessibleName();
    }
    return ToolTipText();
}

} // namespace trovarium
