#include "platform/qt/toolkit/DesktopState.h"

#include "platform/qt/toolkit/Accessibility.h"
#include "platform/qt/toolkit/DesktopPrompts.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/qt/toolkit/LateUpdate.h"
#include "platform/qt/toolkit/Look.h"
#include "platform/qt/toolkit/SurfaceView.h"
#include "platform/qt/toolkit/TimerView.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Form.h"

#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QStyle>
#include <QTimer>

#include <algorithm>
#include <clocale>
#include <thread>
#include <utility>

#include <malloc.h>

namespace trovarium {

namespace {

using namespace std::chrono_literals;

// 500 painted moves a second.
constexpr auto Slot = 2ms;
// How long a frame of a film, or what else changed, may go unpainted during a wait.
constexpr auto WaitStep = 5ms;
// A list that is brought up to date is laid out anew, which takes a millisecond or two where it is long.
constexpr auto LateSlot = 40ms;
// How long a wait for a picture leaves a window's close box dead.
constexpr auto LongestSilence = 500ms;
// How long DoEvents may go without asking the window system.
constexpr auto LookInterval = 1ms;

// By itself the allocator puts ever larger blocks, up to 32 MB, into heaps, of which it makes eight for each core, and
// which keep what is freed: hundreds of megabytes after an hour of photographs and films.
void keepHeapsSmall()
{
    constexpr int LargestInHeap = 9 << 20; // bytes: a frame of a film in full HD, which comes many times a second
    constexpr int KeptFree = 16 << 20;     // bytes at the end of a heap
    constexpr int Heaps = 2;               // one for this thread and one for all others
    mallopt(M_MMAP_THRESHOLD, LargestInHeap);
    mallopt(M_TRIM_THRESHOLD, KeptFree);
    mallopt(M_ARENA_MAX, Heaps);
}

std::unique_ptr<QApplication> makeApplication(int& argc, char** argv)
{
    keepHeapsSmall();                             // before there are threads
    QApplication::setStyle(makeLook().release()); // which the library owns
    auto application = std::make_unique<QApplication>(argc, argv);
    std::setlocale(LC_NUMERIC, "C"); // libraries below read and write numbers with it
    QApplication::setApplicationName(QStringLiteral("trovarium"));
    QApplication::setDesktopFileName(QStringLiteral("trovarium"));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setPalette(QApplication::style()->standardPalette());
    QApplication::setFont(planFont(PlanFont));
    return application;
}

} // namespace

DesktopState::Frame::Frame(DesktopState& state)
    : m_state(state)
{
    ++m_state.frames;
}

DesktopState::Frame::~Frame()
{
    if (--m_state.frames == 0)
        m_state.endOfFrames();
}

DesktopState::DesktopState(Desktop& owner, int& argc, char** argv, FileService& fileService, Pace chosenPace)
    : desktop(owner)
    , files(fileService)
    , pace(chosenPace)
    , application(makeApplication(argc, argv))
    , turn(std::make_unique<QObject>())
    , gate(std::make_unique<InputGate>())
    , pictures(fileService, [this](auto waited) { return mayWait(waited); })
    , realMedia(
          fileService, [this](const auto& condition, int milliseconds) { return waitUntil(condition, milliseconds); })
    , screen(*this)
    , realPrompts(std::make_unique<DesktopPrompts>(owner))
    , prompts(realPrompts.get())
    , lateSlot(std::make_unique<QTimer>())
{
    lateSlot->setSingleShot(true);
    QObject::connect(lateSlot.get(), &QTimer::timeout, turn.get(), [this] { flushLate(); });
    application->installEventFilter(gate.get());
    installAccessibility();
}

DesktopState::~DesktopState()
{
    graveyard.clear();
}

void DesktopState::noteEnd(const ProgramEnd& end)
{
    if (!endCode)
        endCode = end.exitCode();
    while (QWidget* popup = QApplication::activePopupWidget()) {
        if (!popup->close())
            break;
    }
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* dialog = qobject_cast<QDialog*>(window); dialog != nullptr && dialog->isVisible())
            dialog->reject();
    }
    for (const ModalShow& modal : modals)
        modal.loop->exit();
    if (running)
        QCoreApplication::exit();
}

