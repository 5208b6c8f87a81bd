// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/Picture.h"

#include <QImage>
#include <QSize>

#include <list>
#include <memory>

class QPainter;
class QRectF;

namespace trovarium {

// Paints pictures stretched at the full resolution of the painter's device, and keeps what it scaled
// last, so that a photograph that is moved costs a plain copy of its pixels. Holds no picture alive.
class PicturePainter {
public:
    // `target` is in the painter's logical coordinates and is filled. Of an enlarged picture only what the
    // painter's clip lets through is worked out.
    void paint(QPainter& painter, const Picture& picture, const QRectF& target);

private:
    struct Scaled {
        std::weak_ptr<const PictureData> source;
        QImage pixels;
    };

    const QImage& scaled(const std::shared_ptr<const PictureData>& source, QSize size);
    void forgetBeyondLimit();

    std::list<Scaled> m_scaled; // latest first
};

} // namespace trovarium
