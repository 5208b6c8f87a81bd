#include "platform/qt/toolkit/SurfaceView.h"

#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/ItemView.h"
#include "platform/qt/toolkit/Look.h"
#include "platform/qt/toolkit/Pointers.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/ScrollBar.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace trovarium {

namespace {

// The scrollbar that the wheel turns: the nearest one on the container or on what that lies on.
VScroll* scrollFor(Container& container)
{
    for (Control* control : container.controls()) {
        auto* scroll = dynamic_cast<VScroll*>(control);
        if (scroll != nullptr && scroll->takesInput())
            return scroll;
    }
    const auto* control = dynamic_cast<const Control*>(&container);
    return control != nullptr ? scrollFor(control->parent()) : nullptr;
}

} // namespace

SurfaceView::SurfaceView(DesktopState& state, Container& container, QWidget* parent)
    : QWidget(parent)
    , m_state(state)
    , m_container(&container)
{
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoMousePropagation);
    container.setSurface(this);
}

SurfaceView::~SurfaceView()
{
    detach();
}

void SurfaceView::detach()
{
    if (m_container == nullptr)
        return;
    m_state.forget(*this);
    m_container->setSurface(nullptr);
    m_container = nullptr;
    m_pressed = nullptr;
    m_releasing = nullptr;
    m_lastPressed = nullptr;
    m_focusItem = nullptr;
    m_items.clear();
}

void SurfaceView::addItem(ItemView& item)
{
    m_items.push_back(&item);
}

void SurfaceView::removeItem(ItemView& item)
{
    std::erase(m_items, &item);
    const MouseTarget* target = &item;
    for (MouseTarget** held : {&m_pressed, &m_releasing, &m_lastPressed}) {
        if (*held == target)
            *held = nullptr;
    }
    if (m_focusItem == &item)
        m_focusItem = nullptr;
}

void SurfaceView::raiseItem(ItemView& item)
{
    const auto found = std::find(m_items.begin(), m_items.end(), &item);
    if (found != m_items.end())
        std::rotate(found, found + 1, m_items.end());
}

ItemView* SurfaceView::itemAt(QPointF pixels) const
{
    const auto hit = std::find_if(m_items.rbegin(), m_items.rend(), [pixels](const ItemView* item) {
        const QRectF place = item->place();
        return item->takesMouse() && item->control().Visible() && pixels.x() >= place.left()
            && pixels.x() < place.right() && pixels.y() >= place.top() && pixels.y() < place.bottom();
    });
    return hit == m_items.rend() ? nullptr : *hit;
}

MouseTarget* SurfaceView::targetAt(QPointF pixels)
{
    ItemView* item = itemAt(pixels);
    return item != nullptr ? item : &ownTarget();
}

bool SurfaceView::isAlive(const MouseTarget* target)
{
    return m_container != nullptr
        && (target == &ownTarget() || std::any_of(m_items.begin(), m_items.end(), [target](const MouseTarget* item) {
               return item == target;
           }));
}

void SurfaceView::addDirty(const QRectF& pixels)
{
    if (m_container == nullptr || !isVisible() || pixels.isEmpty())
        return;
    m_dirty += pixels.toAlignedRect().adjusted(-1, -1, 1, 1);
    m_state.addDirty(*this);
}

void SurfaceView::flushDirty()
{
    update(m_dirty);
    m_dirty = {};
}

void SurfaceView::endCapture()
{
    m_pressed = nullptr;
    m_releasing = nullptr;
}

void SurfaceView::updatePointer()
{
    if (m_container == nullptr)
        return;
    const MouseTarget* target = m_pressed;
    if (target == nullptr)
        target = targetAt(mapFromGlobal(QPointF(QCursor::pos())));
    showPointer(target->pointer());
}

void SurfaceView::showPointer(int pointer)
{
    const qreal ratio = devicePixelRatioF();
    if (pointer == m_shownPointer && ratio == m_pointerRatio)
        return;
    m_shownPointer = pointer;
    m_pointerRatio = ratio;
    setCursor(cursorOf(pointer, ratio));
}

void SurfaceView::paintTo(QPainter& painter, const QRegion& region, qreal ratio)
{
    if (m_container == nullptr)
        return;
    painter.setClipRegion(region); // enlarged pictures work out no more than this
    paintBack(painter);
    for (ItemView* item : m_items) {
        if (!item->control().Visible())
            continue;
        const QRectF touched = item->paintedPlace(ratio);
        if (!region.intersects(touched.toAlignedRect()))
            continue;
        item->painted(touched);
        item->paint(painter, item->devicePlace(ratio));
    }
    paintFocus(painter);
}

