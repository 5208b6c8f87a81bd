#pragma once

#include "platform/media/DesktopMedia.h"
#include "platform/pictures/PictureService.h"
#include "platform/qt/toolkit/FormWindow.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "platform/toolkit/Screen.h"

#include <QEventLoop>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class QApplication;
class QTimer;

namespace trovarium {

class Component;
class FormSlotBase;
class LateUpdate;
class SurfaceView;
class TimerView;

// What stands behind Desktop. Everything here runs on the one thread of the program.
//
// Words:  frame      code of our own on the stack below which a loop of the desktop may run (`Frame`)
//         graveyard  unloaded forms wait there for the last frame to end: a handler of theirs may still run
//         wall       `fromDesktop` and `runHandler`: nothing is thrown through the desktop's own frames
//         turn       one pass of the loop; what is queued runs in the next one
//         slot       the share of a second in which the windows are painted once; of a form: see FormSlot
//         activate   a form that became the front one has an Activate event to come, delivered in a turn
//         closedToEvents  windows paint, but what would run a handler is postponed to a later turn
//         capture    the pressed item gets all of the mouse until its release
struct DesktopState {
    using Clock = std::chrono::steady_clock;

    // The frames of our own on the stack: handlers, DoEvents, modal shows, prompts. Unloaded forms are
    // destroyed when the last of them ends.
    class Frame {
    public:
        explicit Frame(DesktopState& state);
        ~Frame();
        Frame(const Frame&) = delete;
        Frame& operator=(const Frame&) = delete;

    private:
        DesktopState& m_state;
    };

    struct Grave {
        std::unique_ptr<Form> form;
        const FormSlotBase* slot;
    };

    struct ModalShow {
        Form* form;
        QEventLoop* loop;
    };

    DesktopState(Desktop& owner, int& argc, char** argv, FileService& fileService, Pace chosenPace);
    ~DesktopState();
    DesktopState(const DesktopState&) = delete;
    DesktopState& operator=(const DesktopState&) = delete;

    // Notes the end of the program and makes every loop of the desktop return.
    void noteEnd(const ProgramEnd& end);
    void throwIfEnded() const;
    bool ended() const { return endCode.has_value(); }

    // May the user act on this form now?
    bool isOpenToInput(const Form& form) const;

    void formLoaded(Form& form);
    void formShown(Form& form);
    void formHidden(Form& form);   // hidden or unloaded: ends its modal show
    void formUnloaded(Form& form); // or destroyed
    Form* activeForm() const;
    void handKeysOn(); // to the active form, from a window that has just gone
    void queueActivate(Form& form);
    void deliverActivates();

    // Dirty parts of surfaces wait here until they may be painted.
    void addDirty(SurfaceView& surface);
    void forget(SurfaceView& surface);
    void flushDirty(); // hands them to the desktop's own painting
    void paintNow();   // paints all that is dirty before it returns
    void endCapture(); // the pressed item gets no release any more

    // Widgets that are brought up to date late wait here for their slot.
    void addLate(LateUpdate& update);
    void forget(LateUpdate& update);
    void flushLate();

    void doEvents();
    void repaintOnly();
    bool mayWait(std::chrono::milliseconds waited); // for a picture: false once the user closes a window
    void wait(int milliseconds);
    bool waitUntil(const std::function<bool()>& condition, int milliseconds);

    // Whether input for a form waits until handlers may run again; then it takes it.
    bool keepsInput(QObject& receiver, QEvent& event);

    // Deletes what may have an event of its own on the stack: not inside a loop that runs within that event.
    void discard(QObject* object);

    Desktop& desktop;
    FileService& files;
    const Pace pace;
    std::unique_ptr<QApplication> application;
    std::unique_ptr<QObject> turn; // what queued calls hang on
    std::unique_ptr<InputGate> gate;
    PictureService pictures;
    DesktopMedia realMedia;
    MediaService* media = &realMedia;
    trovarium::Screen screen;
    std::unique_ptr<Prompts> realPrompts;
    Prompts* prompts = nullptr;

    std::vector<Form*> loaded;
    std::vector<Form*> shown; // the last one shown or made active at the end
    std::vector<ModalShow> modals;
    std::vector<Form*> activates;
    std::vector<Form*> activating;            // whose Activate handlers run
    std::vector<Grave> graveyard;             // unloaded forms on which a handler may still run
    std::vector<QPointer<QObject>> discarded; // waits for the last frame to end
    std::vector<TimerView*> timers;           // that run
    std::vector<SurfaceView*> dirty;
    std::vector<LateUpdate*> late;
    std::unique_ptr<QTimer> lateSlot; // runs while some wait
    SurfaceView* capturing = nullptr;
    QPointer<QWidget> lastText; // the text box that had the focus last

    int frames = 0;
    bool closedToEvents = false;
    std::vector<std::function<void()>> postponed; // what came while closed to events
    bool closeAsked = false;                      // among it
    std::deque<std::pair<QPointer<QObject>, std::shared_ptr<QEvent>>> keptInput;
    bool replaying = false;
    bool moved = false; // a control moved since the last paint
    Clock::time_point nextSlot{};
    Clock::time_point nextLateSlot{};
    Clock::time_point lastLook{};
    std::optional<int> endCode;
    bool running = false; // in `run`

private:
    void lookClosed(QEventLoop::ProcessEventsFlags flags);
    void replayInput();
    void endOfFrames();
    bool timerIsDue(Clock::time_point now) const;
};

// What an event of the desktop leads to: every view raises its events through it, since nothing may be
// thrown through the desktop's frames. Does nothing once the program ends. When it returns, the view and
// its control may be gone.
void fromDesktop(Component& sender, const std::function<void()>& action);

// Stands around a call that runs a loop of the desktop inside a statement: a modal show, a pop-up menu, a
// prompt. What is changed is shown, a pressed item loses the mouse.
class NestedLoop {
public:
    explicit NestedLoop(Desktop& desktop);
    // Behind the loop: throws the end of the program again if it came meanwhile.
    void finish();

private:
    DesktopState& m_state;
    DesktopState::Frame m_frame;
};

} // namespace trovarium
