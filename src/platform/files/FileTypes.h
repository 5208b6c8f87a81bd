// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

struct stat;

namespace trovarium {

enum class OpenMode { Input, Output, Append };

enum class FileOperation {
    Open,
    Print,
    LineInput,
    Close,
    Length,
    Date,
    SetDate,
    List,
    Copy,
    Delete,
    Rename,
    MakeFolder,
    Picture,
    Exists,
    Attributes
};

// For tests: called before every operation with the path as the program knows it (of a copy the target, of a rename
// the old name). The operation fails with what the hook throws.
using FaultHook = std::function<void(FileOperation operation, std::string_view path)>;

// Whether a write waits until the data is on the disk and so survives a loss of power. Yes for what a person wrote or
// arranged.
enum class Sync { No, Yes };

// Whether a copy may replace a write-protected file.
enum class ReadOnlyTarget { Stays, IsReplaced };

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

inline constexpr unsigned NewFileRights = 0666; // less the user's mask

// The file's bytes. For a symbolic link that is never written through, its target's path instead. Two are equal if
// their bytes are.
struct FileContent {
    std::string bytes;
    std::string link;                // the target's path of a symbolic link; empty for a file
    unsigned rights = NewFileRights; // as the system counts them

    bool operator==(const FileContent& other) const { return bytes == other.bytes; }
};

// An entry of a folder as a listing tells it.
struct FolderEntry {
    enum class Kind { File, Folder, Unknown }; // Unknown: `FileService::attributes` must ask the disk

    std::string name;
    Kind kind;
    // In bytes, of a file that the listing was to measure. UnknownLength: `FileService::length` must ask the disk.
    std::optional<std::int64_t> length{};
};

inline constexpr std::int64_t UnknownLength = -1;

// A folder that is a symbolic link, by the paths of both.
struct FolderLink {
    std::string path;
    std::string target;
};

inline constexpr int DirectoryAttribute = 16;

} // namespace trovarium
