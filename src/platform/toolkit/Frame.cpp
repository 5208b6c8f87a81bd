// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/Frame.h"

#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/QtValues.h"
#include "platform/toolkit/Style.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <vector>

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
    widget()->setEnabled(Enabled());
}

void DrawnContainer::showOrHide()
{
    widget()->setVisible(Visible());
}

void DrawnContainer::enableOrDisable()
{
    widget()->setEnabled(Enabled());
}

void DrawnContainer::SetFocus()
{
    const std::vector<Control*>& all = controls();
    const auto takes = [](const Control* control) {
        return control->drawn() != nullptr && control->drawn()->takesFocus();
    };
    const auto last = std::find_if(all.begin(), all.end(),
        [&](const Control* control) { return control->widget() == widget()->focusWidget() && takes(control); });
    const auto first = std::find_if(
        all.begin(), all.end(), [&](const Control* control) { return takes(control) && control->takesInput(); });
    if (last != all.end() && (*last)->takesInput()) {
        (*last)->SetFocus();
        return;
    }
    if (last != all.end())
        desktop().state().focusWhenShown = (*last)->widget();
    const bool isFirst = last == all.end() && !takesFocus() && first != all.end();
    if (isFirst)
        (*first)->SetFocus();
    else if (takesInput())
        widget()->setFocus(Qt::OtherFocusReason);
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
