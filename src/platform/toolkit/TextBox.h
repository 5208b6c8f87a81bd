// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Control.h"

#include <string>
#include <string_view>

class QComboBox;
class QLineEdit;

namespace trovarium {

// A text with blanks for its line ends (CR LF, CR or LF).
std::string oneLine(std::string_view text);

// One line of text, at first the plan's caption. A line end becomes a blank.
class TextBox : public Control {
public:
    TextBox(Container* parent, const Plan& plan);

private:
    const std::string& text() const { return m_text; }
    void setText(std::string value);
    void edited();
    void keepText() { } // one that is there already is not cut

public:
    Property<&TextBox::text, &TextBox::setText> Text{this};
    AtLeast<&TextBox::keepText, int, 0> MaxLength{this}; // characters; 0: no limit

    Event<> Change{this}; // from typing and from code

    void SetFocus() override; // typing replaces the text

private:
    QLineEdit& m_edit;
    std::string m_text; // as it was set, also where it isn't Unicode
};

// A text with a list of choices below it.
class ComboBox : public Control {
public:
    ComboBox(Container* parent, const Plan& plan);

private:
    std::string text() const;
    void setText(std::string_view value);

public:
    Property<&ComboBox::text, &ComboBox::setText> Text{this};

    void AddItem(std::string_view text);

    Event<> Enter{this}; // its key, which then presses no default button

private:
    QComboBox& m_box;
};

} // namespace trovarium
