#include "platform/pictures/ByteStream.h"

#include "platform/pictures/PictureHeader.h"
#include "runtime/Failure.h"

#include <utility>

namespace trovarium {

ByteStream::ByteStream(const PictureBytes& bytes, std::int64_t offset)
    : m_bytes(bytes)
    , m_start(offset)
{
}

bool ByteStream::has(std::size_t length)
{
    constexpr std::size_t BlockLength = std::size_t{1} << 16;
    if (m_at + length > m_block.size()) {
        m_start += static_cast<std::int64_t>(std::exchange(m_at, 0));
        m_block = m_bytes.bytes(m_start, BlockLength);
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
