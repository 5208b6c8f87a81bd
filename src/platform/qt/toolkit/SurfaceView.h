#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/Container.h"
#include "platform/toolkit/Units.h"

#include <QPointer>
#include <QRegion>
#include <QWidget>

#include <string>
#include <vector>

class QHelpEvent;

namespace trovarium {

class Component;
struct DesktopState;
class ItemView;

// What the mouse can point at on a surface: a drawn item, or the container itself. Positions are pixels of
// the surface.
class MouseTarget {
public:
    virtual ~MouseTarget() = default;

    virtual Component& component() = 0;
    virtual bool takesInput() const = 0;
    virtual QRectF place() const = 0;
    virtual int pointer() const = 0;
    virtual std::string toolTip() const = 0;

    virtual void mouseDown(int, int, QPointF) { }
    virtual void mouseMove(int, int, QPointF) { }
    virtual void mouseUp(int, int, QPointF) { }
    virtual void click() { }
    virtual void doubleClick() { }
    virtual bool hasDoubleClick() const { return false; }
    virtual bool takesFocus() const { return false; }
    virtual bool keyDown(int, int) { return false; } // true when a handler took it
};

// What a key does on the item with the focus: Space presses it, Enter opens it (a double click where it
// has one), the menu key presses it with the right button.
enum class Activation { Press, Open, Menu };

// The widget that shows a container: it paints the back and the drawn items in their order, and gives them
// the mouse and the keys. Widgets of the same container lie above its drawn items.
class SurfaceView : public QWidget {
public:
    SurfaceView(DesktopState& state, Container& container, QWidget* parent);
    ~SurfaceView() override;

    // The form is unloaded: the widget stays until the event loop has it back, and does nothing.
    void detach();
    Container* container() const { return m_container; }

    void addItem(ItemView& item);
    void removeItem(ItemView& item);
    ItemView* itemAt(QPointF pixels) const;                         // the topmost that takes the mouse, or null
    const std::vector<ItemView*>& items() const { return m_items; } // in z-order
    void raiseItem(ItemView& item);

    // Pixels of this surface that must be painted anew.
    void addDirty(const QRectF& pixels);
    void flushDirty();
    void endCapture();
    void updatePointer();

    // Everything but widgets, as on a device with so many pixels to the device-independent one.
    void paintTo(QPainter& painter, const QRegion& region, qreal ratio);

    void giveFocus(MouseTarget& target);
    ItemView* focusItem() const { return m_focusItem; }
    // The user's press on an item by a key or by an assistive program.
    void activate(MouseTarget& target, Activation how);
    void updateFocusPolicy();
    // The container itself can be clicked, and so pressed.
    bool isClickable() { return m_container != nullptr && ownTarget().takesFocus(); }
    void activate(Activation how) { activate(ownTarget(), how); }

protected:
    virtual void paintBack(QPainter& painter) = 0;
    virtual MouseTarget& ownTarget() = 0;

    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    MouseTarget* targetAt(QPointF pixels);
    bool isAlive(const MouseTarget* target);
    void press(QMouseEvent& event, bool doubled);
    std::vector<MouseTarget*> focusTargets();
    MouseTarget* focusTarget();
    MouseTarget* focusTargetAt(QPointF pixels);
    void focusOn(MouseTarget* target);
    void paintFocus(QPainter& painter);
    void showPointer(int pointer);
    void showToolTip(const QHelpEvent& event);

    DesktopState& m_state;
    Container* m_container;
    std::vector<ItemView*> m_items;
    QRegion m_dirty;
    MouseTarget* m_pressed = nullptr;     // keeps the mouse
    MouseTarget* m_releasing = nullptr;   // its MouseUp runs, Click is still to come
    MouseTarget* m_lastPressed = nullptr; // for the second press of a double click
    bool m_doubled = false;
    int m_wheel = 0;
    int m_shownPointer = -1;         // none set yet
    qreal m_pointerRatio = 0;        // of the screen that it was drawn for
    ItemView* m_focusItem = nullptr; // null: the container itself
};

} // namespace trovarium
