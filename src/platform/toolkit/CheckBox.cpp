#include "platform/toolkit/CheckBox.h"

#include "runtime/Failure.h"

namespace trovarium {

CheckBox::CheckBox(Container* parent, const Plan& plan)
    : Control(parent, plan)
    , Caption(this, Change::Text, plan.Caption)
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

} // namespace trovarium
