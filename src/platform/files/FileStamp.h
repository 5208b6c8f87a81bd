#pragma once

#include <cstdint>

struct stat;

namespace trovarium {

// Tells whether a file is still the one that was read: another file in its place, another length and another time of
// its last change make another stamp.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t node = 0;
    std::int64_t size = 0;
    std::int64_t changedSeconds = 0;
    std::int64_t changedNanoseconds = 0;

    bool operator==(const FileStamp&) const = default;
};

FileStamp stampOf(const struct stat& status); // for the platform's own use

} // namespace trovarium
