// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/PictureData.h"
#include "platform/pictures/wmf/WmfBitmap.h"

#include <atomic>

namespace trovarium {

// Paints a Windows metafile, placeable or plain, on white. The pixels are up to four times as many along a
// side as the natural size says, so that the drawing is sharp when it is enlarged and smooth when it isn't;
// fewer for a size beyond what any screen shows. With `longerSide` above 0 there are no more than that along
// the longer side. "Invalid picture" for any damage, when `cancelled` was set, and for a file that goes beyond
// the limits of `WmfFile` and the work of a `WmfCanvas`. Safe on any thread.
PictureData readWmf(WmfBytes file, int longerSide, ReadBitmap readBitmap, const std::atomic<bool>& cancelled);

} // namespace trovarium
