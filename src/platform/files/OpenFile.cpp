// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/OpenFile.h"

#include "platform/files/AtomicFile.h"
#include "runtime/Text.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>
#include <utility>

namespace trovarium {

namespace {

constexpr std::size_t BufferBytes = 65536;

// A file that isn't text, such as a film with the ending of a list, must not fill the memory with one line.
constexpr std::size_t MaxLineBytes = 1 << 26;

constexpr std::string_view LineEnd = "\r\n";

// Two searches for one character are many times as fast as one for either.
std::size_t lineEndIn(std::string_view text)
{
    const std::size_t feed = text.find('\n');
    return std::min(text.substr(0, feed).find('\r'), feed);
}

bool lacksLineEnd(int handle, off_t size)
{
    char last = 0;
    return size > 0 && pread(handle, &last, 1, size - 1) == 1 && last != '\n' && last != '\r';
}

} // namespace

OpenFile::OpenFile(std::string path, OpenMode mode, Descriptor descriptor, const struct stat& status)
    : m_path(std::move(path))
    , m_mode(mode)
    , m_descriptor(std::move(descriptor))
    , m_stamp(stampOf(status))
    , m_unread(status.st_size)
    , m_lineEndMissing(mode == OpenMode::Append && lacksLineEnd(m_descriptor.handle(), status.st_size))
{
}

OpenFile::OpenFile(std::string path, std::string content)
    : m_path(std::move(path))
    , m_mode(OpenMode::Input)
    , m_buffer(std::move(content))
    , m_endReached(true)
{
}

bool OpenFile::isSameFile(const struct stat& status) const
{
    return m_stamp.device == status.st_dev && m_stamp.node == status.st_ino;
}

void OpenFile::print(std::string_view line)
{
    requireMode(m_mode != OpenMode::Input);
    std::string encoded;
    if (!isAscii(line)) {
        encoded = encodeLine(line);
        line = encoded;
    }
    // Before the line is added, so that a line that failed isn't written by a later close.
    if (!m_buffer.empty() && m_buffer.size() + line.size() > BufferBytes)
        flush();
    if (std::exchange(m_lineEndMissing, false))
        m_buffer += LineEnd;
    m_buffer += line;
    m_buffer += LineEnd;
}

bool OpenFile::endOfFile()
{
    requireMode(m_mode == OpenMode::Input);
    return m_taken == m_buffer.size() && !fill();
}

std::string OpenFile::lineInput()
{
    if (endOfFile())
        throw Failure(FailureKind::InputPastEndOfFile);
    std::string line;
    for (;;) {
        const std::string_view rest = std::string_view(m_buffer).substr(m_taken);
        const std::size_t end = lineEndIn(rest);
        line += rest.substr(0, end);
        if (line.size() > MaxLineBytes)
            throw Failure(FailureKind::OutOfMemory);
        if (end == std::string_view::npos) {
            m_taken = m_buffer.size();
            if (!fill())
                break;
            continue;
        }
        m_taken += end + 1;
        if (rest[end] == '\r' && !endOfFile() && m_buffer[m_taken] == '\n')
            ++m_taken;
        break;
    }
    return isUtf8(line) ? std::move(line) : fromWindows1252(line);
}

void OpenFile::close()
{
    if (m_mode == OpenMode::Input)
        return;
    flush();
    if (m_descriptor.close() != 0)
        failNow(Attempted::Access);
}

// Fills the buffer again when all of it was taken; false at the end of the file.
bool OpenFile::fill()
{
    if (m_endReached)
        return false;
    const auto wanted = std::min(static_cast<std::size_t>(m_unread), BufferBytes);
    m_buffer.resize(wanted);
    m_taken = 0;
    ssize_t count = 0;
    do {
        count = read(m_descriptor.handle(), m_buffer.data(), wanted);
    } while (count < 0 && errno == EINTR);
    m_buffer.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (count < 0)
        failNow(Attempted::Access);
    m_unread -= count;
    // Reading ends at the length at opening: what another program appends meanwhile isn't read in part.
    m_endReached = count == 0 || m_unread == 0;
    return count > 0;
}

void OpenFile::flush()
{
    std::string_view rest = m_buffer;
    const auto failure = attempt([&] { writeAll(m_descriptor, rest, Attempted::Access); });
    m_buffer.erase(0, m_buffer.size() - rest.size());
    if (failure)
        throw Failure(*failure);
}

void OpenFile::requireMode(bool right) const
{
    if (!right)
        throw Failure(FailureKind::BadFileNameOrNumber);
}

} // namespace trovarium
