// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "runtime/Failure.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace trovarium {

[[noreturn]] inline void refusePicture()
{
    throw Failure(FailureKind::InvalidPicture);
}

// Up to this size a damaged file may declare more pixels than it holds, since decoding it costs little. A larger
// picture may take a gigabyte.
constexpr std::int64_t HarmlessPixels = 64'000'000;

// Libraries hold the pixels of most formats twice while they unpack them. No camera or scanner writes more of them.
constexpr std::int64_t MostHeldTwice = 120'000'000;

// "Invalid picture" for a size beyond what is decoded at all, and for one that `length` bytes can't hold at the densest
// that the format packs.
inline void checkSize(std::int64_t width, std::int64_t height, std::int64_t length, std::int64_t mostPixelsInAByte)
{
    constexpr std::int64_t MostPixels = 500'000'000;
    constexpr std::int64_t LongestSide = 1'000'000;
    const bool isKnown = width > 0 && height > 0 && width <= LongestSide && height <= LongestSide;
    if (!isKnown || width * height > MostPixels
        || (width * height > HarmlessPixels && width * height / mostPixelsInAByte > length))
        refusePicture();
}

// A number of `length` bytes, the lowest first.
inline std::uint32_t littleEndian(std::span<const unsigned char> bytes, std::size_t position, std::size_t length)
{
    std::uint32_t value = 0;
    for (std::size_t i = length; i-- > 0;)
        value = value << 8U | bytes[position + i];
    return value;
}

} // namespace trovarium
