// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/Prefetch.h"

#include "platform/files/Paths.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <system_error>
#include <utility>

namespace trovarium {

namespace {

constexpr std::size_t FewestSmallFiles = 64;
constexpr std::size_t LargeFilesAhead = 4;
constexpr std::size_t Threads = 16;   // more than cores: on a cold disk they wait most of the time
constexpr off_t SmallBytes = 1 << 14; // of each small file
constexpr ssize_t PageBytes = 1 << 12;
constexpr off_t AllBytes = 0; // as posix_fadvise has it
constexpr std::size_t Samples = 16;
constexpr std::size_t FilesInABlock = 32;
constexpr std::size_t BlocksAhead = 2 * Threads;

// A path without a native form stays empty and is skipped.
std::vector<std::string> nativePaths(const std::vector<std::string>& paths)
{
    std::vector<std::string> natives(paths.size());
    for (std::size_t index = 0; index < paths.size(); ++index)
        attempt([&] { natives[index] = nativeAsWritten(paths[index]); });
    return natives;
}

// What can't be opened fails when the program comes to it.
Descriptor opened(int folder, const std::string& path)
{
    return Descriptor(openat(folder, path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
}

// How often this thread has given up the processor, as it does while it waits for a disk.
long waits()
{
    rusage usage = {};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

// Nothing for a file that is no shorter than a page of memory, and for one that can't be read. Within a page a read
// either fails or comes to the end of the file, so its length isn't asked for.
std::optional<std::string> readSmallFile(int folder, const std::string& path)
{
    std::array<char, PageBytes> bytes{};
    const ssize_t count = pread(opened(folder, path).handle(), bytes.data(), bytes.size(), 0);
    if (count < 0 || count == PageBytes)
        return std::nullopt;
    return std::string(bytes.data(), static_cast<std::size_t>(count));
}

// Whether some of the files, all over the list, are there without a wait for the disk: then threads would only cost
// processor time.
template <class Look>
bool areCached(std::size_t count, const Look& look)
{
    const long before = waits();
    for (std::size_t sample = 0; sample < Samples; ++sample) {
        look(sample * count / Samples);
        if (waits() != before)
            return false;
    }
    return true;
}

template <class Run>
void startThreads(std::vector<std::jthread>& threads, std::size_t count, const Run& run)
try {
    while (threads.size() < count)
        threads.emplace_back(run);
} catch (const std::system_error&) {
    // The system grants no more threads; those that run do the work.
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
    const auto readBoth = [this](std::size_t index) {
        readSmallFile(AT_FDCWD, m_paths[index]);
        look(index);
    };
    if (kind == SmallFiles && areCached(m_paths.size(), readBoth))
        return;
    startThreads(m_threads, kind == LargeFiles ? LargeFilesAhead : Threads, [this] { run(); });
}

PrefetchScope::~PrefetchScope()
{
    m_next = m_paths.size();
    m_mayRead.release(Threads);
}

void PrefetchScope::advance()
{
    m_mayRead.release();
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
        static_cast<void>(posix_fadvise(opened(AT_FDCWD, m_paths[index]).handle(), 0, length, POSIX_FADV_WILLNEED));
        look(index);
    }
}

ReadAhead::ReadAhead(std::string_view folder, std::vector<std::string> names)
    : m_names(std::move(names))
    , m_blocks((m_names.size() + FilesInABlock - 1) / FilesInABlock)
    , m_mayRead(BlocksAhead)
{
    if (m_names.size() < FewestSmallFiles)
        return;
    attempt([&] { m_folder = Descriptor(::open(nativeAsWritten(folder).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)); });
    if (!m_folder.isOpen())
        return;
    const bool isFast =
        areCached(m_names.size(), [this](std::size_t index) { readSmallFile(m_folder.handle(), m_names[index]); });
    startThreads(m_threads, isFast ? 2 : Threads, [this] { run(); });
}

ReadAhead::~ReadAhead()
{
    m_next = m_blocks.size();
    m_mayRead.release(Threads);
}

std::optional<std::string> ReadAhead::take(std::size_t index)
{
    Block& block = m_blocks[index / FilesInABlock];
    if (index % FilesInABlock == 0) {
        m_mayRead.release();
        State expected = State::Untouched;
        if (!block.state.compare_exchange_strong(expected, State::Left))
            block.state.wait(State::Reading);
    }
    if (block.state != State::Read)
        return std::nullopt;
    return std::exchange(block.contents[index % FilesInABlock], std::nullopt);
}

void ReadAhead::run()
{
    for (;;) {
        m_mayRead.acquire();
        const std::size_t number = m_next.fetch_add(1);
        if (number >= m_blocks.size())
            return;
        Block& block = m_blocks[number];
        State expected = State::Untouched;
        if (!block.state.compare_exchange_strong(expected, State::Reading))
            continue; // the program was there first
        const std::size_t first = number * FilesInABlock;
        const std::size_t end = std::min(first + FilesInABlock, m_names.size());
        for (std::size_t index = first; index < end; ++index)
            block.contents.push_back(readSmallFile(m_folder.handle(), m_names[index]));
        block.state = State::Read;
        block.state.notify_one();
    }
}

} // namespace trovarium
