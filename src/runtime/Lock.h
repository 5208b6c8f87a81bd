// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace trovarium {

// Sets a flag while it lives: the guard of an operation that runs events and must not be started again by them.
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
