#include "platform/toolkit/Button.h"

#include <utility>

namespace trovarium {

Button::Button(Container* parent, const Plan& plan)
    : Control(parent, plan)
    , m_caption(plan.Caption)
{
}

void Button::setCaption(std::string value)
{
    if (value == m_caption)
        return;
    m_caption = std::move(value);
    changed(Change::Text);
}

void Button::setPicture(trovarium::Picture value)
{
    if (value == m_picture)
        return;
    m_picture = std::move(value);
    changed(Change::Appearance);
}

void Button::setDefault(bool value)
{
    m_default = value;
    changed(Change::Appearance);
}

void Button::setCancel(bool value)
{
    m_cancel = value;
    changed(Change::Appearance);
}

} // namespace trovarium
