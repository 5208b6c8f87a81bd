// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/Picture.h"
#include "platform/pictures/PictureFile.h"

namespace trovarium {

class PictureLibraries;

// Decodes a bmp, jpg, gif, png, webp, tiff, heic, avif, jxl (the first image) or wmf by content, upright, as sRGB by
// its profile, opaque on white. The pixels may be fewer than the natural size says, see `reductionFor`. Large ones are
// decoded one at a time for the same `libraries`. All failures are `Failure`; a file that is cancelled meanwhile is an
// "Invalid picture". Safe on any thread.
Picture readPicture(const PictureFile& file, int longerSide, PictureLibraries& libraries);

// The same for a thumbnail, which is decoded in less time than it takes to hand it to another thread. Empty for any
// other picture.
Picture readThumbnail(const PictureFile& file, int longerSide);

// Whether it is a file of these formats, by its first bytes, whose library is there.
bool isPicture(const PictureFile& file, PictureLibraries& libraries);

} // namespace trovarium
