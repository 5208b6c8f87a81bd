#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/Colors.h"
#include "platform/toolkit/Component.h"
#include "platform/toolkit/Container.h"
#include "platform/toolkit/Event.h"
#include "platform/toolkit/Property.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

class Desktop;
class FormSlotBase;
class FormView;
class Menu;
class Timer;

enum class BorderKind { Fixed, None };

struct FormPlan {
    std::string_view Name{};
    std::string_view Caption{};
    float Width = 0;  // of the client area, twips
    float Height = 0; // of the client area, twips
    ScaleMode Scale = ScaleMode::Twips;
    BorderKind Border = BorderKind::Fixed;
    bool CloseBox = true;
    bool MinimizeBox = false;
    bool KeyPreview = false; // KeyDown and KeyPress come here before the control with the focus
};

// A window of the program. The object and its controls stand from construction on; `load` raises Load and
// makes the window, `unload` raises Unload and drops it. Left, Top, Width and Height are twips of the
// whole window. Left and Top count from the corner of its screen: that of the active form when it is shown, later
// the one to which the user moved it.
class Form : public Component, public Container {
public:
    Form(Desktop& desktop, const FormPlan& plan);
    ~Form() override;

    Form& form() override { return *this; }
    Desktop& desktop() const { return m_desktop; }

private:
    float left() const { return m_left; }
    void setLeft(float value);
    float top() const { return m_top; }
    void setTop(float value);
    float width() const;
    void setWidth(float value);
    float height() const;
    void setHeight(float value);

public:
    Stored<std::string> Caption;
    Property<&Form::left, &Form::setLeft> Left{this};
    Property<&Form::top, &Form::setTop> Top{this};
    Property<&Form::width, &Form::setWidth> Width{this};
    Property<&Form::height, &Form::setHeight> Height{this};
    Stored<int> MousePointer{this, Change::Hint, DefaultPointer};
    Stored<bool> Enabled{this, Change::Enabled, true};
    Stored<Color> BackColor{this, Change::Appearance, WindowBlue};
    Stored<trovarium::Picture> Picture{this, Change::Appearance}; // stretched over the client area
    Stored<trovarium::Picture> Icon{this, Change::Content};

    float ScaleWidth() const { return fromTwips(m_clientWidth); }
    float ScaleHeight() const { return fromTwips(m_clientHeight); }
    const FormPlan& plan() const { return m_plan; }

    void load();
    void show();
    void showModal(); // returns when the form is hidden or unloaded
    void hide();
    void unload(); // nothing inside its own Unload or when it isn't loaded
    bool isLoaded() const { return m_loaded; }
    bool isShown() const { return m_shown; }

    // Returns when an entry was chosen and its handler has run, or nothing was.
    void PopupMenu(Menu& menu);

    Event<> Load{this};
    Event<> Activate{this};
    Event<> Unload{this};
    Event<> Close{this};        // by the window's frame; the form unloads where nobody is wired
    Event<> EndOfSession{this}; // may come: what is typed is to be saved now. Its end unloads all forms
    Event<int, int, float, float> MouseDown{this}; // Button, Shift, X, Y in the form's scale
    Event<int, int, float, float> MouseMove{this};
    Event<> Click{this};
    Event<int, int> KeyDown{this}; // KeyCode, Shift
    Event<int> KeyPress{this};     // KeyAscii

    void addMenu(Menu* menu) { m_menus.push_back(menu); }
    const std::vector<Menu*>& menus() const { return m_menus; }
    void addTimer(Timer* timer) { m_timers.push_back(timer); }
    void removeTimer(Timer* timer) { std::erase(m_timers, timer); }
    const std::vector<Timer*>& timers() const { return m_timers; }
    void setSlot(FormSlotBase* slot) { m_slot = slot; }
    FormView* view() const { return m_view.get(); }

    float clientWidth() const { return m_clientWidth; } // twips
    float clientHeight() const { return m_clientHeight; }
    // The window stands there now, by the user's hand or where it was put at first.
    void movedTo(float left, float top);
    bool isPlaced() const { return m_placed; }

protected:
    void changed(Change change) override;

private:
    void present(bool modal);

    Desktop& m_desktop;
    FormPlan m_plan;
    float m_clientWidth;
    float m_clientHeight;
    float m_left = 0;
    float m_top = 0;
    bool m_placed = false;
    bool m_loaded = false;
    bool m_unloading = false;
    bool m_shown = false;
    FormSlotBase* m_slot = nullptr;
    std::vector<Menu*> m_menus;
    std::vector<Timer*> m_timers;
    std::unique_ptr<FormView> m_view;
};

} // namespace trovarium
