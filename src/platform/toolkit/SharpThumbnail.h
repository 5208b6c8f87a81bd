// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/Picture.h"

#include <QSize>

#include <functional>
#include <memory>
#include <string>

namespace trovarium {

class Image;

// What an image paints in place of a thumbnail on a dense screen: the photograph itself, in as many pixels as the
// device has there.
class SharpThumbnail : public std::enable_shared_from_this<SharpThumbnail> {
public:
    // `photograph` tells the path of the file. It is called in the event loop, when the image was painted.
    SharpThumbnail(Image& image, std::function<std::string()> photograph);
    ~SharpThumbnail();
    SharpThumbnail(const SharpThumbnail&) = delete;
    SharpThumbnail& operator=(const SharpThumbnail&) = delete;

    // The photograph; the thumbnail until it is decoded, which this starts.
    const Picture& toPaint();

    // Nothing is decoded until it is painted again.
    void drop();

private:
    QSize sizeOnDevice() const;
    void ask();
    void receive(const Picture& decoded);

    Image& m_image;
    const std::function<std::string()> m_photograph;
    QSize m_asked; // empty if the screen isn't dense
    Picture m_picture;
};

} // namespace trovarium
