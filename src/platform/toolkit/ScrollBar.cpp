// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/ScrollBar.h"

#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/QtValues.h"
#include "runtime/Failure.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyleOptionSlider>
#include <QTimerEvent>
#include <QWheelEvent>

#include <algorithm>

namespace trovarium {

// It looks disabled, takes no input and is passed over by Tab, as its control says, but is never disabled as a widget:
// that would break off a held arrow and hand on the focus each time a handler closes the bar for a moment.
class ScrollBar::Bar : public QScrollBar {
public:
    Bar(ScrollBar& control, Orientation orientation, QWidget* parent)
        : QScrollBar(orientation == Orientation::Vertical ? Qt::Vertical : Qt::Horizontal, parent)
        , m_control(control)
    {
        setPageStep(1);
        connect(this, &QScrollBar::valueChanged, this, [this] { tell(); });
        connect(this, &QScrollBar::sliderReleased, this, [this] { tell(); });
    }

protected:
    void initStyleOption(QStyleOptionSlider* option) const override
    {
        QScrollBar::initStyleOption(option);
        if (m_control.takesInput())
            return;
        option->state &= ~QStyle::State_Enabled;
        option->palette.setCurrentColorGroup(QPalette::Disabled);
    }

    void mousePressEvent(QMouseEvent* event) override
    {
        if (m_control.takesInput())
            QScrollBar::mousePressEvent(event);
    }

    // A drag that began may end whatever happened meanwhile.
    void mouseMoveEvent(QMouseEvent* event) override
    {
        if (m_control.takesInput() || isSliderDown())
            QScrollBar::mouseMoveEvent(event);
    }

    // The library's own handling takes Left for forwards.
    void keyPressEvent(QKeyEvent* event) override
    {
        const bool right = event->key() == Qt::Key_Right;
        if (!m_control.takesInput())
            event->ignore();
        else if (right || event->key() == Qt::Key_Left)
            triggerAction(right ? SliderSingleStepAdd : SliderSingleStepSub);
        else
            QScrollBar::keyPressEvent(event);
    }

    // The repeat of a held arrow waits while a change is being handled, and goes on after it.
    void timerEvent(QTimerEvent* event) override
    {
        if (m_control.takesInput() && m_telling == 0)
            QScrollBar::timerEvent(event);
    }

    void wheelEvent(QWheelEvent* event) override
    {
        event->accept();
        if (!m_control.takesInput())
            return;
        if (const int notches = m_wheel.notches(*event); notches != 0)
            deliverEvent(m_control, [&] { m_control.page(-notches); });
    }

    void contextMenuEvent(QContextMenuEvent* event) override { event->accept(); }

private:
    void tell()
    {
        const bool dragging = isSliderDown();
        const int position = dragging ? sliderPosition() : value();
        ++m_telling;
        deliverEvent(m_control, [&] { dragging ? m_control.dragged(position) : m_control.released(position); });
        --m_telling;
    }

    ScrollBar& m_control;
    int m_telling = 0;
    WheelTurn m_wheel;
};

ScrollBar::ScrollBar(Container* parent, const Plan& plan, Orientation orientation)
    : Control(parent, plan, new Bar(*this, orientation, parent->client()))
    , m_bar(static_cast<Bar&>(*widget()))
{
    ScrollBar::enableOrDisable();
    showRange();
}

VScroll::VScroll(Container* parent, const Plan& plan)
    : ScrollBar(parent, plan, Orientation::Vertical)
{
    form().addScroll(this);
}

void ScrollBar::enableOrDisable()
{
    m_bar.setFocusPolicy(Enabled() ? Qt::StrongFocus : Qt::NoFocus);
    m_bar.update();
    QAccessible::State changed;
    changed.disabled = true;
    QAccessibleStateChangeEvent event(&m_bar, changed);
    QAccessible::updateAccessibility(&event);
}

void ScrollBar::showRange()
{
    {
        const QSignalBlocker quiet(m_bar);
        m_bar.setRange(Min(), upperEnd());
    }
    const int value = std::clamp(m_value, Min(), upperEnd());
    if (value != m_value)
        settle(value);
    else
        showValue();
}

void ScrollBar::showValue()
{
    const QSignalBlocker quiet(m_bar);
    m_bar.setValue(m_value);
}

void ScrollBar::setValue(int value)
{
    if (value < Min() || value > upperEnd())
        throw Failure(FailureKind::InvalidPropertyValue);
    if (value != m_value)
        settle(value);
}

void ScrollBar::page(int steps)
{
    if (takesInput())
        released(m_value + steps);
}

void ScrollBar::dragged(int value)
{
    value = std::clamp(value, Min(), upperEnd());
    if (value == m_value)
        return;
    m_value = value;
    showValue();
    Scroll.raise();
}

void ScrollBar::released(int value)
{
    value = std::clamp(value, Min(), upperEnd());
    const bool moved = value != m_value; // not at the end of a drag
    m_value = value;
    if (value != m_settledValue)
        settle(value);
    if (moved)
        Scroll.raise();
}

int ScrollBar::upperEnd() const
{
    return std::max(Min(), Max());
}

void ScrollBar::settle(int value)
{
    m_value = value;
    m_settledValue = value;
    showValue();
    Change.raise();
}

} // namespace trovarium
