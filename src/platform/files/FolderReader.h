#pragma once

#include "platform/files/FileService.h"

#include <dirent.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace trovarium {

// Reads a folder's entries in the order of the disk, without "." and "..".
class FolderReader {
public:
    struct Entry {
        std::string_view name; // valid until the next one is read
        unsigned char type;    // what the folder itself tells, often unknown
    };

    // `folder` is a native path; errno tells why it isn't open.
    explicit FolderReader(const std::string& folder);

    bool isOpen() const { return m_stream != nullptr; }
    struct stat status() const; // of the folder; "Device I/O error" and the like

    // None at the end; a folder that can't be read on is a failure, since half a listing would pass for a
    // whole one.
    std::optional<Entry> next();

    // None for what is neither a file nor a folder: a link to a folder, too, while a link to a file is a file.
    // Unknown where the disk doesn't answer.
    std::optional<FolderEntry::Kind> kindOf(const Entry& entry) const;

private:
    struct Closer {
        void operator()(DIR* stream) const { closedir(stream); }
    };
    std::unique_ptr<DIR, Closer> m_stream;
};

} // namespace trovarium
