// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/Control.h"

#include <optional>
#include <string>

class QAbstractButton;
class QCheckBox;
class QPushButton;
class QRadioButton;

namespace trovarium {

// What the desktop shows as one of its buttons. "&" in the caption marks the access key, unless a menu of the bar has
// it. Without a caption or a name of its own it is known to screen readers by its tool tip.
class CaptionedControl : public Control {
protected:
    // `taken`: pixels of the width that the caption leaves free.
    CaptionedControl(Container* parent, const Plan& plan, QAbstractButton* button, int taken);

    void nameForReaders() override;
    void showCaption(); // in a size that there is room for: fonts differ in width
    void showGround();

public:
    Stored<&CaptionedControl::showCaption, std::string> Caption;
    Stored<&CaptionedControl::showGround, std::optional<Color>> BackColor{this}; // none: what lies below shows
    Event<> Click{this};

    void place() override;
    void followInput() override;

private:
    QAbstractButton& m_button;
    int m_taken;
};

// A push button.
class Button : public CaptionedControl {
public:
    Button(Container* parent, const Plan& plan);

private:
    void showLook();

public:
    Stored<&Button::showLook, trovarium::Picture> Picture{this};
    Stored<&Button::showLook, bool> Default{this}; // Enter presses it
    Stored<&Button::showLook, bool> Cancel{this};  // Escape presses it

private:
    QPushButton& m_button;
};

// Value is 0 or 1; Click comes also when code changes it.
class CheckBox : public CaptionedControl {
public:
    CheckBox(Container* parent, const Plan& plan);

private:
    int value() const;
    void setValue(int value);

public:
    Property<&CheckBox::value, &CheckBox::setValue> Value{this};

    // Checked at design time: no Click.
    void preset();

private:
    QCheckBox& m_box;
};

// One choice of the group that its parent makes: setting one clears the others. Click comes to the one that becomes
// set, also when code sets it.
class OptionButton : public CaptionedControl {
public:
    OptionButton(Container* parent, const Plan& plan);

private:
    bool value() const;
    void setValue(bool value);

public:
    Property<&OptionButton::value, &OptionButton::setValue> Value{this};

    // The design-time choice: no Click.
    void preset();

private:
    QRadioButton& m_button;
};

} // namespace trovarium
