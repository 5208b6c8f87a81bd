// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/Descriptor.h"

#include <atomic>
#include <cstddef>
#include <optional>
#include <semaphore>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace trovarium {

// Brings files into the system's cache on threads of its own, while the program goes through them in this order.
// Only time is saved: files are opened, read and copied as ever, and a file that can't be read fails there. Paths are
// the program's.
class PrefetchScope {
public:
    // Of small files the first 16 KB are read. Of large ones only a few are read before the program is at them, see
    // `advance`.
    enum Kind { SmallFiles, LargeFiles };
    // If there are `statPaths`, the status of each is read together with the path at the same place. Few files, and
    // small ones that are in the cache already, aren't worth the threads.
    explicit PrefetchScope(
        const std::vector<std::string>& paths, Kind kind = SmallFiles, const std::vector<std::string>& statPaths = {});
    ~PrefetchScope();
    PrefetchScope(const PrefetchScope&) = delete;
    PrefetchScope& operator=(const PrefetchScope&) = delete;

    void advance(); // to the next of the large files

private:
    void look(std::size_t index) const;
    void run();

    Kind m_kind;
    std::vector<std::string> m_paths; // native
    std::vector<std::string> m_statPaths;
    std::atomic<std::size_t> m_next = 0;
    std::counting_semaphore<> m_mayRead; // counts the large files that may be read now
    std::vector<std::jthread> m_threads; // last: they end before what they use
};

// Reads small files of a folder on threads of its own, some hundred before the program opens them in this order. What
// is long, can't be read or isn't a plain file is left to the program.
class ReadAhead {
public:
    ReadAhead(std::string_view folder, std::vector<std::string> names);
    ~ReadAhead();
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

    // The content of the file at this index, asked for in ascending order; nothing if the program is to read it.
    std::optional<std::string> take(std::size_t index);

private:
    enum class State { Untouched, Reading, Read, Left };
    struct Block {
        std::atomic<State> state = State::Untouched;
        std::vector<std::optional<std::string>> contents;
    };

    void run();

    Descriptor m_folder;
    std::vector<std::string> m_names;
    std::vector<Block> m_blocks;
    std::atomic<std::size_t> m_next = 0; // block
    std::counting_semaphore<> m_mayRead;
    std::vector<std::jthread> m_threads; // last: they end before what they use
};

} // namespace trovarium
