// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/Menu.h"

#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/FormWindow.h"
#include "platform/toolkit/QtValues.h"

#include <QAction>
#include <QCursor>
#include <QMenu>
#include <QMenuBar>

namespace trovarium {

Menu::Menu(trovarium::Form* form, const MenuPlan& plan)
    : Menu(form, nullptr, plan)
{
    form->addMenu(this);
    if (plan.Visible)
        form->window().menuBar().addAction(m_action.get());
}

Menu::Menu(Menu* parent, const MenuPlan& plan)
    : Menu(parent->m_form, parent, plan)
{
    parent->m_entries.push_back(this);
    parent->list().addAction(m_action.get());
}

Menu::Menu(trovarium::Form* form, Menu* parent, const MenuPlan& plan)
    : Component(plan.Name)
    , Caption(this, plan.Caption)
    , Enabled(this, plan.Enabled)
    , Checked(this, plan.Checked)
    , Visible(this, plan.Visible)
    , m_form(form)
    , m_parent(parent)
    , m_action(std::make_unique<QAction>())
{
    m_action->setObjectName(toQString(Name()));
    show();
    QObject::connect(m_action.get(), &QAction::triggered, m_action.get(), [this] { chosen(); });
}

Menu::~Menu() = default;

void Menu::show()
{
    // A separator with a text would show it as a heading.
    m_action->setText(isSeparator() ? QString() : toQString(Caption()));
    m_action->setSeparator(isSeparator());
    m_action->setEnabled(Enabled());
    m_action->setVisible(Visible());
    m_action->setCheckable(Checked());
    m_action->setChecked(Checked());
}

QMenu& Menu::list()
{
    if (m_list == nullptr) {
        m_list = std::make_unique<QMenu>(&m_form->window());
        m_action->setMenu(m_list.get());
        QObject::connect(m_list.get(), &QMenu::aboutToShow, m_list.get(), [this] {
            if (!m_popsUp) // `popUp` has raised it already
                deliverEvent(*this, [this] { Click.raise(); });
        });
    }
    return *m_list;
}

// `popUp` runs the handler of a pop-up menu's entry itself, after the menu has closed.
void Menu::chosen()
{
    show(); // undoes the check mark that Qt has toggled
    const Menu* top = this;
    while (top->m_parent != nullptr)
        top = top->m_parent;
    if (!top->m_popsUp && m_entries.empty())
        deliverEvent(*this, [this] { Click.raise(); });
}

Menu* Menu::entryOf(const QAction* action)
{
    for (Menu* entry : m_entries) {
        if (entry->m_action.get() == action)
            return entry;
        if (Menu* inner = entry->entryOf(action))
            return inner;
    }
    return nullptr;
}

void Menu::popUp()
{
    const DesktopState::HandlerScope scope(m_form->desktop().state());
    Click.raise();
    if (!m_form->isLoaded() || m_entries.empty())
        return;
    const QWidget& window = m_form->window();
    const QWidget* focus = window.testAttribute(Qt::WA_KeyboardFocusChange) ? window.focusWidget() : nullptr;
    const QPoint place =
        focus != nullptr ? focus->mapToGlobal(QRectF(focus->contentsRect()).center().toPoint()) : QCursor::pos();
    NestedLoop loop(m_form->desktop());
    m_popsUp = true;
    Menu* entry = entryOf(list().exec(place));
    m_popsUp = false;
    loop.finish();
    if (entry != nullptr && m_form->isLoaded())
        entry->Click.raise();
}

} // namespace trovarium
