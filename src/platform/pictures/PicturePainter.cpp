// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/PicturePainter.h"

#include "platform/pictures/PictureData.h"
#include "platform/pictures/PictureSizes.h"
#include "platform/pictures/Reduction.h"

#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace trovarium {

namespace {

// Kept scaled versions, all together and the largest single one: 128 MB.
constexpr std::int64_t MostKeptPixels = 32'000'000;

// Device pixels that the painter can reach.
QRect visibleArea(const QPainter& painter)
{
    const QTransform toDevice = painter.deviceTransform();
    QRectF area = (painter.worldTransform().inverted() * toDevice).mapRect(QRectF(painter.viewport()));
    if (painter.hasClipping())
        area &= toDevice.mapRect(painter.clipBoundingRect());
    const QRegion system = painter.paintEngine()->systemClip();
    if (!system.isEmpty())
        area &= QRectF(system.boundingRect());
    return area.toAlignedRect();
}

// The visible cut-out of a picture that is too large to be kept as a whole at this size. One pixel of the
// source more on each side, so that blending at the edge of the view sees its neighbours.
void paintCutOut(QPainter& painter, const QImage& pixels, const QRect& target, const QRect& visible)
{
    const QRect shown = target & visible;
    if (shown.isEmpty())
        return;
    const double stepX = static_cast<double>(target.width()) / pixels.width();
    const double stepY = static_cast<double>(target.height()) / pixels.height();
    const QRect source = QRectF((shown.left() - target.left()) / stepX, (shown.top() - target.top()) / stepY,
                             shown.width() / stepX, shown.height() / stepY)
                             .toAlignedRect()
                             .adjusted(-1, -1, 1, 1)
        & pixels.rect();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(target.left() + source.left() * stepX, target.top() + source.top() * stepY,
                          source.width() * stepX, source.height() * stepY),
        pixels, QRectF(source));
}

} // namespace

void PicturePainter::paint(QPainter& painter, const Picture& picture, const QRectF& target)
{
    if (picture.empty() || target.isEmpty())
        return;
    const std::shared_ptr<const PictureData>& data = picture.data();
    const QTransform toDevice = painter.deviceTransform();
    const QRectF place = toDevice.mapRect(target);
    // Place and size are rounded on their own: a picture that moves by fractions keeps its scaled version.
    const QRect device(QPoint(qRound(place.left()), qRound(place.top())),
        QSize(std::max(1, qRound(place.width())), std::max(1, qRound(place.height()))));

    painter.save();
    const QRect visible = visibleArea(painter);
    painter.setWorldTransform(toDevice.inverted() * painter.worldTransform()); // logical is device now
    const QSize full = data->pixels.size();
    const bool enlarged = !data->drawing && device.width() >= full.width() && device.height() >= full.height();
    if (device.size() == full)
        painter.drawImage(device.topLeft(), data->pixels);
    else if (!data->drawing && (enlarged || pixelCount(device.size()) > MostKeptPixels))
        paintCutOut(painter, data->pixels, device, visible);
    else if (device.intersects(visible))
        painter.drawImage(device.topLeft(), scaled(data, device.size()));
    painter.restore();
}

const QImage& PicturePainter::scaled(const std::shared_ptr<const PictureData>& source, QSize size)
{
    m_scaled.remove_if([](const Scaled& kept) { return kept.source.expired(); });
    const auto found = std::find_if(m_scaled.begin(), m_scaled.end(),
        [&](const Scaled& kept) { return kept.pixels.size() == size && kept.source.lock() == source; });
    if (found != m_scaled.end()) {
        m_scaled.splice(m_scaled.begin(), m_scaled, found);
    } else {
        // What it is zoomed to later says nothing of the next picture.
        const bool isFirstPaint = std::none_of(
            m_scaled.begin(), m_scaled.end(), [&](const Scaled& kept) { return kept.source.lock() == source; });
        if (isFirstPaint && source->pictureSizes)
            source->pictureSizes->add(source->naturalSize, size);
        m_scaled.push_front({source, drawnImage(*source, size)});
        forgetBeyondLimit();
    }
    return m_scaled.front().pixels;
}

void PicturePainter::forgetBeyondLimit()
{
    std::int64_t kept = 0;
    const auto beyond = std::find_if(std::next(m_scaled.begin()), m_scaled.end(), [&](const Scaled& scaled) {
        kept += pixelCount(scaled.pixels.size());
        return kept + pixelCount(m_scaled.front().pixels.size()) > MostKeptPixels;
    });
    m_scaled.erase(beyond, m_scaled.end());
}

} // namespace trovarium
