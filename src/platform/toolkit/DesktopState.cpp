// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/DesktopState.h"

#include "platform/toolkit/Application.h"
#include "platform/toolkit/DesktopPrompts.h"
#include "platform/toolkit/DrawnWidget.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/FormWindow.h"
#include "platform/toolkit/Timer.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>

#include <algorithm>
#include <exception>
#include <iostream>
#include <string>
#include <string_view>
#include <utility>

namespace trovarium {

namespace {

using namespace std::chrono_literals;

// How long a wait for a picture leaves a window's close box dead.
constexpr auto LongestSilence = 500ms;

void report(Component& sender, std::string_view description)
{
    const Form& form = sender.form();
    const std::string name = &sender == &form ? form.Name() : form.Name() + "." + sender.Name();
    std::cerr << name + ": " + std::string(description) + "\n" << std::flush;
}

} // namespace

DesktopState::HandlerScope::HandlerScope(DesktopState& state, bool fromEvent)
    : m_state(state)
    , m_fromEvent(fromEvent)
{
    ++m_state.scopes;
}

DesktopState::HandlerScope::~HandlerScope()
{
    if (--m_state.scopes > 0)
        return;
    if (m_state.running && m_state.loaded.empty())
        QCoreApplication::exit();
    if (m_state.unloadedForms.empty())
        return;
    if (m_fromEvent)
        m_state.invokeLater([&state = m_state] { state.destroyUnloadedForms(); });
    else
        m_state.destroyUnloadedForms();
}

DesktopState::DesktopState(
    Desktop& owner, int& argc, char** argv, FileService& fileService, Pace chosenPace, std::string_view scale)
    : desktop(owner)
    , files(fileService)
    , pace(chosenPace)
    , application(makeApplication(argc, argv, scale))
    , queue(std::make_unique<QObject>())
    , eventFilter(std::make_unique<EventFilter>(*this))
    , pictures(fileService, [this](auto waited) { return mayWait(waited); })
    , realMedia(fileService, [this](const auto& met, int milliseconds) { return desktop.waitUntil(met, milliseconds); })
    , screen(*this)
    , realPrompts(std::make_unique<DesktopPrompts>(owner))
    , prompts(realPrompts.get())
{
    pictures.later = [this](auto action) { invokeLater(std::move(action)); };
    application->installEventFilter(eventFilter.get());
    installAccessibility();
}

DesktopState::~DesktopState()
{
    unloadedForms.clear();
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

bool DesktopState::isInUse(const Form& form) const
{
    if (ended())
        return false;
    const auto modal =
        std::find_if(modals.rbegin(), modals.rend(), [](const ModalShow& show) { return show.form->isShown(); });
    return modal == modals.rend() || modal->form == &form;
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

Form* DesktopState::formOf(const QWidget& widget) const
{
    const QWidget* window = widget.window();
    const auto found =
        std::find_if(loaded.begin(), loaded.end(), [window](Form* form) { return &form->window() == window; });
    return found == loaded.end() ? nullptr : *found;
}

// A window manager does so by itself; without one the keys would go nowhere.
void DesktopState::activateNextWindow()
{
    if (const Form* next = activeForm())
        next->window().activateWindow();
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
    invokeLater([this] { deliverActivates(); });
}

void DesktopState::deliverActivates()
{
    while (!activates.empty()) {
        Form* form = activates.front();
        activates.erase(activates.begin());
        if (std::find(activating.begin(), activating.end(), form) != activating.end())
            continue;
        activating.push_back(form);
        deliverEvent(*form, [form] { form->Activate.raise(); });
        std::erase(activating, form);
    }
}

void DesktopState::invokeLater(std::function<void()> action)
{
    QMetaObject::invokeMethod(
        queue.get(),
        [this, action = std::move(action)] {
            if (eventsSuspended)
                postponed.push_back(action);
            else
                action();
        },
        Qt::QueuedConnection);
}

void DesktopState::paintNow()
{
    repaintsWait = false;
    releaseRepaints();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
}

void DesktopState::releaseMouse()
{
    releasing = nullptr;
    if (mouseGrabber != nullptr)
        std::exchange(mouseGrabber, nullptr)->letGo();
}

bool DesktopState::keepsRepaint(QObject& window)
{
    if (!repaintsWait)
        return false;
    // Whatever loop runs next, the windows don't wait longer.
    if (keptRepaints.empty())
        QTimer::singleShot(RepaintInterval, queue.get(), [this] { releaseRepaints(); });
    if (std::find(keptRepaints.begin(), keptRepaints.end(), &window) == keptRepaints.end())
        keptRepaints.emplace_back(&window);
    return true;
}

void DesktopState::releaseRepaints()
{
    for (const QPointer<QObject>& window : std::exchange(keptRepaints, {})) {
        if (window)
            QCoreApplication::postEvent(window, new QEvent(QEvent::UpdateRequest), Qt::LowEventPriority);
    }
}

// A window's close comes with the input, so that all of it is taken in, though nothing is done by it yet.
bool DesktopState::mayWait(std::chrono::milliseconds waited)
{
    if (waited >= LongestSilence)
        processSuspended(QEventLoop::AllEvents);
    return !closeAsked;
}

bool DesktopState::keepsInput(QObject& receiver, QEvent& event)
{
    if (!eventsSuspended && (keptInput.empty() || replaying))
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
    while (!keptInput.empty()) {
        const auto [receiver, event] = std::move(keptInput.front());
        keptInput.pop_front();
        replaying = true;
        if (receiver)
            QCoreApplication::sendEvent(receiver, event.get());
        replaying = false;
    }
}

void DesktopState::processSuspended(QEventLoop::ProcessEventsFlags flags)
{
    eventsSuspended = true;
    QCoreApplication::processEvents(flags);
    eventsSuspended = false;
    paintNow(); // what came meanwhile, such as a frame of a film
    for (std::function<void()>& action : std::exchange(postponed, {}))
        invokeLater(std::move(action));
}

// While a scope is open nothing is destroyed: the outermost one calls this again when it ends.
void DesktopState::destroyUnloadedForms()
{
    if (scopes == 0)
        const std::vector<UnloadedForm> gone = std::exchange(unloadedForms, {});
}

void invokeHandler(Component& sender, const std::function<void()>& handler)
{
    const DesktopState::HandlerScope scope(sender.desktop().state());
    try {
        handler();
    } catch (const Failure& failure) {
        report(sender, failure.description());
    } catch (const std::exception& error) {
        report(sender, error.what());
    }
}

void deliverEvent(Component& sender, const std::function<void()>& action)
{
    DesktopState& state = sender.desktop().state();
    if (state.ended() || state.eventsSuspended || !sender.form().isLoaded())
        return;
    const DesktopState::HandlerScope scope(state, true);
    try {
        invokeHandler(sender, action);
    } catch (const ProgramEnd& end) {
        state.noteEnd(end);
    }
}

NestedLoop::NestedLoop(Desktop& desktop)
    : m_state(desktop.state())
    , m_scope(m_state)
{
    m_state.releaseMouse();
}

void NestedLoop::finish()
{
    m_state.throwIfEnded();
}

} // namespace trovarium
