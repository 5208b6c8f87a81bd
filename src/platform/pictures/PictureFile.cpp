// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/PictureFile.h"

#include "platform/files/NativeErrors.h"
#include "platform/pictures/PictureHeader.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <cerrno>
#include <span>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace trovarium {

PictureFile::PictureFile(const std::string& nativePath, const std::atomic<bool>& cancelled)
    : m_descriptor(::open(nativePath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY))
    , m_cancelled(cancelled)
{
    if (!m_descriptor.isOpen() && errno != ENXIO) // which a socket gives
        failNow(Attempted::Access);
    struct stat status = {};
    if (!m_descriptor.isOpen() || ::fstat(descriptor(), &status) != 0 || !S_ISREG(status.st_mode))
        throw Failure(FailureKind::FileNotFound);
    m_stamp = stampOf(status);
}

PictureFile::PictureFile(std::vector<unsigned char> content, const std::atomic<bool>& cancelled)
    : m_content(std::move(content))
    , m_cancelled(cancelled)
{
    m_stamp.size = std::ssize(m_content);
}

std::vector<unsigned char> PictureFile::bytes(std::int64_t offset, std::size_t length) const
{
    if (!m_descriptor.isOpen()) {
        const auto rest = std::span(m_content).subspan(static_cast<std::size_t>(std::min(offset, this->length())));
        return {rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(std::min(length, rest.size()))};
    }
    constexpr std::size_t MostAtOnce = std::size_t{1} << 20; // a slow disk's share between two looks at the flag
    std::vector<unsigned char> bytes(length);
    std::size_t count = 0;
    while (count < length && !m_cancelled) {
        const auto got = ::pread(descriptor(), bytes.data() + count, std::min(length - count, MostAtOnce),
            static_cast<off_t>(offset + static_cast<std::int64_t>(count)));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            failNow(Attempted::Access);
        if (got == 0)
            break;
        count += static_cast<std::size_t>(got);
    }
    bytes.resize(count);
    return bytes;
}

ByteStream::ByteStream(const PictureFile& file, std::int64_t offset)
    : m_file(file)
    , m_start(offset)
{
}

bool ByteStream::has(std::size_t length)
{
    constexpr std::size_t BlockLength = std::size_t{1} << 16;
    if (m_at + length > m_block.size()) {
        m_start += static_cast<std::int64_t>(std::exchange(m_at, 0));
        m_block = m_file.bytes(m_start, BlockLength);
    }
    return length <= m_block.size();
}

std::uint32_t ByteStream::number(std::size_t length)
{
    if (!has(length))
        throw Failure(FailureKind::InvalidPicture);
    m_at += length;
    return littleEndian(m_block, m_at - length, length);
}

} // namespace trovarium
