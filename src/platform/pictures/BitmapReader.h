#pragma once

#include "platform/pictures/PictureFile.h"

#include <QImage>
#include <QSize>

namespace trovarium {

// "Invalid picture" for a damaged header, and for a file that is shorter than its header says.
QSize bitmapSize(const PictureBytes& file);

// Reads a Windows bitmap of any depth, also in runs, top down and with masks; each pixel is the average of `factor` by
// `factor` of the file. RGB32, or ARGB32 of either kind where the file keeps alpha. "Invalid picture" as above; runs
// that end early leave the rest in the first color.
// Source: BITMAPFILEHEADER, BITMAPCOREHEADER, BITMAPINFOHEADER to BITMAPV5HEADER, "Bitmap Compression".
QImage readBitmap(const PictureBytes& file, int factor);
// The same of a file in the memory, in full.
QImage readBitmapInMemory(std::vector<unsigned char> file, const std::atomic<bool>& cancelled);

} // namespace trovarium
