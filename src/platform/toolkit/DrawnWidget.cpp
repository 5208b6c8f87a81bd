// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/DrawnWidget.h"

#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/QtValues.h"
#include "platform/toolkit/ScrollBar.h"
#include "platform/toolkit/Style.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace trovarium {

namespace {

// With its edges on whole pixels of the device.
QRectF onDevice(const QPainter& painter, const QRectF& place)
{
    const QTransform toDevice = painter.deviceTransform();
    const QRectF exact = toDevice.mapRect(place);
    const QRectF rounded(QPointF(std::round(exact.left()), std::round(exact.top())),
        QPointF(std::round(exact.right()), std::round(exact.bottom())));
    return toDevice.inverted().mapRect(rounded);
}

} // namespace

DrawnWidget::DrawnWidget(Drawn& drawn, DesktopState& state, QWidget* parent)
    : QWidget(parent)
    , m_drawn(drawn)
    , m_state(state)
{
    setMouseTracking(true);
    setAttribute(Qt::WA_NoMousePropagation);
}

DrawnWidget::~DrawnWidget()
{
    for (DrawnWidget** held : {&m_state.mouseGrabber, &m_state.releasing, &m_state.lastPressed}) {
        if (*held == this)
            *held = nullptr;
    }
}

void DrawnWidget::letGo()
{
    m_drawn.pressed(false);
    m_drawn.letGo();
}

void DrawnWidget::paintEvent(QPaintEvent* event)
{
    if (!m_drawn.isPainted())
        return;
    QPainter painter(this);
    painter.setClipRegion(event->region()); // enlarged pictures work out no more than this
    const QRectF place = onDevice(painter, contentsRect());
    m_drawn.draw(painter, place);
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange) && m_drawn.takesFocus()
        && m_drawn.takesInput())
        paintFocusRing(painter, palette(), place);
}

void DrawnWidget::deliver(const std::function<void()>& action)
{
    deliverEvent(m_drawn.component(), action);
}

void DrawnWidget::deliver(Event<int, int, float, float>& event, int button, int shift, const QPointF& place)
{
    const QPointF at = m_drawn.handlerPlace(place - contentsRect().topLeft());
    deliver([&] { event.raise(button, shift, static_cast<float>(at.x()), static_cast<float>(at.y())); });
}

void DrawnWidget::press(QMouseEvent& event, bool doubled)
{
    const int button = mouseButtons(event.button());
    if (!testAttribute(Qt::WA_NoMousePropagation))
        return event.ignore();
    if (button == 0 || !m_drawn.takesInput())
        return;
    if (m_state.mouseGrabber != this) {
        if (QWidget* focus = focusWidgetAt(event.position().toPoint()))
            focus->setFocus(Qt::OtherFocusReason);
    }
    m_doubled = doubled && button == LeftButton && m_state.lastPressed == this && m_drawn.DblClick.isWired();
    m_state.mouseGrabber = this;
    m_state.lastPressed = this;
    if (m_doubled) {
        deliver([this] { m_drawn.DblClick.raise(); });
        return;
    }
    m_drawn.pressed(button == LeftButton);
    deliver(m_drawn.MouseDown, button, shiftKeys(event.modifiers()), event.position());
}

// The topmost there that takes it: the button below its label, the row below its name. Null for none.
QWidget* DrawnWidget::focusWidgetAt(const QPoint& pixels)
{
    const auto takes = [](QWidget* widget) {
        return widget->focusPolicy() != Qt::NoFocus && widget->isEnabled() && widget->isVisible();
    };
    if (takes(this))
        return this;
    const QPoint place = mapToParent(pixels);
    const QObjectList& siblings = parentWidget()->children(); // the lowest first
    const auto self = std::find(siblings.rbegin(), siblings.rend(), this);
    const auto found = std::find_if(self, siblings.rend(), [&](QObject* object) {
        auto* widget = qobject_cast<QWidget*>(object);
        return widget != nullptr && takes(widget) && widget->geometry().contains(place);
    });
    if (found != siblings.rend())
        return static_cast<QWidget*>(*found);
    return takes(parentWidget()) ? parentWidget() : nullptr;
}

void DrawnWidget::mouseReleaseEvent(QMouseEvent* event)
{
    const int button = mouseButtons(event->button());
    if (m_state.mouseGrabber != this || button == 0)
        return event->ignore();
    if (event->buttons() == Qt::NoButton)
        m_state.mouseGrabber = nullptr;
    m_state.releasing = this;
    const bool clicks = button == LeftButton && !m_doubled && contentsRect().contains(event->position().toPoint());
    m_drawn.pressed(false);
    deliver(m_drawn.MouseUp, button, shiftKeys(event->modifiers()), event->position());
    const bool isWhole = m_state.releasing == this; // nothing that was opened took the mouse
    m_state.releasing = nullptr;
    if (isWhole && clicks && m_drawn.takesInput())
        deliver([this] { m_drawn.Click.raise(); });
    if (m_state.mouseGrabber != this)
        letGo();
}

