#pragma once

#include "platform/toolkit/Control.h"

#include <optional>
#include <string>

namespace trovarium {

// Value is 0 or 1; Click comes also when code changes it.
class CheckBox : public Control {
public:
    CheckBox(Container* parent, const Plan& plan);

private:
    int value() const { return m_value; }
    void setValue(int value);
    const std::string& caption() const { return m_caption; }
    void setCaption(std::string value);
    std::optional<Color> backColor() const { return m_backColor; }
    void setBackColor(std::optional<Color> value);

public:
    Property<&CheckBox::value, &CheckBox::setValue> Value{this};
    Property<&CheckBox::caption, &CheckBox::setCaption> Caption{this};
    Property<&CheckBox::backColor, &CheckBox::setBackColor> BackColor{this};

    Event<> Click{this};

    std::unique_ptr<View> makeView() override;

private:
    int m_value = 0;
    std::string m_caption;
    std::optional<Color> m_backColor;
};

} // namespace trovarium
