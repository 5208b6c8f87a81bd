// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/Picture.h"

#include <QImage>
#include <QSize>

#include <memory>
#include <string_view>
#include <vector>

class QSvgRenderer;

namespace trovarium {

class PictureSizes;

// What a picture holds: the pixels of a photograph, upright, or a drawing that is rendered at the size
// that it is painted in.
struct PictureData {
    QImage pixels;     // RGB32, or premultiplied ARGB32 where it has alpha; null for a drawing
    QSize naturalSize; // in pixels; `pixels` may be smaller (decoded for a thumbnail) or larger (dense screen)
    std::shared_ptr<QSvgRenderer> drawing{};
    std::vector<QImage> scaled{}; // the pixels in sizes that they will probably be painted in
    // Records the size in which it is first painted; null unless it was decoded in full.
    std::shared_ptr<PictureSizes> pictureSizes{};
};

// What a library has decoded: bytes in the order red, green, blue, alpha, and the profile of their colors, which may be
// empty.
struct DecodedPixels {
    QImage image;
    std::vector<unsigned char> profile;
};

// The format of an image of such bytes.
QImage::Format formatOfBytes(bool hasAlpha, bool isPremultiplied);

// The whole picture stretched to `size` pixels; reduced, every pixel is the average of the area it covers.
QImage drawnImage(const PictureData& data, QSize size);

// Whether nothing shines through it; an empty one is not.
bool isOpaque(const Picture& picture);

// The picture in exactly its natural size.
QImage renderedImage(const Picture& picture);

// An image as a picture; its natural size is counted in device-independent pixels.
Picture pictureFromImage(const QImage& image);

// One of the program's own drawings by its name in assets/; "File not found" for any other name.
Picture loadArtwork(std::string_view name);

} // namespace trovarium
