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

private:
    const std::string& caption() const { return m_caption; }
    void setCaption(std::string value);
    bool enabled() const { return m_enabled; }
    void setEnabled(bool value);
    bool checked() const { return m_checked; }
    void setChecked(bool value);
    bool visible() const { return m_visible; }
    void setVisible(bool value);

public:
    Property<&Menu::caption, &Menu::setCaption> Caption{this};
    Property<&Menu::enabled, &Menu::setEnabled> Enabled{this};
    Property<&Menu::checked, &Menu::setChecked> Checked{this};
    Property<&Menu::visible, &Menu::setVisible> Visible{this};

    Event<> Click{this};

    Menu* parent() const { return m_parent; }
    const std::vector<Menu*>& entries() const { return m_entries; }
    bool isSeparator() const { return m_caption == "-"; }

    MenuView* view() const { return m_view; }
    void setView(MenuView* view) { m_view = view; }

private:
    void changed();

    trovarium::Form* m_form;
    Menu* m_parent = nullptr;
    std::vector<Menu*> m_entries;
    std::string m_caption;
    bool m_enabled;
    bool m_checked;
    bool m_visible;
    MenuView* m_view = nullptr;
};

} // namespace trovarium
