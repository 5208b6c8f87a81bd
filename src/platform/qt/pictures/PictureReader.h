#pragma once

#include "platform/pictures/Picture.h"
#include "platform/qt/pictures/PictureFile.h"

#include <atomic>

namespace trovarium {

// Decodes a bmp, jpg, gif, png, webp, tiff (the first image) or wmf by content, upright, as sRGB by its profile,
// opaque on white. With `longerSide`
// above 0 the pixels may be fewer than the natural size says, but at least four times `longerSide`.
// Empty when `cancelled` was set meanwhile. All failures are `Failure`. Safe on any thread.
Picture readPicture(const PictureFile& file, int longerSide, const std::atomic<bool>& cancelled);

} // namespace trovarium
