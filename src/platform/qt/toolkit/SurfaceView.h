#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/Container.h"
#include "platform/toolkit/Units.h"

#include <QPointer>
#include <QRegion>
#include <QWidget>

#include <string>
#include <vector>

namespace trovarium {

class Component;
class Control;
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
};

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
    ItemView* itemAt(QPointF pixels) const;     // the topmost that takes the mouse, or null
    const std::vector<ItemView*> items() const; // in z-order

    // Pixels of this surface that must be painted anew.
    void addDirty(const QRectF& pixels);
    void flushDirty();
    void endCapture();
    void updatePointer();

    void paintTo(QPainter& painter, const QRegion& region);

    void setFocusItem(ItemView* item);
    ItemView* focusItem() const { return m_focusItem; }
    // Space or Enter on the item with the focus; false when none takes it.
    bool activateFocusItem();

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
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    MouseTarget* targetAt(QPointF pixels);
    void press(QMouseEvent& event, bool doubled);
    void updateFocusPolicy();

    DesktopState& m_state;
    Container* m_container;
    std::vector<ItemView*> m_items;
    QRegion m_dirty;
    MouseTarget* m_pressed = nullptr;
    MouseTarget* m_lastPressed = nullptr;
    bool m_doubled = false;
    ItemView* m_focusItem = nullptr;
};

} // namespace trovarium
