// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/Desktop.h"

#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/FormWindow.h"
#include "platform/toolkit/QtValues.h"
#include "platform/toolkit/SessionEnd.h"
#include "platform/toolkit/Timer.h"
#include "runtime/Failure.h"

#include <QApplication>
#include <QDialog>
#include <QScreen>

#include <algorithm>
#include <chrono>
#include <exception>
#include <iostream>
#include <string>
#include <thread>
#include <utility>

namespace trovarium {

namespace {

using namespace std::chrono_literals;

// How long DoEvents may go without asking the window system.
constexpr auto LookInterval = 1ms;
// How long a frame of a film, or what else changed, may go unpainted during a wait.
constexpr auto WaitStep = 5ms;

bool timerIsDue(const DesktopState& state, DesktopState::Clock::time_point now)
{
    return std::any_of(
        state.timers.begin(), state.timers.end(), [now](const Timer* timer) { return timer->isDue(now); });
}

} // namespace

Desktop::Desktop(int& argc, char** argv, FileService& files, Pace pace, std::string_view scale)
    : m_state(std::make_unique<DesktopState>(*this, argc, argv, files, pace, scale))
{
}

Desktop::~Desktop() = default;

FileService& Desktop::files()
{
    return m_state->files;
}

PictureService& Desktop::pictures()
{
    return m_state->pictures;
}

MediaService& Desktop::media()
{
    return *m_state->media;
}

void Desktop::setMedia(MediaService* media)
{
    m_state->media = media != nullptr ? media : &m_state->realMedia;
}

trovarium::Screen& Desktop::Screen()
{
    return m_state->screen;
}

// The caller is about to open a message box, so a mouse press in progress ends here.
Prompts& Desktop::prompts()
{
    m_state->releaseMouse();
    for (Form* form : m_state->shown) { // whoever answers needs the pointer
        if (form->MousePointer() == HiddenPointer)
            form->MousePointer = DefaultPointer;
    }
    return *m_state->prompts;
}

bool Desktop::isAsking() const
{
    return qobject_cast<QDialog*>(QApplication::activeModalWidget()) != nullptr;
}

void Desktop::setPrompts(Prompts* prompts)
{
    m_state->prompts = prompts != nullptr ? prompts : m_state->realPrompts.get();
}

int Desktop::run()
{
    try {
        m_state->throwIfEnded();
        if (m_state->loaded.empty())
            return 0;
        // The callers of this loop don't use any form, so their scopes don't keep unloaded forms alive.
        const int below = std::exchange(m_state->scopes, 0);
        const SessionEnd sessionEnd(*m_state);
        m_state->running = true;
        QApplication::exec();
        m_state->running = false;
        m_state->scopes = below;
        m_state->throwIfEnded();
        return 0;
    } catch (const ProgramEnd& end) {
        return end.exitCode();
    }
}

int Desktop::guarded(const std::function<void()>& body)
{
    const DesktopState::HandlerScope scope(*m_state);
    try {
        body();
        return 0;
    } catch (const ProgramEnd& end) {
        m_state->noteEnd(end);
        return end.exitCode();
    } catch (const Failure& failure) {
        std::cerr << std::string(failure.description()) + "\n" << std::flush;
    } catch (const std::exception& error) {
        std::cerr << std::string(error.what()) + "\n" << std::flush;
    }
    return 1;
}

// In a run of calls the window system is asked once a millisecond; what is posted inside the program, and
// a timer that is due, never wait for that.
void Desktop::DoEvents()
{
    DesktopState& state = *m_state;
    state.throwIfEnded();
    const DesktopState::HandlerScope scope(state);
    const DesktopState::Clock::time_point now = DesktopState::Clock::now();
    state.repaintsWait = state.pace == Pace::Paced && !state.moved && now < state.nextRepaint;
    if (!state.repaintsWait && !state.moved)
        state.nextRepaint = now + DesktopState::RepaintInterval;
    if (!state.repaintsWait)
        state.releaseRepaints();
    if (now - state.lastLook >= LookInterval || state.moved || timerIsDue(state, now)) {
        state.lastLook = now;
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest); // what those events changed
    } else {
        QCoreApplication::sendPostedEvents();
    }
    state.repaintsWait = false;
    state.throwIfEnded();
    if (!std::exchange(state.moved, false) || state.pace == Pace::Immediate)
        return;
    constexpr auto Interval = DesktopState::RepaintInterval;
    state.nextRepaint = std::max(state.nextRepaint, DesktopState::Clock::now() - Interval) + Interval;
    std::this_thread::sleep_until(state.nextRepaint);
}

void Desktop::repaintOnly()
{
    m_state->processSuspended(QEventLoop::ExcludeUserInputEvents);
}

void Desktop::wait(int milliseconds)
{
    waitUntil([this] { return m_state->pace == Pace::Immediate; }, milliseconds);
}

bool Desktop::waitUntil(const std::function<bool()>& condition, int milliseconds)
{
    const DesktopState::Clock::time_point end = DesktopState::Clock::now() + std::chrono::milliseconds(milliseconds);
    while (true) {
        repaintOnly();
        if (condition())
            return true;
        const DesktopState::Clock::time_point now = DesktopState::Clock::now();
        if (now >= end)
            return false;
        std::this_thread::sleep_for(std::min<DesktopState::Clock::duration>(end - now, WaitStep));
    }
}

void Desktop::endProgram(int exitCode)
{
    throw ProgramEnd(exitCode);
}

int Desktop::formsCount() const
{
    return static_cast<int>(m_state->loaded.size());
}

Form& Desktop::formsItem(int index) const
{
    if (index < 0 || index >= formsCount())
        throw Failure(FailureKind::SubscriptOutOfRange);
    return *m_state->loaded[static_cast<std::size_t>(index)];
}

Form* Desktop::activeForm() const
{
    return m_state->activeForm();
}

void Desktop::returnToText()
{
    if (QWidget* text = m_state->lastText; text != nullptr && text->isVisible() && text->isEnabled())
        text->setFocus(Qt::OtherFocusReason);
}

float Screen::Width() const
{
    return static_cast<float>(screenInUse(m_state).size().width()) * TwipsPerPixel;
}

float Screen::Height() const
{
    return static_cast<float>(screenInUse(m_state).size().height()) * TwipsPerPixel;
}

void Screen::showPointer()
{
    QGuiApplication::restoreOverrideCursor(); // the one before, if any
    const Form* active = m_state.activeForm();
    const bool isHidden = active != nullptr && active->MousePointer() == HiddenPointer;
    if (MousePointer() != DefaultPointer && !isHidden)
        QGuiApplication::setOverrideCursor(cursorOf(MousePointer(), qGuiApp->devicePixelRatio()));
}

} // namespace trovarium
