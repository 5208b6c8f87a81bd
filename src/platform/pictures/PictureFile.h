// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/Descriptor.h"
#include "platform/files/FileTypes.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace trovarium {

// What a picture is decoded from, read piece by piece. Once `cancelled` is set, which must outlive it, it reads as if
// it ended here.
class PictureFile {
public:
    // A regular file, open for reading under its native path. "File not found" for anything else; a pipe is never
    // waited for.
    PictureFile(const std::string& nativePath, const std::atomic<bool>& cancelled);
    // One that lies in memory.
    PictureFile(std::vector<unsigned char> content, const std::atomic<bool>& cancelled);

    int descriptor() const { return m_descriptor.handle(); }
    const FileStamp& stamp() const { return m_stamp; }
    std::int64_t length() const { return m_stamp.size; }
    const std::atomic<bool>& cancelled() const { return m_cancelled; }

    // Up to `length` bytes from `offset`; fewer at the end.
    std::vector<unsigned char> bytes(std::int64_t offset, std::size_t length) const;

private:
    Descriptor m_descriptor;
    std::vector<unsigned char> m_content;
    FileStamp m_stamp;
    const std::atomic<bool>& m_cancelled;
};

// Reads a picture's numbers in order, through a buffer of one block.
class ByteStream {
public:
    ByteStream(const PictureFile& file, std::int64_t offset);

    // Whether so many bytes are left; `length` is at most some thousands.
    bool has(std::size_t length);
    // The next bytes as a number, little-endian; "Invalid picture" behind the end.
    std::uint32_t number(std::size_t length);
    void skip(std::size_t length) { m_at += length; }

private:
    const PictureFile& m_file;
    std::vector<unsigned char> m_block;
    std::int64_t m_start; // of the block, in the file
    std::size_t m_at = 0; // in the block, or behind it
};

} // namespace trovarium
