// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Event.h"
#include "platform/toolkit/Property.h"
#include "platform/toolkit/Units.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class QMargins;
class QWidget;

namespace trovarium {

class Control;
class Desktop;
class Drawn;
class Form;

// A control as the form's plan draws it. Place and size are in twips, whatever the parent's scale.
struct Plan {
    std::string_view Name{};
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    std::string_view Caption{};
    std::string_view ToolTipText{};
    bool Visible = true;
    bool Enabled = true;
};

// What a form is made of: the form itself, its controls, menus and timers.
class Component {
public:
    explicit Component(std::string_view name)
        : m_name(name)
    {
    }
    virtual ~Component() = default;
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    const std::string& Name() const { return m_name; }
    virtual Form& form() = 0;
    Desktop& desktop();

private:
    std::string m_name;
};

// What controls lie on: a form, a picture box or a frame. Its children's places and sizes are in its scale.
class Container {
public:
    explicit Container(ScaleMode scale)
        : m_scale(scale)
    {
    }
    virtual ~Container() = default;
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;

    virtual Form& form() = 0;
    virtual QWidget* client() const = 0; // the widget that its controls lie on
    virtual bool showsControls() const { return true; }
    virtual bool takesInput() const = 0;
    float fromTwips(float twips) const { return m_scale == ScaleMode::Pixels ? twips / TwipsPerPixel : twips; }
    float toPixels(float value) const { return m_scale == ScaleMode::Pixels ? value : value / TwipsPerPixel; }
    // Width of the border on each side, in pixels. Children are placed inside it.
    virtual float edge() const { return 0; }

    const std::vector<Control*>& controls() const { return m_controls; } // in the order of their making
    void adopt(Control* control) { m_controls.push_back(control); }
    void abandon(Control* control) { std::erase(m_controls, control); }

private:
    ScaleMode m_scale;
    std::vector<Control*> m_controls;
};

// A thing with a place on a form: a handle on its widget, which lives as long. Left, Top, Width and Height are in the
// parent's scale and keep their fractions; the widget stands on whole pixels.
class Control : public Component {
public:
    // Owns the widget, which is made for it.
    Control(Container* parent, const Plan& plan, QWidget* widget);
    ~Control() override;

    Form& form() override { return m_parent->form(); }
    Container& parent() const { return *m_parent; }
    QWidget* widget() const { return m_widget; }
    virtual Container* container() { return nullptr; }     // itself, if other controls may lie on it
    virtual const Drawn* drawn() const { return nullptr; } // itself, if the program draws it
    virtual void followInput() { }                         // handlers were connected, or what decides on input changed

    virtual void place(); // the widget, where Left, Top, Width and Height say

protected:
    virtual QMargins margins() const; // pixels beyond its place that it paints on
    virtual void showOrHide();
    virtual void enableOrDisable();
    virtual void nameForReaders(); // tool tip and accessible name
    void showPointer();
    void tellSelected();

public:
    Stored<&Control::place, float> Left;
    Stored<&Control::place, float> Top;
    AtLeast<&Control::place, float, 0> Width;
    AtLeast<&Control::place, float, 0> Height;
    Stored<&Control::showOrHide, bool> Visible;
    Stored<&Control::enableOrDisable, bool> Enabled;
    Stored<&Control::nameForReaders, std::string> ToolTipText;
    Stored<&Control::showPointer, int> MousePointer{this, DefaultPointer};
    Stored<&Control::nameForReaders, std::string> AccessibleName{this};
    // Whether a screen reader is to call it selected; empty where selection has no meaning.
    Stored<&Control::tellSelected, std::optional<bool>> AccessibleSelected{this};

    void Refresh();          // paints now
    virtual void SetFocus(); // nothing where it can't take it
    // Tab leads here from a control of another container.
    void TabBehind(const Control& before);
    bool hasFocus() const;

    // isShown: visible, and so is every container around it. takesInput: visible and enabled, like every container
    // around it.
    bool isShown() const { return Visible() && m_parent->showsControls(); }
    bool takesInput() const { return Visible() && Enabled() && m_parent->takesInput(); }

private:
    Container* m_parent;
    QWidget* m_widget;
};

} // namespace trovarium
