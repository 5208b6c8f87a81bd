// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Property.h"
#include "platform/toolkit/Units.h"

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace trovarium {

class FileService;
class Form;
class MediaService;
class PictureService;
class Prompts;
struct DesktopState;

// The end of the program on its way to `main`. No Failure and no std::exception, so that no handler
// swallows it.
class ProgramEnd {
public:
    explicit ProgramEnd(int exitCode)
        : m_exitCode(exitCode)
    {
    }
    int exitCode() const { return m_exitCode; }

private:
    int m_exitCode;
};

// The screen where the program's active form stands, the first one while there is none. A form counts its place
// from this screen's corner, so that what is worked out from Width and Height holds on every screen. The pointer
// is that of all screens and beats those of forms and controls, but for a form that hides it.
class Screen {
public:
    explicit Screen(const DesktopState& state)
        : m_state(state)
    {
    }

    float Width() const;  // twips
    float Height() const; // twips

private:
    void showPointer();

public:
    Stored<&Screen::showPointer, int> MousePointer{this, DefaultPointer};

private:
    const DesktopState& m_state;
};

// How fast the loop turns: Paced as a user sees it, Immediate for tests.
enum class Pace { Paced, Immediate };

// The desktop as the program sees it: the event loop, the open forms, the screen, questions to the user.
// One for a process.
class Desktop {
public:
    // `scale`: the factor for all screens that the user has set, such as "1.5"; anything else leaves it to the screens.
    Desktop(int& argc, char** argv, FileService& files, Pace pace, std::string_view scale = {});
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    FileService& files();
    PictureService& pictures();
    MediaService& media();
    void setMedia(MediaService* media); // null: the real one
    trovarium::Screen& Screen();
    Prompts& prompts();
    bool isAsking() const;             // whether a message or a question of theirs is open
    void setPrompts(Prompts* prompts); // null: the real ones

    // Runs until the last form is unloaded or the program ends; the exit code. Takes the end of the
    // program itself. The end of the desktop's session, SIGTERM, SIGHUP and SIGINT unload all forms.
    int run();
    // Runs `body` as `run` runs the loop, so that an end before any loop is taken too. 1 after a failure, which is
    // told on the error output.
    int guarded(const std::function<void()>& body);

    // Handles what is pending once, runs due timers, paints what is dirty.
    void DoEvents();
    // Paints what is dirty; no input and no timers.
    void repaintOnly();
    // Waits with events suspended while the windows repaint, a film's frames as they come; not at all when Immediate.
    void wait(int milliseconds);
    // As `wait`, at every pace, until the condition holds; false when it didn't in time.
    bool waitUntil(const std::function<bool()>& condition, int milliseconds);

    [[noreturn]] void endProgram(int exitCode = 0);

    // The loaded forms, in the order of loading.
    int formsCount() const;
    Form& formsItem(int index) const; // 0-based, "Subscript out of range"
    Form* activeForm() const;
    // Gives the focus back to the text box that had it last, the caret where it was; nothing once that takes no input.
    void returnToText();

private:
    std::unique_ptr<DesktopState> m_state;

public:
    DesktopState& state() { return *m_state; } // for the toolkit
};

} // namespace trovarium
