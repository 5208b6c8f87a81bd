#pragma once

#include "platform/pictures/PictureBytes.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace trovarium {

// Goes through a picture's bytes in order. They are read a block at a time, however small the pieces are that are
// asked for, and however many the file promises.
class ByteStream {
public:
    ByteStream(const PictureBytes& bytes, std::int64_t offset);

    // Whether so many are left; at most some thousands.
    bool has(std::size_t length);
    // The next ones as a number, the lowest first; "Invalid picture" behind the end.
    std::uint32_t number(std::size_t length);
    void skip(std::size_t length) { m_at += length; }

private:
    const PictureBytes& m_bytes;
    std::vector<unsigned char> m_block;
    std::int64_t m_start; // of the block
    std::size_t m_at = 0; // in the block, or behind it
};

} // namespace trovarium
