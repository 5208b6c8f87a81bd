#pragma once

#include "platform/qt/toolkit/DesktopState.h"

#include <QTimer>

#include <memory>

namespace trovarium {

class Timer;

// The clock of a timer; it exists while the timer's form is loaded.
class TimerView {
public:
    explicit TimerView(Timer& timer);
    ~TimerView();
    TimerView(const TimerView&) = delete;
    TimerView& operator=(const TimerView&) = delete;

    // Starts a whole interval anew, or stops.
    void restart();

    bool isDue(DesktopState::Clock::time_point now) const { return !m_ticking && now >= m_due; }

private:
    void startUntil(DesktopState::Clock::time_point due);
    void startNext();
    void timeout();

    Timer& m_timer;
    DesktopState& m_state;
    QTimer* m_clock;
    DesktopState::Clock::time_point m_due = DesktopState::Clock::time_point::max();
    bool m_ticking = false;
    bool m_overdue = false; // fell due while its handler ran
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

} // namespace trovarium
