#pragma once

namespace trovarium {

// Sets a flag while it lives, so that what runs doesn't begin once more in its own events.
class Lock {
public:
    explicit Lock(bool& locked)
        : m_locked(locked)
    {
        m_locked = true;
    }
    ~Lock() { m_locked = false; }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    bool& m_locked;
};

} // namespace trovarium
