#include "platform/qt/toolkit/Menus.h"

#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/qt/toolkit/ItemView.h"
#include "platform/qt/toolkit/SurfaceView.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Menu.h"

#include <QAction>
#include <QCursor>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QWindow>

#include <algorithm>
#include <map>
#include <memory>
#include <vector>

namespace trovarium {

namespace {

void showEntry(QAction& action, Menu& menu)
{
    action.setObjectName(toQString(menu.Name()));
    // A separator with a text would show it as a heading.
    action.setText(menu.isSeparator() ? QString() : toQString(menu.Caption()));
    action.setSeparator(menu.isSeparator());
    action.setEnabled(menu.Enabled());
    action.setVisible(menu.Visible());
    action.setCheckable(menu.Checked());
    action.setChecked(menu.Checked());
}

} // namespace

// An entry of the bar or of a menu that hangs on it.
class MenuView {
public:
    MenuView(Menu& menu, QAction* action)
        : m_menu(&menu)
        , m_action(action)
    {
        menu.setView(this);
        apply();
        if (QMenu* entries = action->menu())
            QObject::connect(entries, &QMenu::aboutToShow, action, [this] { raise(); });
        else
            QObject::connect(action, &QAction::triggered, action, [this] { raise(); });
    }
    ~MenuView() { detach(); }
    MenuView(const MenuView&) = delete;
    MenuView& operator=(const MenuView&) = delete;

    void apply() { showEntry(*m_action, *m_menu); }

    void detach()
    {
        if (m_menu != nullptr)
            m_menu->setView(nullptr);
        m_menu = nullptr;
    }

private:
    void raise()
    {
        if (m_menu == nullptr)
            return;
        apply(); // the desktop has turned a check mark on its own
        fromDesktop(*m_menu, [this] { m_menu->Click.raise(); });
    }

    Menu* m_menu;
    QAction* m_action;
};

namespace {

class MenuBar : public QMenuBar {
public:
    MenuBar(Form& form, QWidget* window)
        : QMenuBar(window)
    {
        setNativeMenuBar(false);
        for (Menu* top : form.menus())
            if (top->Visible())
                add(*this, *top);
    }

private:
    template <class Parent>
    void add(Parent& parent, Menu& menu)
    {
        if (menu.entries().empty()) {
            m_views.push_back(std::make_unique<MenuView>(menu, parent.addAction(QString())));
            return;
        }
        QMenu* list = parent.addMenu(QString());
        m_views.push_back(std::make_unique<MenuView>(menu, list->menuAction()));
        for (Menu* entry : menu.entries())
            add(*list, *entry);
    }

    std::vector<std::unique_ptr<MenuView>> m_views;
};

void drop(const std::vector<Menu*>& menus)
{
    for (Menu* menu : menus) {
        if (menu->view() != nullptr)
            menu->view()->detach();
        drop(menu->entries());
    }
}

// A menu for one showing. It belongs to no window, since a timer may unload the form while it is open.
class PopUp {
public:
    PopUp(Form& form, Menu& menu)
        : m_form(form)
    {
        fill(m_list, menu);
    }

    // The entry that was chosen, or null.
    Menu* choose()
    {
        m_list.winId(); // the window's handle is made here
        m_list.windowHandle()->setTransientParent(m_form.view()->window().windowHandle());
        NestedLoop loop(m_form.desktop());
        const auto found = m_entries.find(m_list.exec(place()));
        loop.finish();
        return found == m_entries.end() || !m_form.isLoaded() ? nullptr : found->second;
    }

private:
    // At the pointer, or at what has the focus while the user works by keys.
    QPoint place() const
    {
        const QWidget& window = m_form.view()->window();
        const QWidget* focus = window.focusWidget();
        if (focus == nullptr || !window.testAttribute(Qt::WA_KeyboardFocusChange))
            return QCursor::pos();
        const auto* surface = dynamic_cast<const SurfaceView*>(focus);
        const ItemView* item = surface != nullptr ? surface->focusItem() : nullptr;
        return focus->mapToGlobal(item != nullptr ? item->place().center().toPoint() : focus->rect().center());
    }

    void fill(QMenu& list, Menu& menu)
    {
        for (Menu* entry : menu.entries()) {
            QAction* action = nullptr;
            if (entry->entries().empty()) {
                action = list.addAction(QString());
            } else {
                QMenu* inner = list.addMenu(QString());
                fill(*inner, *entry);
                action = inner->menuAction();
                QObject::connect(inner, &QMenu::aboutToShow, inner, [this, entry] { opened(*entry); });
            }
            showEntry(*action, *entry);
            m_entries[action] = entry;
        }
    }

    void opened(Menu& menu)
    {
        if (!m_form.isLoaded())
            return;
        fromDesktop(menu, [&] { menu.Click.raise(); });
        for (const auto& [action, entry] : m_entries)
            if (entry->parent() == &menu)
                showEntry(*action, *entry);
    }

    Form& m_form;
    QMenu m_list;
    std::map<QAction*, Menu*> m_entries;
};

} // namespace

void Menu::changed(Change)
{
    if (m_view != nullptr)
        m_view->apply();
}

QMenuBar* makeMenuBar(Form& form, QWidget* window)
{
    const auto& menus = form.menus();
    if (std::none_of(menus.begin(), menus.end(), [](Menu* menu) { return menu->Visible(); }))
        return nullptr;
    return new MenuBar(form, window);
}

void dropMenus(Form& form)
{
    drop(form.menus());
}

void popUp(Form& form, Menu& menu)
{
    menu.Click.raise();
    if (form.view() == nullptr || menu.entries().empty())
        return;
    // What the handler does may destroy the menu's form, and the list goes before it.
    const DesktopState::Frame frame(form.desktop().state());
    Menu* chosen = PopUp(form, menu).choose();
    if (chosen != nullptr)
        chosen->Click.raise();
}

} // namespace trovarium
