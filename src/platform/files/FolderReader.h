// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/FileTypes.h"

#include <cstdint>
#include <dirent.h>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace trovarium {

// Reads a folder's entries in the order of the disk, without "." and "..".
class FolderReader {
public:
    struct Entry {
        std::string_view name; // valid until the next one is read
        unsigned char type;    // of dirent, often unknown
    };

    // `folder` is a native path; errno tells why it isn't open.
    explicit FolderReader(const std::string& folder);

    bool isOpen() const { return m_stream != nullptr; }
    struct stat status() const; // of the folder; "Device I/O error" and the like

    // None at the end. An error while reading is a failure: half a listing would pass for a whole one.
    std::optional<Entry> next();

    // A link to a file is a file. None for a link to a folder and for what is neither file nor folder. Unknown if the
    // disk doesn't answer.
    std::optional<FolderEntry::Kind> kindOf(const Entry& entry) const;

    std::int64_t lengthOf(const Entry& entry) const; // of a file; UnknownLength if the disk doesn't answer

private:
    struct Closer {
        void operator()(DIR* stream) const { closedir(stream); }
    };
    std::unique_ptr<DIR, Closer> m_stream;
};

// "." and ".." and the files and folders of a native folder whose names match (see `FileService::list`), sorted as
// lists are. Hidden names are left out. Files that match `measured`, if it isn't empty, come with their lengths. What
// killed runs left of files that they were writing is added to `leftOvers`.
std::vector<FolderEntry> entriesOf(
    const std::string& folder, std::string_view patterns, std::string_view measured, std::set<std::string>& leftOvers);

std::vector<std::string> namesOf(std::vector<FolderEntry> entries, FolderEntry::Kind kind);

} // namespace trovarium
