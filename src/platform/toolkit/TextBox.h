#pragma once

#include "platform/toolkit/Control.h"

#include <string>

namespace trovarium {

// One line of text, at first the plan's caption. A line end becomes a blank.
class TextBox : public Control {
public:
    TextBox(Container* parent, const Plan& plan);

private:
    const std::string& text() const { return m_text; }
    void setText(std::string value);

public:
    Property<&TextBox::text, &TextBox::setText> Text{this};
    // Characters; 0: no limit. A text that is there already is not cut.
    AtLeast<int, 0> MaxLength{this, trovarium::Change::Appearance};

    Event<> Change{this};      // from typing and from code
    Event<int> KeyPress{this}; // KeyAscii

    std::unique_ptr<View> makeView() override;

    // The view tells what the user typed.
    void typed(std::string value);

private:
    void take(std::string value);

    std::string m_text;
};

} // namespace trovarium
