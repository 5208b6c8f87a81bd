// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <csignal>
#include <optional>
#include <stdlib.h>
#include <string>
#include <sys/resource.h>
#include <time.h>

namespace trovarium {

// A variable of the environment with another value, or none, for as long as this lives.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const std::optional<std::string>& value)
        : m_name(name)
    {
        if (const char* old = getenv(name))
            m_old = old;
        set(value);
    }
    ~ScopedEnv() { set(m_old); }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

private:
    void set(const std::optional<std::string>& value)
    {
        if (value)
            setenv(m_name, value->c_str(), 1);
        else
            unsetenv(m_name);
        tzset(); // it may be the time zone
    }

    const char* m_name;
    std::optional<std::string> m_old;
};

// The disk takes no file beyond `bytes`, so that real writes fail.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_before = {};
    sighandler_t m_handler;
};

} // namespace trovarium
