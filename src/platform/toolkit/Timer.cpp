// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/Timer.h"

#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/Form.h"

#include <QTimer>

#include <algorithm>
#include <utility>

namespace trovarium {

namespace {

using namespace std::chrono_literals;

// How soon a tick comes that fell due while events were suspended.
constexpr int RetryMilliseconds = 5;

} // namespace

Timer::Timer(trovarium::Form* form, const TimerPlan& plan)
    : Component(plan.Name)
    , Interval(this, plan.Interval)
    , Enabled(this, plan.Enabled)
    , m_form(form)
    , m_clock(std::make_unique<QTimer>())
{
    m_clock->setSingleShot(true);
    m_clock->setTimerType(Qt::PreciseTimer);
    m_clock->callOnTimeout([this] { timeout(); });
    form->addTimer(this);
    desktop().state().timers.push_back(this);
    restart();
}

Timer::~Timer()
{
    std::erase(desktop().state().timers, this);
    m_form->removeTimer(this);
}

void Timer::restart()
{
    m_overdue = false;
    if (m_form->isLoaded() && Enabled() && Interval() > 0) {
        startUntil(Clock::now() + std::chrono::milliseconds(Interval()));
    } else {
        m_clock->stop();
        m_due = Clock::time_point::max();
    }
}

void Timer::startUntil(Clock::time_point due)
{
    m_due = due;
    m_clock->start(std::max(0ms, std::chrono::ceil<std::chrono::milliseconds>(due - Clock::now())));
}

void Timer::timeout()
{
    if (desktop().state().eventsSuspended) {
        m_clock->start(RetryMilliseconds);
        return;
    }
    if (m_ticking) {
        m_overdue = true;
        return;
    }
    // An interval after the last tick was due, so that delays don't add up, and not in haste after one that came late.
    const Clock::duration interval = std::chrono::milliseconds(Interval());
    startUntil(std::max(m_due + interval, Clock::now() + interval / 2));
    m_ticking = true;
    deliverEvent(*this, [this] { Tick.raise(); });
    m_ticking = false;
    if (std::exchange(m_overdue, false))
        m_clock->start(0);
}

} // namespace trovarium
