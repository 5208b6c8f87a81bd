#include "platform/toolkit/OptionButton.h"

namespace trovarium {

OptionButton::OptionButton(Container* parent, const Plan& plan)
    : Control(parent, plan)
    , Caption(this, Change::Text, plan.Caption)
{
}

void OptionButton::setValue(bool value)
{
    if (value == m_value)
        return;
    // The others go out first, so that the handler sees the group with one choice.
    if (value) {
        for (Control* sibling : parent().controls()) {
            auto* other = dynamic_cast<OptionButton*>(sibling);
            if (other != nullptr && other != this)
                other->setValue(false);
        }
    }
    m_value = value;
    changed(Change::Content);
    if (value)
        Click.raise();
}

} // namespace trovarium
