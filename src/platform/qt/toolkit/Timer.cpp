#include "platform/toolkit/Timer.h"

#include "platform/qt/toolkit/TimerView.h"
#include "platform/toolkit/Form.h"

#include <algorithm>

namespace trovarium {

namespace {

using namespace std::chrono_literals;

// How soon a tick comes that fell due while events were closed out.
constexpr int RetryMilliseconds = 5;

} // namespace

TimerView::TimerView(Timer& timer)
    : m_timer(timer)
    , m_state(timer.desktop().state())
    , m_clock(new QTimer) // deleted when the event loop has it back: it may go inside its own tick
{
    m_clock->setSingleShot(true);
    m_clock->setTimerType(Qt::PreciseTimer);
    QObject::connect(m_clock, &QTimer::timeout, m_clock, [this] { timeout(); });
    m_state.timers.push_back(this);
    restart();
}

TimerView::~TimerView()
{
    *m_alive = false;
    std::erase(m_state.timers, this);
    m_clock->stop();
    m_clock->disconnect();
    m_state.discard(m_clock);
}

void TimerView::restart()
{
    m_overdue = false;
    if (m_timer.Enabled() && m_timer.Interval() > 0) {
        startUntil(DesktopState::Clock::now() + std::chrono::milliseconds(m_timer.Interval()));
    } else {
        m_clock->stop();
        m_due = DesktopState::Clock::time_point::max();
    }
}

void TimerView::startUntil(DesktopState::Clock::time_point due)
{
    m_due = due;
    m_clock->start(std::max(0ms, std::chrono::ceil<std::chrono::milliseconds>(due - DesktopState::Clock::now())));
}

// An interval after the last tick was due, so that delays don't add up, and not in haste after one that came late.
void TimerView::startNext()
{
    const DesktopState::Clock::duration interval = std::chrono::milliseconds(m_timer.Interval());
    startUntil(std::max(m_due + interval, DesktopState::Clock::now() + interval / 2));
}

void TimerView::timeout()
{
    if (m_state.closedToEvents) {
        m_clock->start(RetryMilliseconds);
        return;
    }
    if (m_ticking) {
        m_overdue = true;
        return;
    }
    startNext();
    m_ticking = true;
    const std::shared_ptr<bool> alive = m_alive;
    fromDesktop(m_timer, [this] { m_timer.Tick.raise(); });
    if (!*alive)
        return;
    m_ticking = false;
    if (m_overdue) {
        m_overdue = false;
        m_clock->start(0);
    }
}

Timer::Timer(trovarium::Form* form, const TimerPlan& plan)
    : Component(plan.Name)
    , Interval(this, Change::Content, plan.Interval)
    , Enabled(this, Change::Enabled, plan.Enabled)
    , m_form(form)
{
    form->addTimer(this);
}

Timer::~Timer()
{
    m_form->removeTimer(this);
}

void Timer::changed(Change)
{
    if (m_view)
        m_view->restart();
}

void Timer::formLoaded()
{
    m_view = std::make_unique<TimerView>(*this);
}

void Timer::formUnloaded()
{
    m_view.reset();
}

} // namespace trovarium
