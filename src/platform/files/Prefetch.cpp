// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/Prefetch.h"

#include "platform/files/Descriptor.h"
#include "platform/files/Paths.h"
#include "runtime/Failure.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <system_error>

namespace trovarium {

namespace {

constexpr std::size_t FewestSmallFiles = 64;
constexpr std::size_t LargeFilesAhead = 4;
constexpr std::size_t Threads = 16;   // more than cores: on a cold disk they wait most of the time
constexpr off_t SmallBytes = 1 << 14; // of each small file
constexpr off_t AllBytes = 0;         // as posix_fadvise has it
constexpr std::size_t Samples = 16;

// A path without a native form stays empty and is skipped.
std::vector<std::string> nativePaths(const std::vector<std::string>& paths)
{
    std::vector<std::string> natives(paths.size());
    for (std::size_t index = 0; index < paths.size(); ++index)
        attempt([&] { natives[index] = nativeAsWritten(paths[index]); });
    return natives;
}

// What can't be opened fails when the program comes to it.
Descriptor opened(const std::string& path)
{
    return Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
}

// How often this thread has given up the processor, as it does while it waits for a disk.
long waits()
{
    rusage usage = {};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

} // namespace

PrefetchScope::PrefetchScope(
    const std::vector<std::string>& paths, Kind kind, const std::vector<std::string>& statPaths)
    : m_kind(kind)
    , m_mayRead(LargeFilesAhead)
{
    if (paths.size() < (kind == LargeFiles ? LargeFilesAhead : FewestSmallFiles))
        return;
    m_paths = nativePaths(paths);
    m_statPaths = nativePaths(statPaths);
    if (kind == SmallFiles && areCached())
        return;
    try {
        while (m_threads.size() < Threads)
            m_threads.emplace_back([this] { run(); });
    } catch (const std::system_error&) {
        // The system grants no more threads; those that run do the work.
    }
}

PrefetchScope::~PrefetchScope()
{
    m_next = m_paths.size();
    m_mayRead.release(Threads);
    for (std::thread& thread : m_threads)
        thread.join();
}

void PrefetchScope::advance()
{
    m_mayRead.release();
}

// Whether some of the files, all over the list, are there without a wait for the disk: then threads would only cost
// processor time.
bool PrefetchScope::areCached() const
{
    const long before = waits();
    for (std::size_t sample = 0; sample < Samples; ++sample) {
        const std::size_t index = sample * m_paths.size() / Samples;
        char first = 0;
        static_cast<void>(pread(opened(m_paths[index]).handle(), &first, sizeof first, 0));
        look(index);
        if (waits() != before)
            return false;
    }
    return true;
}

void PrefetchScope::look(std::size_t index) const
{
    struct stat unused = {};
    if (index < m_statPaths.size())
        static_cast<void>(stat(m_statPaths[index].c_str(), &unused));
}

void PrefetchScope::run()
{
    for (;;) {
        if (m_kind == LargeFiles)
            m_mayRead.acquire();
        const std::size_t index = m_next.fetch_add(1);
        if (index >= m_paths.size())
            return;
        const off_t length = m_kind == LargeFiles ? AllBytes : SmallBytes;
        static_cast<void>(posix_fadvise(opened(m_paths[index]).handle(), 0, length, POSIX_FADV_WILLNEED));
        look(index);
    }
}

} // namespace trovarium
