// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Control.h"

#include <chrono>
#include <memory>
#include <string_view>

class QTimer;

namespace trovarium {

struct TimerPlan {
    std::string_view Name{};
    int Interval = 0; // milliseconds; 0 never ticks
    bool Enabled = false;
};

// Ticks through the event loop while its form is loaded. Setting Enabled true when it is true changes nothing; ticks
// that fall due during a long handler come as one.
class Timer : public Component {
public:
    Timer(trovarium::Form* form, const TimerPlan& plan);
    ~Timer() override;

    trovarium::Form& form() override { return *m_form; }

    void restart(); // begins a new interval, or stops; the form calls it when it is loaded or unloaded

    AtLeast<&Timer::restart, int, 0> Interval;
    Stored<&Timer::restart, bool> Enabled;

    trovarium::Event<> Tick{this}; // the event called Timer: handlers are tmrX_Timer

    using Clock = std::chrono::steady_clock;
    bool isDue(Clock::time_point now) const { return !m_ticking && now >= m_due; }

private:
    void startUntil(Clock::time_point due);
    void timeout();

    trovarium::Form* m_form;
    std::unique_ptr<QTimer> m_clock;
    Clock::time_point m_due = Clock::time_point::max();
    bool m_ticking = false;
    bool m_overdue = false; // fell due while its handler ran
};

} // namespace trovarium
