// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/FileTypes.h"
#include "platform/files/Paths.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unordered_map>

namespace trovarium {

bool isFolder(const std::string& native);

inline bool isRegular(const struct stat& status)
{
    return S_ISREG(status.st_mode);
}

inline bool isOneFile(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

// Finds the entry that a path means where none has its exact bytes: one that differs in case alone, or a name that is
// not UTF-8. All paths are native. Folders are listed for this, and the listings are cached: a change by another
// program drops a listing, our own changes are applied to it.
class PathResolver {
public:
    // A folder that exists, each part of its path as written or else without regard to case; "Path not found".
    std::string folder(const std::string& native);

    // The place that the exact name means, whether a file is there or not. Needs no listing when the name
    // is ASCII or there as written. "Path not found" when the folder is missing.
    NativePath exact(const std::string& native);

    // The file to read for a path that isn't there as written: the one entry that differs in case alone, or a name that
    // is not UTF-8. "File not found" for none.
    std::string readable(const std::string& native);

    // The entry of `folder` with this name, else the only one that differs in case alone.
    std::optional<std::string> readableName(const std::string& folder, std::string_view name);

    struct Edit {
        enum class What { Added, Removed };

        What what;
        const NativePath& place;
    };
    // Runs a change of our own and applies its edits to the cached listings. If `change` throws, nothing is applied.
    void applyChange(std::initializer_list<Edit> edits, const std::function<void()>& change);

    // After the rename of a folder, when every path below it is another.
    void forgetListings() { m_listings.clear(); }

private:
    using Clock = std::chrono::steady_clock;

    struct Listing {
        FileStamp stamp;
        bool inDoubt = false; // the folder may have changed again without a new stamp
        Clock::time_point readAt;
        Clock::duration cost = {};
        std::size_t lastUse = 0;
        std::unordered_multimap<std::string, std::string> entries; // native names, by the program's names in capitals

        void add(const std::string& leaf);
        void drop(const std::string& leaf);
    };

    std::optional<std::string> sameName(const std::string& folder, std::string_view name);
    Listing* current(const std::string& folder);
    Listing* unchanged(const std::string& folder);
    Listing* read(const std::string& folder);

    std::unordered_map<std::string, Listing> m_listings;
    std::size_t m_uses = 0;
};

} // namespace trovarium
