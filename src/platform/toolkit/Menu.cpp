#include "platform/toolkit/Menu.h"

#include "platform/toolkit/Form.h"

namespace trovarium {

Menu::Menu(trovarium::Form* form, const MenuPlan& plan)
    : Menu(form, nullptr, plan)
{
    form->addMenu(this);
}

Menu::Menu(Menu* parent, const MenuPlan& plan)
    : Menu(parent->m_form, parent, plan)
{
    parent->m_entries.push_back(this);
}

Menu::Menu(trovarium::Form* form, Menu* parent, const MenuPlan& plan)
    : Component(plan.Name)
    , Caption(this, Change::Text, plan.Caption)
    , Enabled(this, Change::Enabled, plan.Enabled)
    , Checked(this, Change::Content, plan.Checked)
    , Visible(this, Change::Visible, plan.Visible)
    , m_form(form)
    , m_parent(parent)
{
}

Menu::~Menu() = default;

} // namespace trovarium
