#include "platform/files/ReadAhead.h"

#include "platform/files/Descriptor.h"

#include <algorithm>
#include <atomic>
#include <fcntl.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace trovarium {

namespace {

constexpr std::size_t WorthIt = 64;    // files
constexpr std::size_t Window = 512;    // files that are ahead at most
constexpr std::size_t Step = 64;       // files after which the threads are told how far it is
constexpr std::size_t CopyWindow = 4;  // of those that are copied, since they may be large
constexpr std::size_t Near = 4;        // files that may be passed over
constexpr std::size_t Threads = 16;    // more than cores: on a cold disk they wait most of the time
constexpr off_t LargestFile = 1 << 14; // bytes

bool readWhole(ReadAhead::File& file, const std::string& path)
{
    const Descriptor descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!descriptor.isOpen() || fstat(descriptor.handle(), &file.status) != 0 || !S_ISREG(file.status.st_mode)
        || file.status.st_size > LargestFile)
        return false;
    file.bytes.resize(static_cast<std::size_t>(file.status.st_size));
    return read(descriptor.handle(), file.bytes.data(), file.bytes.size()) == file.status.st_size;
}

// What can't be opened is told when its turn comes.
void bringIn(const std::string& path)
{
    const Descriptor descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (descriptor.isOpen())
        static_cast<void>(posix_fadvise(descriptor.handle(), 0, 0, POSIX_FADV_WILLNEED));
}

} // namespace

struct ReadAhead::Slot {
    enum State { Free, Taken, Done };

    std::atomic<int> state = Free;
    bool isWhole = false;
    File file;
};

struct ReadAhead::Run {
    Run(std::vector<std::string> expected, std::vector<std::string> lookedAt, bool copies)
        : paths(std::move(expected))
        , looks(std::move(lookedAt))
        , areCopied(copies)
        , window(copies ? CopyWindow : Window)
        , step(copies ? 1 : Step)
        , slots(std::make_unique<Slot[]>(paths.size()))
    {
        try {
            while (threads.size() < Threads)
                threads.emplace_back([this] { readOn(); });
        } catch (const std::system_error&) {
            // No more threads to be had: what none of them reaches is read in the usual way.
        }
    }
    ~Run()
    {
        moveTo(paths.size());
        position.notify_all();
        for (std::thread& thread : threads)
            thread.join();
    }

    void readOn()
    {
        for (;;) {
            const std::size_t index = next.fetch_add(1);
            if (index >= paths.size())
                return;
            for (std::size_t at = position; index >= at + window; at = position)
                position.wait(at);
            if (index < position || !isMine(slots[index]))
                continue;
            Slot& slot = slots[index];
            if (areCopied)
                bringIn(paths[index]);
            else
                slot.isWhole = readWhole(slot.file, paths[index]);
            slot.state = Slot::Done;
            slot.state.notify_one();
            struct stat unused { };
            if (index < looks.size()) // brought into the system's memory
                static_cast<void>(stat(looks[index].c_str(), &unused));
        }
    }

    static bool isMine(Slot& slot)
    {
        int state = Slot::Free;
        return slot.state.compare_exchange_strong(state, Slot::Taken);
    }

    // Nobody reads it ahead any more, and what has been read is given up.
    static void giveUp(Slot& slot)
    {
        if (isMine(slot))
            slot.state = Slot::Done;
        slot.state.wait(Slot::Taken);
        slot.isWhole = false;
        slot.file = {};
    }

    void moveTo(std::size_t index)
    {
        const std::size_t from = position;
        for (std::size_t passed = from; passed < std::min(index, from + window); ++passed)
            giveUp(slots[passed]);
        position = index;
        if (from / step != index / step)
            position.notify_all();
    }

    const std::vector<std::string> paths;
    const std::vector<std::string> looks;
    const bool areCopied;
    const std::size_t window;
    const std::size_t step;
    const std::unique_ptr<Slot[]> slots;
    std::atomic<std::size_t> next = 0;     // to be read ahead
    std::atomic<std::size_t> position = 0; // of whoever reads
    std::vector<std::thread> threads;
};

ReadAhead::ReadAhead() = default;

ReadAhead::~ReadAhead() = default;

void ReadAhead::expect(std::vector<std::string> paths, std::vector<std::string> looks)
{
    m_run.reset();
    if (paths.size() >= WorthIt)
        m_run = std::make_unique<Run>(std::move(paths), std::move(looks), false);
}

void ReadAhead::expectCopies(std::vector<std::string> paths)
{
    m_run.reset();
    if (paths.size() > CopyWindow)
        m_run = std::make_unique<Run>(std::move(paths), std::vector<std::string>(), true);
}

const struct stat* ReadAhead::status(std::string_view path)
{
    const Slot* slot = find(path);
    return slot != nullptr ? &slot->file.status : nullptr;
}

std::optional<ReadAhead::File> ReadAhead::take(std::string_view path)
{
    Slot* slot = find(path);
    if (slot == nullptr)
        return std::nullopt;
    std::optional<File> file = std::move(slot->file);
    m_run->moveTo(m_run->position + 1);
    return file;
}

// One that a thread is at is waited for, and one that no thread has reached is left to whoever reads.
ReadAhead::Slot* ReadAhead::find(std::string_view path)
{
    if (!m_run)
        return nullptr;
    const std::vector<std::string>& paths = m_run->paths;
    const std::size_t end = std::min(paths.size(), m_run->position + Near);
    for (std::size_t index = m_run->position; index < end; ++index) {
        if (paths[index] != path)
            continue;
        m_run->moveTo(index);
        Slot& slot = m_run->slots[index];
        if (Run::isMine(slot))
            slot.state = Slot::Done;
        slot.state.wait(Slot::Taken);
        return slot.isWhole ? &slot : nullptr;
    }
    return nullptr;
}

void ReadAhead::changed(std::string_view path)
{
    if (!m_run)
        return;
    const std::size_t end = std::min(m_run->paths.size(), m_run->position + m_run->window);
    for (std::size_t index = m_run->position; index < end; ++index) {
        if (m_run->paths[index] == path)
            Run::giveUp(m_run->slots[index]);
    }
}

} // namespace trovarium
