#pragma once

#include "platform/toolkit/Component.h"
#include "platform/toolkit/Event.h"
#include "platform/toolkit/Property.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

class MenuView;

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

    Stored<std::string> Caption;
    Stored<bool> Enabled;
    Stored<bool> Checked;
    Stored<bool> Visible;

    Event<> Click{this};

    Menu* parent() const { return m_parent; }
    const std::vector<Menu*>& entries() const { return m_entries; }
    bool isSeparator() const { return Caption() == "-"; }

    MenuView* view() const { return m_view; }
    void setView(MenuView* view) { m_view = view; }

protected:
    void changed(Change change) override;

private:
    Menu(trovarium::Form* form, Menu* parent, const MenuPlan& plan);

    trovarium::Form* m_form;
    Menu* m_parent = nullptr;
    std::vector<Menu*> m_entries;
    MenuView* m_view = nullptr;
};

} // namespace trovarium
