#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace trovarium {

// What a picture is decoded from, read piece by piece: a file, or bytes inside one.
class PictureBytes {
public:
    virtual ~PictureBytes() = default;

    virtual std::int64_t length() const = 0;

    // Set from another thread when the picture isn't wanted any more.
    virtual const std::atomic<bool>& cancelled() const = 0;

    // Up to `length` bytes from `offset`; fewer at the end.
    virtual std::vector<unsigned char> bytes(std::int64_t offset, std::size_t length) const = 0;

protected:
    PictureBytes() = default;
    PictureBytes(const PictureBytes&) = default;
    PictureBytes& operator=(const PictureBytes&) = default;
};

} // namespace trovarium
