// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Control.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class QAction;
class QMenu;

namespace trovarium {

struct MenuPlan {
    std::string_view Name{};
    std::string_view Caption{}; // "&" marks the access key, "-" alone is a separator
    bool Enabled = true;
    bool Checked = false;
    bool Visible = true;
};

// An entry of the menu bar, of a menu or of a pop-up menu. An entry that has entries of its own raises
// Click on opening. An invisible one at the top serves as a pop-up menu only.
class Menu : public Component {
public:
    Menu(trovarium::Form* form, const MenuPlan& plan); // at the top
    Menu(Menu* parent, const MenuPlan& plan);
    ~Menu() override;

    trovarium::Form& form() override { return *m_form; }

private:
    void show();

public:
    Stored<&Menu::show, std::string> Caption;
    Stored<&Menu::show, bool> Enabled;
    Stored<&Menu::show, bool> Checked;
    Stored<&Menu::show, bool> Visible;

    Event<> Click{this};

    Menu* parent() const { return m_parent; }
    const std::vector<Menu*>& entries() const { return m_entries; }
    bool isSeparator() const { return Caption() == "-"; }
    QAction& action() const { return *m_action; }

    // Opens at the pointer, or at what has the focus while the user works by keys; returns when an entry was chosen
    // and its handler has run, or nothing was.
    void popUp();

private:
    Menu(trovarium::Form* form, Menu* parent, const MenuPlan& plan);
    QMenu& list(); // of its entries
    Menu* entryOf(const QAction* action);
    void chosen();

    trovarium::Form* m_form;
    Menu* m_parent;
    std::vector<Menu*> m_entries;
    std::unique_ptr<QMenu> m_list; // only where there are entries
    std::unique_ptr<QAction> m_action;
    bool m_popsUp = false;
};

} // namespace trovarium