void DrawnWidget::mouseMoveEvent(QMouseEvent* event)
{
    const int buttons = mouseButtons(event->buttons());
    if (buttons == 0 && m_state.mouseGrabber == this)
        m_state.releaseMouse(); // its release went elsewhere
    if (m_state.mouseGrabber == this || (buttons == 0 && m_drawn.takesInput()))
        deliver(m_drawn.MouseMove, buttons, shiftKeys(event->modifiers()), event->position());
}

void DrawnWidget::wheelEvent(QWheelEvent* event)
{
    if (event->angleDelta().y() == 0)
        return;
    if (const VScroll* scroll = m_drawn.component().form().scrollFor(this))
        QCoreApplication::sendEvent(scroll->widget(), event);
    else if (const int notches = m_wheel.notches(*event); notches != 0 && m_drawn.takesInput())
        deliver([&] { m_drawn.Wheel.raise(notches); });
}

void DrawnWidget::keyPressEvent(QKeyEvent* event)
{
    event->ignore();
    if (!m_drawn.takesFocus() || !m_drawn.takesInput())
        return;
    const int code = keyCode(*event);
    const int shift = shiftKeys(event->modifiers());
    bool taken = false;
    deliver([&] { taken = m_drawn.keyDown(code, shift); });
    const auto answer = [&](Activation how) {
        event->accept();
        activate(how);
    };
    if (taken)
        event->accept();
    else if (shift == NoKeys && code == SpaceKey)
        answer(Activation::Press);
    else if (shift == NoKeys && code == EnterKey)
        answer(Activation::Open);
    else if (code == MenuKey || (shift == ShiftKey && event->key() == Qt::Key_F10))
        answer(Activation::Menu);
}

void DrawnWidget::activate(Activation how)
{
    const int button = how == Activation::Menu ? RightButton : LeftButton;
    const int shift = how == Activation::Toggle ? CtrlKey : NoKeys;
    const QPointF middle = QRectF(contentsRect()).center();
    const auto step = [this](auto&& action) {
        if (m_drawn.takesInput())
            action();
    };
    m_state.mouseGrabber = this;
    step([&] { deliver(m_drawn.MouseDown, button, shift, middle); });
    if (m_state.mouseGrabber != this)
        return; // a menu or a dialog took the release, as with the mouse
    m_state.releaseMouse();
    step([&] { deliver(m_drawn.MouseUp, button, shift, middle); });
    if (how == Activation::Menu)
        return;
    step([&] { deliver([this] { m_drawn.Click.raise(); }); });
    if (how != Activation::Open || !m_drawn.DblClick.isWired())
        return;
    step([&] { deliver([this] { m_drawn.DblClick.raise(); }); });
    step([&] { deliver(m_drawn.MouseUp, button, NoKeys, middle); });
}

void DrawnWidget::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    m_drawn.letGo();
}

QPointF Drawn::handlerPlace(const QPointF& pixels) const
{
    return pixels * TwipsPerPixel;
}

DrawnControl::DrawnControl(Container* parent, const Plan& plan)
    : Control(parent, plan, new DrawnWidget(*this, parent->form().desktop().state(), parent->client()))
    , Drawn(static_cast<Component*>(this))
{
    widget()->setAttribute(Qt::WA_NoSystemBackground);
}

void DrawnControl::followInput()
{
    widget()->setFocusPolicy(takesFocus() && Enabled() ? Qt::TabFocus : Qt::NoFocus);
    showOrHide();
    place();
}

void DrawnControl::place()
{
    widget()->setContentsMargins(margins());
    Control::place();
}

// The library takes the mouse grab and the focus from a widget that is hidden. So a control that has one of them is
// hidden as a widget only when it has lost it; until then it isn't painted and lets the mouse through.
void DrawnControl::showOrHide()
{
    const bool isUsed = desktop().state().mouseGrabber == widget() || widget()->window()->focusWidget() == widget();
    const bool stays = !Visible() && widget()->isVisible() && isUsed;
    widget()->setAttribute(Qt::WA_TransparentForMouseEvents, stays || !takesMouse());
    widget()->setAttribute(Qt::WA_OpaquePaintEvent, !stays && isOpaque());
    widget()->update();
    if (!stays)
        widget()->setVisible(Visible());
    QPointer<QWidget>& waiting = desktop().state().focusWhenShown;
    if (Visible() && waiting == widget()) {
        waiting.clear();
        if (widget()->parentWidget()->hasFocus())
            SetFocus();
    }
}

// The widget stays enabled, since disabling it would move the focus to the next one.
void DrawnControl::enableOrDisable()
{
    followInput(); // repaints too
}

void DrawnControl::nameForReaders()
{
    Control::nameForReaders();
    followInput(); // a label with a tool tip takes the mouse
}

void DrawnControl::SetFocus()
{
    if (takesFocus())
        Control::SetFocus();
}

void DrawnControl::repaint()
{
    widget()->update();
}

} // namespace trovarium
