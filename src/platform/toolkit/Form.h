// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/Colors.h"
#include "platform/toolkit/Drawn.h"
#include "platform/toolkit/OfferedFiles.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class QMenuBar;

namespace trovarium {

class Button;
class Desktop;
class FormHolderBase;
class FormWindow;
class Menu;
class PicturePainter;
class Timer;
class VScroll;

enum class BorderKind { Fixed, None };

struct FormPlan {
    std::string_view Name{};
    std::string_view Caption{};
    float Width = 0;  // of the client area, twips
    float Height = 0; // of the client area, twips
    ScaleMode Scale = ScaleMode::Twips;
    BorderKind Border = BorderKind::Fixed;
    bool CloseBox = true;
    bool KeyPreview = false; // KeyDown and KeyPress come here before the control with the focus
};

// A window of the program. The object and its controls stand from construction on; `load` raises Load, `unload` raises
// Unload and takes the window off the screen. Left, Top, Width and Height are twips of the whole window. Left and Top
// count from the corner of its screen: that of the active form when it is shown, later the one to which the user moved
// it.
class Form : public Component, public Container, public Drawn {
public:
    Form(Desktop& desktop, const FormPlan& plan);
    ~Form() override;

    Form& form() override { return *this; }
    Desktop& desktop() const { return m_desktop; }
    QWidget* client() const override;
    bool takesInput() const override { return true; }
    bool hasControls() const override { return true; }

private:
    float left() const { return m_left; }
    void setLeft(float value);
    float top() const { return m_top; }
    void setTop(float value);
    float width() const;
    void setWidth(float value);
    float height() const;
    void setHeight(float value);
    void showCaption();
    void showIcon();
    void showPointer();
    void takeOrRefuseFiles();
    void repaint();

public:
    Stored<&Form::showCaption, std::string> Caption;
    Property<&Form::left, &Form::setLeft> Left{this};
    Property<&Form::top, &Form::setTop> Top{this};
    Property<&Form::width, &Form::setWidth> Width{this};
    Property<&Form::height, &Form::setHeight> Height{this};
    Stored<&Form::showPointer, int> MousePointer{this, DefaultPointer};
    Stored<&Form::takeOrRefuseFiles, bool> TakesFiles{this}; // where not, other programs show that no drop is possible
    Stored<&Form::repaint, Color> BackColor{this, WindowBlue};
    Stored<&Form::repaint, trovarium::Picture> Picture{this}; // stretched over the client area
    Stored<&Form::showIcon, trovarium::Picture> Icon{this};

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
    Event<> Close{this};           // by the window's frame; the form unloads where nobody is wired
    Event<> EndOfSession{this};    // may come: what is typed is to be saved now. Its end unloads all forms
    Event<int, int> KeyDown{this}; // KeyCode, Shift
    Event<int> KeyPress{this};     // KeyAscii
    // By a drop of another program, after which the files are still its own. X and Y as in MouseDown.
    Event<const OfferedFiles&, float, float> FilesDropped{this};

    // For the toolkit.
    void addMenu(Menu* menu) { m_menus.push_back(menu); }
    const std::vector<Menu*>& menus() const { return m_menus; }
    void addTimer(Timer* timer) { m_timers.push_back(timer); }
    void removeTimer(Timer* timer) { std::erase(m_timers, timer); }
    const std::vector<Timer*>& timers() const { return m_timers; }
    void addButton(Button* button) { m_buttons.push_back(button); }
    // The button that Enter or Escape presses when no other control handles the key; null for none.
    Button* buttonOf(int code) const;
    void addScroll(VScroll* scroll) { m_scrolls.push_back(scroll); }
    // The scroll bar for the Page keys; with `widget` the one for the wheel over it, in the nearest container that has
    // one. Null for none.
    VScroll* scrollFor(const QWidget* widget = nullptr) const;
    void setHolder(FormHolderBase* holder) { m_holder = holder; }
    FormWindow& window() const { return *m_window; }
    float clientWidth() const { return m_clientWidth; } // twips
    float clientHeight() const { return m_clientHeight; }
    // The window stands there now, by the user's hand or where it was put at first.
    void movedTo(float left, float top);
    bool isPlaced() const { return m_placed; }
    void draw(QPainter& painter, const QRectF& place) override;
    QPointF handlerPlace(const QPointF& pixels) const override;

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
    FormHolderBase* m_holder = nullptr;
    std::vector<Menu*> m_menus;
    std::vector<Timer*> m_timers;
    std::vector<Button*> m_buttons;
    std::vector<VScroll*> m_scrolls;
    std::unique_ptr<PicturePainter> m_painter;
    std::unique_ptr<FormWindow> m_window;
};

// Holds the one instance of a form between its first mention and its unload.
class FormHolderBase {
public:
    explicit FormHolderBase(Desktop& desktop)
        : m_desktop(desktop)
    {
    }
    virtual ~FormHolderBase();
    FormHolderBase(const FormHolderBase&) = delete;
    FormHolderBase& operator=(const FormHolderBase&) = delete;

    bool isLoaded() const { return m_form != nullptr && m_form->isLoaded(); }

    // Called by the form at the end of its unload: the object lives on until no handler runs any more, and the next
    // mention makes a new form.
    void release();

protected:
    Form* current() const { return m_form.get(); }
    void hold(std::unique_ptr<Form> form);

private:
    Desktop& m_desktop;
    std::unique_ptr<Form> m_form;
};

template <class FormType>
class FormHolder : public FormHolderBase {
public:
    using Factory = std::function<std::unique_ptr<FormType>()>;

    FormHolder(Desktop& desktop, Factory factory)
        : FormHolderBase(desktop)
        , m_factory(std::move(factory))
    {
    }

    FormType& operator()()
    {
        if (current() == nullptr)
            hold(m_factory());
        return static_cast<FormType&>(*current());
    }

private:
    Factory m_factory;
};

} // namespace trovarium
