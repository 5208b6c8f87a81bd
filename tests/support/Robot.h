// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Units.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

class Control;
class Desktop;
class Form;
class Menu;

// The one desktop of a test program, on no screen and without pace.
Desktop& testDesktop();

// A place on a control or a form, in pixels from its upper left corner; may lie outside.
struct At {
    float x = 0;
    float y = 0;
};

// What a window shows, in pixels.
struct Shot {
    std::vector<Color> pixels;

    auto count(Color color) const { return std::count(pixels.begin(), pixels.end(), color); }
};

// A user's hand: its events take the way of the real mouse and keyboard, so that what is covered, disabled
// or closed to input isn't reached. Places default to the middle.
//
// An act returns when the handlers that it ran have returned; what is to happen inside a modal form or an
// open menu is told beforehand, by `whenShown`, `whenMenuOpens` or `atNextTurn`.
class Robot {
public:
    explicit Robot(Desktop& desktop);
    ~Robot(); // what was told beforehand and never happened fails the test

    // Gives the keys held, for the release.
    int press(Control& control, int button = LeftButton, int shift = NoKeys, std::optional<At> at = {});
    int press(Form& form, At at, int button = LeftButton, int shift = NoKeys);
    void moveTo(Control& control, std::optional<At> at = {}, int shift = NoKeys);
    void moveTo(Form& form, At at, int shift = NoKeys);
    void release(int shift = NoKeys);
    // Takes what `press` takes.
    template <class... Press>
    void click(Press&&... how)
    {
        release(press(how...));
    }
    void doubleClick(Control& control, int shift = NoKeys, std::optional<At> at = {});
    void wheel(Control& control, float notchesDown, std::optional<At> at = {});

    // To the control with the focus. The key is a code as handlers get it (13 Enter, 65 A).
    void key(Form& form, int keyCode, int shift = NoKeys);
    void hold(Form& form, int keyCode); // raises its repeats only
    void type(Form& form, std::string_view text);
    void tab(Form& form) { key(form, 9); }

    // Opens the menus that lead to the entry, from the bar or from the open pop-up menu, and presses Enter.
    void choose(Menu& entry);
    void dismissMenu(); // the open pop-up menu, nothing chosen
    // By the window's close box.
    void close(Form& form);

    void whenShown(std::string_view formName, std::function<void()> action);
    void whenMenuOpens(std::function<void()> action);
    void when(std::function<bool()> condition, std::function<void()> action, std::string_view name = "a condition");
    void atNextTurn(std::function<void()> action)
    {
        when([] { return true; }, std::move(action), "the next turn");
    }

    // Runs events until the condition holds; false when it didn't in time.
    bool until(const std::function<bool()>& condition);

    // The client area as it would be painted.
    Shot shot(Form& form);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace trovarium
