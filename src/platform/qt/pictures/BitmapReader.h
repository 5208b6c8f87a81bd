#pragma once

#include "platform/qt/pictures/PictureBytes.h"

#include <QImage>

#include <atomic>

namespace trovarium {

// Reads a Windows bitmap of any depth, also in runs, top down and with masks. The image is RGB32, or ARGB32
// where the file keeps alpha; null when `cancelled` was set meanwhile. "Invalid picture" for a damaged
// header, and for a file that is shorter than its header says; runs that end early leave the rest in the
// first colour.
// Source: BITMAPFILEHEADER, BITMAPCOREHEADER, BITMAPINFOHEADER to BITMAPV5HEADER, "Bitmap Compression".
QImage readBitmap(const PictureBytes& file, const std::atomic<bool>& cancelled);

} // namespace trovarium
