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

    AtLeast<int, 0> Interval;
    Stored<bool> Enabled;

    trovarium::Event<> Tick{this}; // the event called Timer: handlers are tmrX_Timer

    // The form was loaded or is being unloaded: it ticks only in between.
    void formLoaded();
    void formUnloaded();

protected:
    void changed(Change change) override;

private:
    trovarium::Form* m_form;
    std::unique_ptr<TimerView> m_view;
};

} // namespace trovarium
