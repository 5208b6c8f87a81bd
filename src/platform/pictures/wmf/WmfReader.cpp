// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/wmf/WmfReader.h"

#include "platform/pictures/wmf/WmfCanvas.h"
#include "platform/pictures/wmf/WmfFile.h"
#include "platform/pictures/wmf/WmfMapping.h"
#include "platform/pictures/wmf/WmfPlayer.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace trovarium {

namespace {

int longer(QSize size)
{
    return std::max(size.width(), size.height());
}

// Pixels of the canvas for one of the natural size.
double fullScale(QSize natural)
{
    constexpr double MostEnlarged = 4'000'000;
    constexpr double Most = 24'000'000;
    constexpr double LargestFactor = 4;
    constexpr double LongestSide = 16384;
    const double pixels = double(natural.width()) * natural.height();
    const double enlarged = std::clamp(std::sqrt(MostEnlarged / pixels), 1.0, LargestFactor);
    return std::min({enlarged, std::sqrt(Most / pixels), LongestSide / longer(natural)});
}

} // namespace

PictureData readWmf(WmfBytes file, int longerSide, ReadBitmap readBitmap, const std::atomic<bool>& cancelled)
{
    const WmfFile metafile(file);
    WmfMapping mapping(metafile);
    const QSize natural = mapping.naturalSize();
    const double full = fullScale(natural);
    const double scale = longerSide > 0 ? std::min(full, double(longerSide) / longer(natural)) : full;
    const QSize size = (QSizeF(natural) * scale).toSize().expandedTo(QSize(1, 1));
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull())
        throw Failure(FailureKind::OutOfMemory);
    mapping.setCanvas(size);
    {
        WmfCanvas canvas(image, std::max(1.0, scale), full / scale); // paints on it as long as it lives
        WmfPlayer(mapping, canvas, readBitmap, cancelled).play(metafile);
    }
    return {std::move(image), natural};
}

} // namespace trovarium
