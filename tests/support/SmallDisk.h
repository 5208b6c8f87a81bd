#pragma once

#include <csignal>
#include <sys/resource.h>

namespace trovarium {

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
