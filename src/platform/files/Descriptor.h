// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <unistd.h>
#include <utility>

namespace trovarium {

// A file descriptor, closed with the object; -1 for none.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int handle)
        : m_handle(handle)
    {
    }
    Descriptor(Descriptor&& other) noexcept
        : m_handle(std::exchange(other.m_handle, -1))
    {
    }
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~Descriptor()
    {
        if (m_handle >= 0)
            ::close(m_handle);
    }

    bool isOpen() const { return m_handle >= 0; }
    int handle() const { return m_handle; }

    // Closes now and gives 0, or -1 with errno: some file systems tell of a full disk only here.
    int close() { return ::close(std::exchange(m_handle, -1)); }

private:
    int m_handle = -1;
};

} // namespace trovarium
