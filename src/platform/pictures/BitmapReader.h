// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/PictureFile.h"

#include <QImage>
#include <QSize>

#include <functional>

namespace trovarium {

// Reads a Windows bitmap of any depth, also in runs, top down and with masks; each pixel is the average of `factor` by
// `factor` of the file, which is asked for by the size; null for the factor 0. RGB32, or ARGB32 of either kind where
// the file keeps alpha. "Invalid picture" for a damaged header, and for a file that is shorter than its header says;
// runs that end early leave the rest in the first color. Source: BITMAPFILEHEADER, BITMAPCOREHEADER, BITMAPINFOHEADER
// to BITMAPV5HEADER, "Bitmap Compression".
QImage readBitmap(const PictureFile& file, const std::function<int(QSize size)>& factor);

} // namespace trovarium
