// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/Control.h"

#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/QtValues.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QWidget>

namespace trovarium {

Desktop& Component::desktop()
{
    return form().desktop();
}

Control::Control(Container* parent, const Plan& plan, QWidget* widget)
    : Component(plan.Name)
    , Left(this, parent->fromTwips(plan.Left))
    , Top(this, parent->fromTwips(plan.Top))
    , Width(this, parent->fromTwips(plan.Width))
    , Height(this, parent->fromTwips(plan.Height))
    , Visible(this, plan.Visible)
    , Enabled(this, plan.Enabled)
    , ToolTipText(this, plan.ToolTipText)
    , m_parent(parent)
    , m_widget(widget)
{
    parent->adopt(this);
    widget->setObjectName(toQString(Name()));
    widget->setAttribute(Qt::WA_NoMousePropagation); // mouse events of a disabled control don't go to its parent
    // These calls must not make Qt ask for the accessible state: the control isn't constructed yet.
    widget->setToolTip(toolTipText(ToolTipText()));
    widget->setGeometry(roundedPlace(*this));
    widget->setVisible(Visible());
}

Control::~Control()
{
    m_parent->abandon(this);
    delete m_widget;
}

void Control::place()
{
    const QRect place = roundedPlace(*this).marginsAdded(margins());
    if (place == m_widget->geometry())
        return;
    if (place.topLeft() != m_widget->pos() && m_widget->isVisible())
        desktop().state().moved = true;
    m_widget->setGeometry(place);
}

QMargins Control::margins() const
{
    return {};
}

void Control::showOrHide()
{
    m_widget->setVisible(Visible());
}

void Control::enableOrDisable()
{
    m_widget->setEnabled(Enabled());
}

void Control::nameForReaders()
{
    m_widget->setToolTip(toolTipText(ToolTipText()));
    m_widget->setAccessibleName(toQString(AccessibleName()));
    // The list and the text field of a combo box get the same name.
    if (const auto* box = qobject_cast<QComboBox*>(m_widget)) {
        box->view()->setAccessibleName(toQString(AccessibleName()));
        if (QLineEdit* field = box->lineEdit())
            field->setAccessibleName(toQString(AccessibleName()));
    }
}

void Control::showPointer()
{
    if (MousePointer() == DefaultPointer)
        m_widget->unsetCursor();
    else
        m_widget->setCursor(cursorOf(MousePointer(), m_widget->devicePixelRatioF()));
}

void Control::tellSelected()
{
    QAccessible::State changed;
    changed.selected = true;
    QAccessibleStateChangeEvent event(m_widget, changed);
    QAccessible::updateAccessibility(&event);
}

void Control::Refresh()
{
    desktop().state().paintNow();
}

void Control::SetFocus()
{
    if (takesInput())
        m_widget->setFocus(Qt::OtherFocusReason);
}

void Control::TabBehind(const Control& before)
{
    QWidget::setTabOrder(before.m_widget, m_widget);
}

bool Control::hasFocus() const
{
    return m_widget->hasFocus();
}

} // namespace trovarium
