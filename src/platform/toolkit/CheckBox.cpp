#include "platform/toolkit/CheckBox.h"

#include "runtime/Failure.h"

#include <utility>

namespace trovarium {

CheckBox::CheckBox(Container* parent, const Plan& plan)
    : Control(parent, plan)
    , m_caption(plan.Caption)
{
}

void CheckBox::setValue(int value)
{
    if (value != 0 && value != 1)
        throw Failure(FailureKind::InvalidPropertyValue);
    if (value == m_value)
        return;
    m_value = value;
    changed(Change::Content);
    Click.raise();
}

void CheckBox::setCaption(std::string value)
{
    if (value == m_caption)
        return;
    m_caption = std::move(value);
    changed(Change::Text);
}

void CheckBox::setBackColor(std::optional<Color> value)
{
    m_backColor = value;
    changed(Change::Appearance);
}

} // namespace trovarium
