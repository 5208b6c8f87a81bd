#include "platform/toolkit/Menu.h"

#include "platform/toolkit/Form.h"

#include <utility>

namespace trovarium {

Menu::Menu(trovarium::Form* form, const MenuPlan& plan)
    : Component(plan.Name)
    , m_form(form)
    , m_caption(plan.Caption)
    , m_enabled(plan.Enabled)
    , m_checked(plan.Checked)
    , m_visible(plan.Visible)
{
    form->addMenu(this);
}

Menu::Menu(Menu* parent, const MenuPlan& plan)
    : Component(plan.Name)
    , m_form(parent->m_form)
    , m_parent(parent)
    , m_caption(plan.Caption)
    , m_enabled(plan.Enabled)
    , m_checked(plan.Checked)
    , m_visible(plan.Visible)
{
    parent->m_entries.push_back(this);
}

Menu::~Menu() = default;

void Menu::setCaption(std::string value)
{
    m_caption = std::move(value);
    changed();
}

void Menu::setEnabled(bool value)
{
    m_enabled = value;
    changed();
}

void Menu::setChecked(bool value)
{
    m_checked = value;
    changed();
}

void Menu::setVisible(bool value)
{
    m_visible = value;
    changed();
}

} // namespace trovarium