void DesktopState::throwIfEnded() const
{
    if (endCode)
        throw ProgramEnd(*endCode);
}

bool DesktopState::isOpenToInput(const Form& form) const
{
    if (ended() || closedToEvents || !form.Enabled())
        return false;
    const auto modal =
        std::find_if(modals.rbegin(), modals.rend(), [](const ModalShow& show) { return show.form->isShown(); });
    return modal == modals.rend() || modal->form == &form;
}

void DesktopState::formLoaded(Form& form)
{
    loaded.push_back(&form);
}

void DesktopState::formShown(Form& form)
{
    lastLook = {}; // the window system has something to say about the new window
    const bool wasActive = activeForm() == &form;
    std::erase(shown, &form);
    shown.push_back(&form);
    if (!wasActive)
        queueActivate(form);
}

void DesktopState::formHidden(Form& form)
{
    std::erase(shown, &form);
    std::erase(activates, &form);
    for (const ModalShow& modal : modals) {
        if (modal.form == &form)
            modal.loop->exit();
    }
}

void DesktopState::formUnloaded(Form& form)
{
    formHidden(form);
    std::erase(loaded, &form);
}

Form* DesktopState::activeForm() const
{
    return shown.empty() ? nullptr : shown.back();
}

// A window manager does so by itself; without one the keys would go nowhere.
void DesktopState::handKeysOn()
{
    if (const Form* next = activeForm(); next != nullptr && next->view() != nullptr)
        next->view()->window().activateWindow();
}

// What falls due while the form's own Activate runs is dropped.
void DesktopState::queueActivate(Form& form)
{
    const auto in = [&form](const std::vector<Form*>& list) {
        return std::find(list.begin(), list.end(), &form) != list.end();
    };
    if (in(activating) || in(activates))
        return;
    activates.push_back(&form);
    QMetaObject::invokeMethod(
        turn.get(), [this] { deliverActivates(); }, Qt::QueuedConnection);
}

void DesktopState::deliverActivates()
{
    if (closedToEvents) {
        postponed.emplace_back([this] { deliverActivates(); });
        return;
    }
    while (!activates.empty()) {
        Form* form = activates.front();
        activates.erase(activates.begin());
        if (std::find(activating.begin(), activating.end(), form) != activating.end())
            continue;
        activating.push_back(form);
        fromDesktop(*form, [form] { form->Activate.raise(); });
        std::erase(activating, form);
    }
}

void DesktopState::addDirty(SurfaceView& surface)
{
    if (std::find(dirty.begin(), dirty.end(), &surface) == dirty.end())
        dirty.push_back(&surface);
}

void DesktopState::forget(SurfaceView& surface)
{
    std::erase(dirty, &surface);
    if (capturing == &surface)
        capturing = nullptr;
}

void DesktopState::flushDirty()
{
    for (SurfaceView* surface : std::exchange(dirty, {}))
        surface->flushDirty();
}

void DesktopState::paintNow()
{
    flushDirty();
    flushLate();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
}

void DesktopState::addLate(LateUpdate& update)
{
    if (late.empty()) {
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(nextLateSlot - Clock::now());
        lateSlot->start(std::max(wait, 1ms)); // a timer without an interval waits for idleness
    }
    late.push_back(&update);
}

void DesktopState::forget(LateUpdate& update)
{
    std::erase(late, &update);
}

void DesktopState::flushLate()
{
    if (late.empty())
        return;
    while (!late.empty())
        late.back()->flush();
    nextLateSlot = Clock::now() + LateSlot;
}

void DesktopState::endCapture()
{
    if (capturing != nullptr)
        std::exchange(capturing, nullptr)->endCapture();
}

