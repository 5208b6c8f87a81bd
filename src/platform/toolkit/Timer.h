#pragma once

#include "platform/toolkit/Component.h"
#include "platform/toolkit/Event.h"
#include "platform/toolkit/Property.h"

#include <memory>
#include <string_view>

namespace trovarium {

class TimerView;

struct TimerPlan {
    std::string_view Name{};
    int Interval = 0; // milliseconds; 0 never ticks
    bool Enabled = false;
};

// Ticks through the event loop. Setting Enabled true when it is true changes nothing; a tick that falls
// due during a long handler comes once.
class Timer : public Component {
public:
    Timer(trovarium::Form* form, const TimerPlan& plan);
    ~Timer() override;

    trovarium::Form& form() override { return *m_form; }

private:
    int interval() const { return m_interval; }
    void setInterval(int milliseconds);
    bool enabled() const { return m_enabled; }
    void setEnabled(bool value);

public:
    Property<&Timer::interval, &Timer::setInterval> Interval{this};
    Property<&Timer::enabled, &Timer::setEnabled> Enabled{this};

    trovarium::Event<> Tick{this}; // the event called Timer: handlers are tmrX_Timer

    // The form was loaded or is being unloaded: it ticks only in between.
    void formLoaded();
    void formUnloaded();

private:
    trovarium::Form* m_form;
    int m_interval;
    bool m_enabled;
    std::unique_ptr<TimerView> m_view;
};

} // namespace trovarium
