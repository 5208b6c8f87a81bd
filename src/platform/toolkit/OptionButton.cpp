#include "platform/toolkit/OptionButton.h"

#include <utility>

namespace trovarium {

OptionButton::OptionButton(Container* parent, const Plan& plan)
    : Control(parent, plan)
    , m_caption(plan.Caption)
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

void OptionButton::setCaption(std::string value)
{
    if (value == m_caption)
        return;
    m_caption = std::move(value);
    changed(Change::Text);
}

void OptionButton::setBackColor(std::optional<Color> value)
{
    m_backColor = value;
    changed(Change::Appearance);
}

} // namespace trovarium
