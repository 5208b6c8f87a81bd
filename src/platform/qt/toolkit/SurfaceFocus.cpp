// The keyboard's way over a surface: its items take the focus one after another, as widgets do.
#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/ItemView.h"
#include "platform/qt/toolkit/SurfaceView.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Component.h"

#include <QKeyEvent>

#include <algorithm>

namespace trovarium {

std::vector<MouseTarget*> SurfaceView::focusTargets()
{
    std::vector<MouseTarget*> targets;
    if (m_container == nullptr)
        return targets;
    if (ownTarget().takesFocus() && ownTarget().takesInput())
        targets.push_back(&ownTarget());
    for (ItemView* item : m_items) {
        if (item->takesFocus() && item->takesInput())
            targets.push_back(item);
    }
    return targets;
}

MouseTarget* SurfaceView::focusTarget()
{
    MouseTarget* target = m_focusItem != nullptr ? static_cast<MouseTarget*>(m_focusItem) : &ownTarget();
    return target->takesFocus() && target->takesInput() ? target : nullptr;
}

void SurfaceView::focusOn(MouseTarget* target)
{
    m_focusItem = dynamic_cast<ItemView*>(target);
    update();
    if (m_focusItem != nullptr && QAccessible::isActive()) {
        if (QAccessibleInterface* shown = QAccessible::accessibleInterface(m_focusItem->accessibleId())) {
            QAccessibleEvent event(shown, QAccessible::Focus);
            QAccessible::updateAccessibility(&event);
        }
    }
}

void SurfaceView::giveFocus(MouseTarget& target)
{
    m_focusItem = dynamic_cast<ItemView*>(&target); // before the focus comes, which would look for another item
    setFocus(Qt::OtherFocusReason);
    focusOn(&target);
}

// The topmost there: the button below its label, the row below its name. Null where none takes it.
MouseTarget* SurfaceView::focusTargetAt(QPointF pixels)
{
    const std::vector<MouseTarget*> targets = focusTargets();
    const auto hit = std::find_if(targets.rbegin(), targets.rend(),
        [pixels](const MouseTarget* target) { return target->place().contains(pixels); });
    return hit == targets.rend() ? nullptr : *hit;
}

void SurfaceView::updateFocusPolicy()
{
    if (m_container == nullptr)
        return;
    const Qt::FocusPolicy policy = focusTargets().empty() ? Qt::NoFocus : Qt::TabFocus;
    if (policy != focusPolicy())
        setFocusPolicy(policy);
}

void SurfaceView::showEvent(QShowEvent* event)
{
    updateFocusPolicy();
    QWidget::showEvent(event);
}

void SurfaceView::focusInEvent(QFocusEvent* event)
{
    const std::vector<MouseTarget*> targets = focusTargets();
    if (!targets.empty() && event->reason() == Qt::BacktabFocusReason)
        focusOn(targets.back());
    else if (!targets.empty() && (event->reason() == Qt::TabFocusReason || focusTarget() == nullptr))
        focusOn(targets.front());
    update();
}

void SurfaceView::focusOutEvent(QFocusEvent*)
{
    update();
}

bool SurfaceView::focusNextPrevChild(bool next)
{
    if (m_container == nullptr || !hasFocus())
        return QWidget::focusNextPrevChild(next);
    const std::vector<MouseTarget*> targets = focusTargets();
    const auto here = std::find(targets.begin(), targets.end(), focusTarget());
    if (next && here != targets.end() && here + 1 != targets.end()) {
        focusOn(*(here + 1));
        return true;
    }
    if (!next && here != targets.end() && here != targets.begin()) {
        focusOn(*(here - 1));
        return true;
    }
    return QWidget::focusNextPrevChild(next);
}

void SurfaceView::keyPressEvent(QKeyEvent* event)
{
    event->ignore();
    if (m_container == nullptr || !hasFocus())
        return;
    MouseTarget* target = focusTarget();
    if (target == nullptr)
        return;
    const QPointer<SurfaceView> self(this);
    const int code = keyCode(*event);
    const int shift = shiftKeys(event->modifiers());
    bool taken = false;
    fromDesktop(target->component(), [&] { taken = target->keyDown(code, shift); });
    if (taken || !self) {
        event->accept();
        return;
    }
    const bool plain = shift == NoKeys;
    if (plain && event->key() == Qt::Key_Space) {
        event->accept();
        activate(*target, Activation::Press);
    } else if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        event->accept();
        activate(*target, Activation::Open);
    } else if (event->key() == Qt::Key_Menu || (shift == ShiftKey && event->key() == Qt::Key_F10)) {
        event->accept();
        activate(*target, Activation::Menu);
    }
}

void SurfaceView::activate(MouseTarget& target, Activation how)
{
    const int button = how == Activation::Menu ? RightButton : LeftButton;
    const QPointF middle = target.place().center();
    const QPointer<SurfaceView> self(this);
    const auto step = [&](auto&& action) {
        if (self && isAlive(&target) && target.takesInput())
            fromDesktop(target.component(), action);
    };
    m_pressed = &target;
    m_state.capturing = this;
    step([&] { target.mouseDown(button, NoKeys, middle); });
    if (!self || m_pressed != &target)
        return; // a menu or a dialog took the release, as with the mouse
    m_pressed = nullptr;
    step([&] { target.mouseUp(button, NoKeys, middle); });
    if (how == Activation::Menu)
        return;
    step([&] { target.click(); });
    if (how == Activation::Open && self && isAlive(&target) && target.hasDoubleClick()) {
        step([&] { target.doubleClick(); });
        step([&] { target.mouseUp(button, NoKeys, middle); });
    }
}

} // namespace trovarium
