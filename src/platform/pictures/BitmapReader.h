// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/PictureFile.h"

#include <QImage>
#include <QSize>

#include <functional>

namespace trovarium {

// Reads a Windows bitmap of any depth, also run-length encoded, top-down, or with color masks. `factor` gets the size
// and tells by how much to reduce it: a pixel is the average of that many by that many pixels of the file; 0 gives a
// null image. RGB32, or ARGB32, straight or premultiplied, where the file has alpha. "Invalid picture" for a damaged
// header or a file that is shorter than its header says. Pixels that run-length data leaves out get the first color.
// Source: BITMAPFILEHEADER, BITMAPCOREHEADER, BITMAPINFOHEADER to BITMAPV5HEADER, "Bitmap Compression".
QImage readBitmap(const PictureFile& file, const std::function<int(QSize size)>& factor);

} // namespace trovarium
