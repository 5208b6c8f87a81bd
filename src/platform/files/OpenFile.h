#pragma once

#include "platform/files/Descriptor.h"
#include "platform/files/FileService.h"

#include <string>
#include <string_view>
#include <sys/stat.h>

namespace trovarium {

// A text file that stands under a number. Writes are gathered: what can't be written shows at a later
// print or at the close.
class OpenFile {
public:
    OpenFile(std::string path, OpenMode mode, Descriptor descriptor, const struct stat& status);

    const std::string& path() const { return m_path; } // as the program knows it
    OpenMode mode() const { return m_mode; }
    const FileStamp& stamp() const { return m_stamp; } // as it was at opening
    bool isSameFile(const struct stat& status) const;

    void print(std::string_view line);
    bool endOfFile();
    std::string lineInput();

    // Writes what is left. When that fails, the end of the object closes the file.
    void close();

private:
    bool fill();
    void flush();
    void requireMode(bool right) const;

    std::string m_path;
    OpenMode m_mode;
    Descriptor m_descriptor;
    FileStamp m_stamp;
    off_t m_unread;       // what the file held at opening and wasn't read yet
    std::string m_buffer; // read and not yet taken, or printed and not yet written
    std::size_t m_taken = 0;
    bool m_endReached = false;
    bool m_lineEndMissing = false; // appending to a last line without an end
};

} // namespace trovarium
