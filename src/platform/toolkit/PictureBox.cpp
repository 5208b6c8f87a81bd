// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/PictureBox.h"

#include "platform/media/FilmSurface.h"
#include "platform/pictures/PictureData.h"
#include "platform/pictures/PicturePainter.h"
#include "platform/toolkit/QtValues.h"

#include <QAccessible>
#include <QPainter>
#include <QWidget>

#include <cmath>
#include <utility>

namespace trovarium {

namespace {

QSize wholePixels(const PictureBox& box)
{
    const float edges = 2 * box.edge();
    return {static_cast<int>(std::lround(box.parent().toPixels(box.Width()) - edges)),
        static_cast<int>(std::lround(box.parent().toPixels(box.Height()) - edges))};
}

} // namespace

PictureBox::PictureBox(Container* parent, const Plan& plan, ScaleMode scale)
    : DrawnContainer(parent, plan, scale)
    , m_painter(std::make_unique<PicturePainter>())
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
    if (value == m_picture)
        return;
    m_picture = std::move(value);
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

Picture PictureBox::Image() const
{
    QImage image(wholePixels(*this), QImage::Format_RGB32);
    if (image.isNull())
        return {};
    QPainter painter(&image);
    paintAll(painter, QRectF(image.rect()));
    painter.end();
    return pictureFromImage(image);
}

void PictureBox::paintAll(QPainter& painter, const QRectF& place) const
{
    painter.fillRect(place, toQColor(BackColor()));
    m_painter->paint(painter, m_picture, place);
    const FilmSurface::Shown film = m_film->shown();
    m_painter->paint(painter, pictureFromImage(film.frame),
        QRectF(film.place.left, film.place.top, film.place.width, film.place.height));
}

void PictureBox::draw(QPainter& painter, const QRectF& place)
{
    if (!Border()) {
        paintAll(painter, place);
        return;
    }
    painter.fillRect(place, toQColor(BorderColor()));
    painter.fillRect(place.adjusted(1, 1, -1, -1), toQColor(BackColor()));
    const QRectF inside(0, 0, place.width() - 2 * edge(), place.height() - 2 * edge());
    painter.save();
    painter.translate(edge(), edge());
    painter.setClipRect(inside, Qt::IntersectClip);
    paintAll(painter, inside);
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