// In a run of calls the window system is asked once a millisecond; what is posted inside the program, and
// a timer that is due, never wait for that.
void DesktopState::doEvents()
{
    throwIfEnded();
    const Frame frame(*this);
    const Clock::time_point now = Clock::now();
    if (!dirty.empty() && (pace == Pace::Immediate || moved || now >= nextSlot)) {
        flushDirty();
        if (!moved)
            nextSlot = now + Slot;
    }
    if (now - lastLook >= LookInterval || moved || timerIsDue(now)) {
        lastLook = now;
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest); // what those events made dirty
    } else {
        QCoreApplication::sendPostedEvents();
    }
    throwIfEnded();
    if (!std::exchange(moved, false) || pace == Pace::Immediate)
        return;
    nextSlot = std::max(nextSlot, Clock::now() - Slot) + Slot;
    std::this_thread::sleep_until(nextSlot);
}

bool DesktopState::timerIsDue(Clock::time_point now) const
{
    return std::any_of(timers.begin(), timers.end(), [now](const TimerView* timer) { return timer->isDue(now); });
}

void DesktopState::repaintOnly()
{
    lookClosed(QEventLoop::ExcludeUserInputEvents);
}

// A window's close comes with the input, so that all of it is taken in, though nothing is done by it yet.
bool DesktopState::mayWait(std::chrono::milliseconds waited)
{
    if (waited >= LongestSilence)
        lookClosed(QEventLoop::AllEvents);
    return !closeAsked;
}

bool DesktopState::keepsInput(QObject& receiver, QEvent& event)
{
    if (!closedToEvents && (keptInput.empty() || replaying))
        return false;
    event.accept();
    if (event.type() == QEvent::ShortcutOverride)
        return true; // asks only, before the key itself
    if (keptInput.empty())
        postponed.emplace_back([this] { replayInput(); });
    keptInput.emplace_back(&receiver, event.clone());
    return true;
}

void DesktopState::replayInput()
{
    if (closedToEvents) {
        postponed.emplace_back([this] { replayInput(); });
        return;
    }
    while (!keptInput.empty()) {
        const auto [receiver, event] = std::move(keptInput.front());
        keptInput.pop_front();
        replaying = true;
        if (receiver)
            QCoreApplication::sendEvent(receiver, event.get());
        replaying = false;
    }
}

void DesktopState::lookClosed(QEventLoop::ProcessEventsFlags flags)
{
    flushDirty();
    flushLate();
    closedToEvents = true;
    QCoreApplication::processEvents(flags);
    closedToEvents = false;
    paintNow(); // what came meanwhile, such as a frame of a film
    for (std::function<void()>& action : std::exchange(postponed, {}))
        QMetaObject::invokeMethod(turn.get(), std::move(action), Qt::QueuedConnection);
}

void DesktopState::wait(int milliseconds)
{
    waitUntil([this] { return pace == Pace::Immediate; }, milliseconds);
}

bool DesktopState::waitUntil(const std::function<bool()>& condition, int milliseconds)
{
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (true) {
        repaintOnly();
        if (condition())
            return true;
        const Clock::time_point now = Clock::now();
        if (now >= end)
            return false;
        std::this_thread::sleep_for(std::min<Clock::duration>(end - now, WaitStep));
    }
}

// The outermost handler has returned: nothing runs on a form that was unloaded meanwhile.
void DesktopState::discard(QObject* object)
{
    if (frames > 0)
        discarded.emplace_back(object);
    else
        object->deleteLater();
}

void DesktopState::endOfFrames()
{
    if (!graveyard.empty()) {
        const std::vector<Grave> gone = std::exchange(graveyard, {});
    }
    for (const QPointer<QObject>& object : std::exchange(discarded, {})) {
        if (object)
            object->deleteLater();
    }
    if (running && loaded.empty())
        QCoreApplication::exit();
}

NestedLoop::NestedLoop(Desktop& desktop)
    : m_state(desktop.state())
    , m_frame(m_state)
{
    m_state.flushDirty();
    m_state.flushLate();
    m_state.endCapture();
}

void NestedLoop::finish()
{
    m_state.throwIfEnded();
}

} // namespace trovarium
