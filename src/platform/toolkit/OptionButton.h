#pragma once

#include "platform/toolkit/Control.h"

#include <optional>
#include <string>

namespace trovarium {

// One choice of the group that its parent makes: setting one clears the others. Click comes to the one
// that becomes set, also when code sets it.
class OptionButton : public Control {
public:
    OptionButton(Container* parent, const Plan& plan);

private:
    bool value() const { return m_value; }
    void setValue(bool value);

public:
    Property<&OptionButton::value, &OptionButton::setValue> Value{this};
    Stored<std::string> Caption;
    Stored<std::optional<Color>> BackColor{this, Change::Appearance};

    Event<> Click{this};

    std::unique_ptr<View> makeView() override;

    // The design-time choice: no Click.
    void preset() { m_value = true; }

private:
    bool m_value = false;
};

} // namespace trovarium
