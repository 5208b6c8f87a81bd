// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/media/DesktopMedia.h"
#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"

#include <QEventLoop>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

class QApplication;

namespace trovarium {

class Component;
class DrawnWidget;
class FormHolderBase;
class Timer;

// The implementation of Desktop. Everything here runs on the main thread.
struct DesktopState {
    using Clock = std::chrono::steady_clock;
    // In a run of DoEvents the windows are repainted this often at most.
    static constexpr std::chrono::milliseconds RepaintInterval{2};

    // Exists while our own code is on the stack and may run Qt's event loop: handlers, DoEvents, modal shows, prompts.
    // Unloaded forms live until the outermost scope has ended.
    class HandlerScope {
    public:
        // `fromEvent`: Qt's code has called ours and may still use the widgets afterwards.
        explicit HandlerScope(DesktopState& state, bool fromEvent = false);
        ~HandlerScope();
        HandlerScope(const HandlerScope&) = delete;
        HandlerScope& operator=(const HandlerScope&) = delete;

    private:
        DesktopState& m_state;
        bool m_fromEvent;
    };

    struct UnloadedForm {
        std::unique_ptr<Form> form;
        const FormHolderBase* holder;
    };

    struct ModalShow {
        Form* form;
        QEventLoop* loop;
    };

    DesktopState(
        Desktop& owner, int& argc, char** argv, FileService& fileService, Pace chosenPace, std::string_view scale);
    ~DesktopState();
    DesktopState(const DesktopState&) = delete;
    DesktopState& operator=(const DesktopState&) = delete;

    // Notes the end of the program and makes all event loops return.
    void noteEnd(const ProgramEnd& end);
    void throwIfEnded() const;
    bool ended() const { return endCode.has_value(); }

    // May the user act on this form, now or, while events are suspended, soon?
    bool isInUse(const Form& form) const;
    bool isOpenToInput(const Form& form) const { return !eventsSuspended && isInUse(form); }

    void formShown(Form& form);
    void formHidden(Form& form);   // hidden or unloaded: ends its modal show
    void formUnloaded(Form& form); // or destroyed
    Form* activeForm() const;
    Form* formOf(const QWidget& widget) const; // null if its window isn't that of a loaded form
    void activateNextWindow();                 // the active form's, since the one with the keyboard has just gone
    void queueActivate(Form& form);
    void deliverActivates();

    void paintNow();     // paints all that changed before it returns
    void releaseMouse(); // the pressed widget gets no release any more

    void processSuspended(QEventLoop::ProcessEventsFlags flags); // processes events, but runs no handler
    bool mayWait(std::chrono::milliseconds waited);              // for a picture: false once the user closes a window

    // Runs `action` in the next iteration of the event loop; if events are suspended then, once they run again.
    void invokeLater(std::function<void()> action);
    // True if input for a form has to wait until handlers may run again; it is then kept for later.
    bool keepsInput(QObject& receiver, QEvent& event);
    // True if a window's repaint has to wait; it is then kept for later.
    bool keepsRepaint(QObject& window);
    void releaseRepaints(); // those that were kept

    Desktop& desktop;
    FileService& files;
    const Pace pace;
    std::unique_ptr<QApplication> application;
    std::unique_ptr<QObject> queue; // receives queued calls
    std::unique_ptr<QObject> eventFilter;
    PictureService pictures;
    DesktopMedia realMedia;
    MediaService* media = &realMedia;
    trovarium::Screen screen;
    std::unique_ptr<Prompts> realPrompts;
    Prompts* prompts = nullptr;

    std::vector<Form*> loaded;
    std::vector<Form*> shown; // the last one shown or made active at the end
    std::vector<ModalShow> modals;
    std::vector<Form*> activates;  // whose Activate is still to be raised
    std::vector<Form*> activating; // whose Activate handlers run
    std::vector<UnloadedForm> unloadedForms;
    std::vector<Timer*> timers;                   // of loaded forms
    DrawnWidget* mouseGrabber = nullptr;          // is pressed, and gets all mouse events until the release
    DrawnWidget* releasing = nullptr;             // its MouseUp runs, Click is still to come
    DrawnWidget* lastPressed = nullptr;           // for the second press of a double click
    QPointer<QWidget> focusWhenShown;             // gets the focus when it is shown, if its parent still has it
    QPointer<QWidget> lastText;                   // the text box that had the focus last
    int scopes = 0;                               // of HandlerScope
    bool eventsSuspended = false;                 // windows paint, but handlers run later
    std::vector<std::function<void()>> postponed; // to be done once events aren't suspended any more
    bool closeAsked = false;                      // a window's close is among these
    std::deque<std::pair<QPointer<QObject>, std::shared_ptr<QEvent>>> keptInput;
    bool replaying = false;
    bool moved = false; // a control moved since the last repaint
    bool repaintsWait = false;
    std::vector<QPointer<QObject>> keptRepaints; // windows
    Clock::time_point nextRepaint{};
    Clock::time_point lastLook{}; // when events were last fetched from the window system
    std::optional<int> endCode;
    bool running = false; // in `run`

private:
    void replayInput();
    void destroyUnloadedForms();
};

// Runs `action`, which handles an event of Qt. No exception may pass through Qt's code, so the end of the program is
// only noted. Does nothing once the program ends, while events are suspended, and for a form that isn't loaded.
void deliverEvent(Component& sender, const std::function<void()>& action);

// Encloses a call that runs an event loop of its own: a modal show, a pop-up menu, a prompt. A pressed widget loses the
// mouse.
class NestedLoop {
public:
    explicit NestedLoop(Desktop& desktop);
    // To be called after the loop. Throws the end of the program if it was noted meanwhile.
    void finish();

private:
    DesktopState& m_state;
    DesktopState::HandlerScope m_scope;
};

} // namespace trovarium
