#pragma once

#include "platform/qt/pictures/PictureFile.h"

#include <cstdint>

namespace trovarium {

enum class PictureFormat { Jpeg, Gif, Bitmap };

// What a file is by its first bytes; "Invalid picture" for any other.
PictureFormat formatOf(const PictureFile& file);

// "Invalid picture" for a size beyond what is decoded at all (500 megapixels), and for one that `length`
// bytes can't hold at the densest that the format packs.
void checkSize(std::int64_t width, std::int64_t height, std::int64_t length, std::int64_t mostPixelsInAByte);

// Refuse, by the header alone, what promises more than the file holds.
// Sources: the header structures of the Windows bitmap; GIF89a, sections 17 to 25.
void checkBitmap(const PictureFile& file);
void checkGif(const PictureFile& file);

} // namespace trovarium
