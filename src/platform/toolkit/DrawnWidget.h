// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Drawn.h"
#include "platform/toolkit/QtValues.h"

#include <QWidget>

namespace trovarium {

struct DesktopState;

// What a key does on the widget with the focus: Space presses it, Enter opens it (a double click where it has one), the
// menu key presses it with the right button. An assistive program also toggles it, as a press with Ctrl does.
enum class Activation { Press, Open, Menu, Toggle };

// The widget of a `Drawn`: lets it paint, and passes it the mouse and the keys. The widget's contents margins are the
// space that the control paints on outside its own rectangle.
class DrawnWidget : public QWidget {
public:
    DrawnWidget(Drawn& drawn, DesktopState& state, QWidget* parent);
    ~DrawnWidget() override;

    Drawn& drawn() const { return m_drawn; }
    void letGo();
    // A press by a key or an assistive program, delivered to the handlers like one with the mouse.
    void activate(Activation how);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override { press(*event, false); }
    void mouseDoubleClickEvent(QMouseEvent* event) override { press(*event, true); }
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void press(QMouseEvent& event, bool doubled);
    void deliver(const std::function<void()>& action);
    void deliver(Event<int, int, float, float>& event, int button, int shift, const QPointF& place);
    QWidget* focusWidgetAt(const QPoint& pixels);

    Drawn& m_drawn;
    DesktopState& m_state;
    bool m_doubled = false;
    WheelTurn m_wheel;
};

// Registers our accessible interfaces: for these and for windows, combo boxes and scroll bars.
void installAccessibility();

} // namespace trovarium
