#pragma once

#include "platform/pictures/PictureFile.h"

#include <QSize>

#include <cstddef>
#include <cstdint>
#include <span>

namespace trovarium {

enum class PictureFormat { Jpeg, Gif, Bitmap, Metafile, Png, WebP, Tiff };

// What a file is by its first bytes; "Invalid picture" for any other.
PictureFormat formatOf(const PictureFile& file);

// Up to here a torn file may well promise more than it holds: decoding it costs little. A larger picture may take a
// gigabyte.
constexpr std::int64_t HarmlessPixels = 64'000'000;

// "Invalid picture" for a size beyond what is decoded at all (500 megapixels, a million along a side), and for one that
// `length` bytes can't hold at the densest that the format packs.
void checkSize(std::int64_t width, std::int64_t height, std::int64_t length, std::int64_t mostPixelsInAByte);

// The size of a gif by its headers alone; refuses one that promises more than it holds. Source: GIF89a, sections 17 to
// 25.
QSize checkGif(const PictureBytes& file);

// The number that `length` bytes stand for, the lowest or the highest first.
std::uint32_t littleEndian(std::span<const unsigned char> bytes, std::size_t position, std::size_t length);
std::uint32_t bigEndian(std::span<const unsigned char> bytes, std::size_t position, std::size_t length);

} // namespace trovarium
