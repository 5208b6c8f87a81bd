// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Control.h"

#include <string>
#include <string_view>
#include <vector>

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

    Event<> Change{this};      // from typing and from code
    Event<int> KeyPress{this}; // KeyAscii

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
    const std::string& text() const { return m_text; }
    int listIndex() const { return m_listIndex; }
    void setListIndex(int index);
    void chosen(int index);
    void showText();

public:
    void typed(std::string value);

    Property<&ComboBox::text, &ComboBox::typed> Text{this};
    Property<&ComboBox::listIndex, &ComboBox::setListIndex> ListIndex{this};

    int ListCount() const { return static_cast<int>(m_items.size()); }
    const std::string& List(int index) const; // 0-based
    void AddItem(std::string text);
    void Clear();

    Event<> Change{this}; // the text, from typing and from code
    Event<> Click{this};  // a choice from the list
    Event<> Enter{this};  // its key, which then presses no default button

private:
    QComboBox& m_box;
    std::vector<std::string> m_items;
    std::string m_text;
    int m_listIndex = -1;
};

} // namespace trovarium
