// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/Descriptor.h"
#include "platform/files/FileTypes.h"

#include <string>
#include <string_view>
#include <sys/stat.h>

namespace trovarium {

// A text file that is open under a number. Writes are buffered: a full disk shows at a later print or at the close.
class OpenFile {
public:
    OpenFile(std::string path, OpenMode mode, Descriptor descriptor, const struct stat& status);
    // For input, of a file that was read already.
    OpenFile(std::string path, std::string content);

    const std::string& path() const { return m_path; } // as the program knows it
    const FileStamp& stamp() const { return m_stamp; } // as it was at opening
    bool isSameFile(const struct stat& status) const;

    void print(std::string_view line);
    bool endOfFile();
    std::string lineInput();

    // Writes the rest of the buffer. If that fails, the destructor closes the file.
    void close();

private:
    bool fill();
    void flush();
    void requireMode(bool right) const;

    std::string m_path;
    OpenMode m_mode;
    Descriptor m_descriptor;
    FileStamp m_stamp;
    off_t m_unread = 0;   // bytes, of the length at opening
    std::string m_buffer; // read from the file, or to be written
    std::size_t m_taken = 0;
    bool m_endReached = false;
    bool m_lineEndMissing = false; // at the end of a file that is appended to
};

} // namespace trovarium
