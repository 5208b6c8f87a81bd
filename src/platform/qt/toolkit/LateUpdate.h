#pragma once

#include <functional>

namespace trovarium {

struct DesktopState;

// Brings a widget up to date once for many changes: in the next free slot, before the user acts on it, and
// before a statement paints. A scan that fills a list with thousands of names must not lay it out each time.
class LateUpdate {
public:
    LateUpdate(DesktopState& state, std::function<void()> update);
    ~LateUpdate();
    LateUpdate(const LateUpdate&) = delete;
    LateUpdate& operator=(const LateUpdate&) = delete;

    void schedule();
    bool isDue() const { return m_due; }
    void flush();  // now, if one is due
    void cancel(); // what is due

private:
    DesktopState& m_state;
    std::function<void()> m_update;
    bool m_due = false;
};

} // namespace trovarium
