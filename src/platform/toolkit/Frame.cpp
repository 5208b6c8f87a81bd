#include "platform/toolkit/Frame.h"

#include "platform/toolkit/QtValues.h"
#include "platform/toolkit/Style.h"

#include <QPainter>
#include <QWidget>

namespace trovarium {

namespace {

// Pixels.
constexpr int CaptionEdge = 12;
constexpr int CaptionTop = 8;

} // namespace

DrawnContainer::DrawnContainer(Container* parent, const Plan& plan, ScaleMode scale)
    : DrawnControl(parent, plan)
    , Container(scale)
{
    widget()->setAttribute(Qt::WA_OpaquePaintEvent);
    Control::enableOrDisable();
}

Frame::Frame(Container* parent, const Plan& plan)
    : DrawnContainer(parent, plan, ScaleMode::Twips)
    , Caption(this, plan.Caption)
{
    showLook();
}

void Frame::showLook()
{
    widget()->setPalette(paletteOn(BackColor()));
    repaint();
}

void Frame::draw(QPainter& painter, const QRectF& place)
{
    const QPalette& palette = widget()->palette();
    painter.fillRect(place, palette.color(QPalette::Midlight));
    painter.fillRect(place.adjusted(1, 1, -1, -1), toQColor(BackColor()));
    painter.setFont(planFont(PlanFont, true));
    painter.setPen(palette.color(QPalette::WindowText));
    painter.drawText(place.adjusted(CaptionEdge, CaptionTop, -CaptionEdge, 0), Qt::AlignLeft, toQString(Caption()));
}

} // namespace trovarium
