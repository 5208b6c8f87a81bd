#pragma once

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
#include <vector>

namespace trovarium {

// Listings of folders, kept to find names that are absent as written: the one entry that differs in case
// alone, and names that are no UTF-8. A folder is listed once for each change that someone else makes; our
// own changes are carried into the kept listing.
class FolderListings {
public:
    // The entry that a name of the program means where the disk has no UTF-8 name of that spelling.
    std::optional<std::string> sameName(const std::string& folder, std::string_view name);

    // As sameName, else the one entry that differs in case alone. None where several do.
    std::optional<std::string> readableName(const std::string& folder, std::string_view name);

    // What one of our own changes does to the entries of a folder.
    struct Edit {
        enum class What { Made, Gone };

        What what;
        const NativePath& place;
    };

    // Makes a change of our own and carries it into the listings that are kept. What `change` throws leaves
    // the folders to be listed again.
    void carry(std::initializer_list<Edit> edits, const std::function<void()>& change);

    // Forgets all listings: after the rename of a folder no path is what it was.
    void clear();

    // How many folders have been read so far.
    std::size_t foldersRead() const { return m_foldersRead; }

private:
    using WallTime = std::chrono::time_point<std::chrono::system_clock, std::chrono::nanoseconds>;
    using Clock = std::chrono::steady_clock;

    struct Stamp {
        dev_t device = 0;
        ino_t inode = 0;
        WallTime changed;

        bool operator==(const Stamp&) const = default;
    };

    struct Listing {
        Stamp stamp;
        bool inDoubt = false; // the folder may have changed again without a new stamp
        Clock::time_point readAt;
        Clock::duration cost = {};
        std::size_t lastUse = 0;
        // Native names by the capitals of the names inside.
        std::unordered_multimap<std::string, std::string> entries;

        void add(const std::string& leaf);
        void drop(const std::string& leaf);
    };

    static std::optional<Stamp> stampOf(const std::string& folder);
    static Stamp stampOf(const struct stat& status);
    static bool isFresh(const Stamp& stamp);

    Listing* current(const std::string& folder);
    Listing* unchanged(const std::string& folder);
    Listing* read(const std::string& folder);

    std::unordered_map<std::string, Listing> m_listings;
    std::size_t m_uses = 0;
    std::size_t m_foldersRead = 0;
};

} // namespace trovarium
