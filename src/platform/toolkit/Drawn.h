// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Control.h"

#include <memory>

class QPainter;
class QPointF;
class QRectF;

namespace trovarium {

class DrawnWidget;

// What a drawn thing is to a screen reader.
enum class Role { Pane, Button, Text, Graphic, Separator };

// What the program paints itself and takes the mouse for: drawn controls, containers, a form's client area.
class Drawn {
public:
    explicit Drawn(Component* sender)
        : m_sender(sender)
    {
    }
    virtual ~Drawn() = default;
    Drawn(const Drawn&) = delete;
    Drawn& operator=(const Drawn&) = delete;

private:
    Component* m_sender;

public:
    // Button, Shift, X, Y: twips from the corner of the thing as it lies now; those of a form or a picture box are in
    // its own scale, from inside its border.
    Event<int, int, float, float> MouseDown{m_sender};
    Event<int, int, float, float> MouseMove{m_sender};
    Event<int, int, float, float> MouseUp{m_sender};
    Event<> Click{m_sender};
    Event<> DblClick{m_sender}; // the second press of a double click; without a handler it is a press like others

    Event<int> Wheel{m_sender}; // notches, up is positive; not where a scroll bar takes them

    // For its widget.
    Component& component() const { return *m_sender; }
    virtual void draw(QPainter& painter, const QRectF& place) = 0; // `place` lies on whole pixels of the device
    virtual bool isPainted() const { return true; }
    virtual bool takesInput() const = 0;
    virtual bool takesMouse() const { return true; } // otherwise it goes to what lies below
    virtual bool takesFocus() const { return false; }
    virtual QPointF handlerPlace(const QPointF& pixels) const;          // as the events tell it
    virtual bool keyDown(int /*code*/, int /*shift*/) { return false; } // true when a handler took it
    virtual void pressed(bool /*down*/) { }
    virtual void letGo() { } // of the mouse or of the focus
    virtual Role accessibleRole() const { return Role::Pane; }
    virtual std::string accessibleName() const { return {}; }
    virtual const Control* control() const { return nullptr; } // null for a form
    virtual bool hasControls() const { return false; }         // that lie on it
    virtual int percent() const { return -1; }                 // of a progress bar
    virtual bool isPictureButton() const { return false; }     // labels on it stand for it
};

// A control that the program draws. One with a handler for clicks takes the focus.
class DrawnControl : public Control, public Drawn {
public:
    DrawnControl(Container* parent, const Plan& plan);

    void followInput() override;

    bool isPainted() const override { return Visible(); }
    bool takesInput() const override { return Control::takesInput(); }
    bool takesFocus() const override { return Click.isWired() || DblClick.isWired() || MouseDown.isWired(); }
    void letGo() override { showOrHide(); }
    std::string accessibleName() const override { return AccessibleName().empty() ? ToolTipText() : AccessibleName(); }
    const Control* control() const override { return this; }
    const Drawn* drawn() const override { return this; }
    void SetFocus() override;
    void place() override;

protected:
    void showOrHide() override;
    void enableOrDisable() override;
    void nameForReaders() override;
    virtual bool isOpaque() const { return false; } // what lies below needn't be painted
    void repaint();
};

} // namespace trovarium
