// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/Shape.h"

#include "platform/toolkit/QtValues.h"

#include <QPainter>

#include <algorithm>

namespace trovarium {

void Shape::draw(QPainter& painter, const QRectF& place)
{
    if (const std::optional<Color> fill = FillColor())
        painter.fillRect(place, toQColor(*fill));
    const qreal width = std::min<qreal>(BorderWidth(), std::min(place.width(), place.height()));
    if (width <= 0)
        return;
    // Four bars and no pen: edges stay on whole pixels at every scale.
    const QColor color = toQColor(BorderColor());
    painter.fillRect(QRectF(place.topLeft(), QSizeF(place.width(), width)), color);
    painter.fillRect(QRectF(place.left(), place.bottom() - width, place.width(), width), color);
    painter.fillRect(QRectF(place.topLeft(), QSizeF(width, place.height())), color);
    painter.fillRect(QRectF(place.right() - width, place.top(), width, place.height()), color);
}

void Line::draw(QPainter& painter, const QRectF& place)
{
    painter.fillRect(QRectF(place.topLeft(), QSizeF(place.width(), 1)), toQColor(BorderColor()));
}

QMargins Line::margins() const
{
    return {1, 1, 1, 1};
}

} // namespace trovarium
