#pragma once

#include "platform/toolkit/Control.h"

#include <string>
#include <vector>

namespace trovarium {

// A text with a list of choices below it.
class ComboBox : public Control {
public:
    ComboBox(Container* parent, const Plan& plan);

private:
    const std::string& text() const { return m_text; }
    void setText(std::string value);
    int listIndex() const { return m_listIndex; }
    void setListIndex(int index);

public:
    Property<&ComboBox::text, &ComboBox::setText> Text{this};
    Property<&ComboBox::listIndex, &ComboBox::setListIndex> ListIndex{this};

    int ListCount() const { return static_cast<int>(m_items.size()); }
    const std::string& List(int index) const; // 0-based
    void AddItem(std::string text);
    void Clear();

    Event<> Change{this}; // the text, from typing and from code
    Event<> Click{this};  // a choice from the list
    Event<> Enter{this};  // its key, which then presses no default button

    std::unique_ptr<View> makeView() override;

    void typed(std::string value);
    void chosen(int index);

private:
    std::vector<std::string> m_items;
    std::string m_text;
    int m_listIndex = -1;
};

} // namespace trovarium