void SurfaceView::paintFocus(QPainter& painter)
{
    if (!hasFocus() || !window()->testAttribute(Qt::WA_KeyboardFocusChange))
        return;
    if (const MouseTarget* target = focusTarget())
        paintFocusRing(painter, palette(), target->place());
}

bool SurfaceView::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        showToolTip(*static_cast<QHelpEvent*>(event));
        return true;
    }
    return QWidget::event(event);
}

void SurfaceView::showToolTip(const QHelpEvent& event)
{
    if (m_container == nullptr || m_pressed != nullptr)
        return;
    const MouseTarget* target = targetAt(event.pos());
    const QString text = toolTipText(target->toolTip());
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(event.globalPos(), text, this, target->place().toAlignedRect());
}

void SurfaceView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    paintTo(painter, event->region(), painter.deviceTransform().m11());
}

void SurfaceView::mousePressEvent(QMouseEvent* event)
{
    press(*event, false);
}

void SurfaceView::mouseDoubleClickEvent(QMouseEvent* event)
{
    press(*event, true);
}

void SurfaceView::press(QMouseEvent& event, bool doubled)
{
    const int button = mouseButton(event.button());
    if (m_container == nullptr || button == 0)
        return;
    const QPointF at = event.position();
    const int shift = shiftKeys(event.modifiers());
    MouseTarget* target = m_pressed != nullptr ? m_pressed : targetAt(at);
    if (!target->takesInput())
        return;
    if (MouseTarget* focus = m_pressed == nullptr ? focusTargetAt(at) : nullptr)
        giveFocus(*focus);
    m_doubled = doubled && button == LeftButton && target == m_lastPressed && target->hasDoubleClick();
    m_pressed = target;
    m_lastPressed = target;
    m_state.capturing = this;
    if (m_doubled)
        fromDesktop(target->component(), [&] { target->doubleClick(); });
    else
        fromDesktop(target->component(), [&] { target->mouseDown(button, shift, at); });
}

void SurfaceView::mouseReleaseEvent(QMouseEvent* event)
{
    const int button = mouseButton(event->button());
    if (m_container == nullptr || m_pressed == nullptr || button == 0)
        return;
    const QPointF at = event->position();
    const int shift = shiftKeys(event->modifiers());
    MouseTarget* target = m_pressed;
    if (event->buttons() == Qt::NoButton)
        m_pressed = nullptr;
    m_releasing = target;
    const bool clicks = button == LeftButton && !m_doubled && target->place().contains(at);
    const QPointer<SurfaceView> self(this);
    fromDesktop(target->component(), [&] { target->mouseUp(button, shift, at); });
    if (!self || m_releasing != target)
        return;
    m_releasing = nullptr;
    if (clicks && target->takesInput())
        fromDesktop(target->component(), [&] { target->click(); });
    if (self)
        updatePointer();
}

void SurfaceView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_container == nullptr)
        return;
    const QPointF at = event->position();
    const int buttons = mouseButtons(event->buttons());
    if (buttons == 0)
        m_pressed = nullptr; // its release went elsewhere
    MouseTarget* target = buttons == 0 ? targetAt(at) : m_pressed;
    if (target == nullptr)
        return;
    showPointer(target->pointer());
    const int shift = shiftKeys(event->modifiers());
    if (target == m_pressed || target->takesInput())
        fromDesktop(target->component(), [&] { target->mouseMove(buttons, shift, at); });
}

void SurfaceView::wheelEvent(QWheelEvent* event)
{
    const int turned = event->angleDelta().y();
    if (m_container == nullptr || turned == 0)
        return;
    VScroll* scroll = scrollFor(*m_container);
    if (scroll == nullptr)
        return;
    if ((turned > 0) != (m_wheel > 0))
        m_wheel = 0;
    m_wheel += turned;
    const int steps = m_wheel / QWheelEvent::DefaultDeltasPerStep;
    m_wheel -= steps * QWheelEvent::DefaultDeltasPerStep;
    if (steps != 0)
        fromDesktop(*scroll, [&] { scroll->page(-steps); });
}

} // namespace trovarium
