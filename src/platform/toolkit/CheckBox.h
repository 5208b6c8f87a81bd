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

public:
    Property<&CheckBox::value, &CheckBox::setValue> Value{this};
    Stored<std::string> Caption;
    Stored<std::optional<Color>> BackColor{this, Change::Appearance};

    Event<> Click{this};

    std::unique_ptr<View> makeView() override;

    // Checked at design time: no Click.
    void preset() { m_value = 1; }

private:
    int m_value = 0;
};

} // namespace trovarium
