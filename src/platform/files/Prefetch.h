// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <semaphore>
#include <string>
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
    bool areCached() const;
    void look(std::size_t index) const;
    void run();

    Kind m_kind;
    std::vector<std::string> m_paths; // native
    std::vector<std::string> m_statPaths;
    std::atomic<std::size_t> m_next = 0;
    std::counting_semaphore<> m_mayRead; // counts the large files that may be read now
    std::vector<std::thread> m_threads;
};

} // namespace trovarium
