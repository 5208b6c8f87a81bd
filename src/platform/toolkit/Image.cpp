// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/Image.h"

#include "platform/pictures/PictureData.h"
#include "platform/pictures/PicturePainter.h"
#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/QtValues.h"
#include "platform/toolkit/SharpThumbnail.h"

#include <QPainter>
#include <QWidget>

#include <cmath>
#include <utility>

namespace trovarium {

namespace {

constexpr qreal Dimmed = 0.45; // a face that is disabled

} // namespace

Image::Image(Container* parent, const Plan& plan)
    : DrawnControl(parent, plan)
    , m_painter(std::make_unique<PicturePainter>())
{
}

Image::~Image() = default;

bool Image::isOpaque() const
{
    return Stretch() && trovarium::isOpaque(Picture());
}

void Image::showPicture()
{
    m_sharp.reset();
    showOrHide(); // repaints too
}

void Image::sharpenFrom(std::function<std::string()> photograph)
{
    m_sharp = std::make_shared<SharpThumbnail>(*this, std::move(photograph));
}

void Image::showOrHide()
{
    if (m_sharp && !Visible())
        m_sharp->drop();
    DrawnControl::showOrHide();
}

void Image::draw(QPainter& painter, const QRectF& place)
{
    if (Stretch()) {
        m_painter->paint(painter, Picture(), place);
        return;
    }
    const QSizeF size(Picture().width(), Picture().height());
    const QPointF corner(place.center().x() - std::floor(size.width() / 2), place.top());
    painter.setClipRect(place, Qt::IntersectClip);
    m_painter->paint(painter, m_sharp ? m_sharp->toPaint() : Picture(), QRectF(corner, size));
}

PictureButton::PictureButton(Container* parent, const Plan& plan)
    : DrawnControl(parent, plan)
    , m_painter(std::make_unique<PicturePainter>())
{
}

PictureButton::~PictureButton() = default;

void PictureButton::draw(QPainter& painter, const QRectF& place)
{
    painter.setOpacity(Enabled() ? 1 : Dimmed);
    m_painter->paint(painter, Picture(), place);
    painter.setOpacity(1);
}

// A button without a name of its own takes that of the label on it.
std::string PictureButton::accessibleName() const
{
    for (const Control* control : parent().controls()) {
        const auto* label = control->drawn();
        if (AccessibleName().empty() && label != nullptr && label->accessibleRole() == Role::Text && control->Visible()
            && placeInPixels(*this).contains(placeInPixels(*control).center()))
            return label->accessibleName();
    }
    return DrawnControl::accessibleName();
}

} // namespace trovarium
