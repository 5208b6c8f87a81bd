// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/PictureData.h"

#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <utility>

namespace trovarium {

int Picture::width() const
{
    return m_data ? m_data->naturalSize.width() : 0;
}

int Picture::height() const
{
    return m_data ? m_data->naturalSize.height() : 0;
}

QImage::Format formatOfBytes(bool hasAlpha, bool isPremultiplied)
{
    if (!hasAlpha)
        return QImage::Format_RGBX8888;
    return isPremultiplied ? QImage::Format_RGBA8888_Premultiplied : QImage::Format_RGBA8888;
}

QImage drawnImage(const PictureData& data, QSize size)
{
    if (const auto ahead = std::ranges::find(data.scaled, size, &QImage::size); ahead != data.scaled.end())
        return *ahead;
    if (!data.drawing)
        return data.pixels.size() == size ? data.pixels
                                          : data.pixels.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    data.drawing->render(&painter, QRectF(QPointF(0, 0), size));
    return image;
}

QImage renderedImage(const Picture& picture)
{
    if (picture.empty())
        return {};
    QImage image = drawnImage(*picture.data(), picture.data()->naturalSize);
    image.setDevicePixelRatio(1);
    return image;
}

Picture pictureFromImage(const QImage& image)
{
    if (image.isNull())
        return {};
    auto data = std::make_shared<PictureData>();
    data->naturalSize = (image.deviceIndependentSize().expandedTo(QSizeF(1, 1))).toSize();
    data->pixels =
        image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    data->pixels.setDevicePixelRatio(1);
    return Picture(std::move(data));
}

bool isOpaque(const Picture& picture)
{
    return !picture.empty() && picture.data()->drawing == nullptr && !picture.data()->pixels.hasAlphaChannel();
}

} // namespace trovarium
