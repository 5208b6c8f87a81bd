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
    const qreal width = BorderWidth();
    const QColor color = toQColor(BorderColor());
    if (place.height() == 0) {
        painter.fillRect(QRectF(place.topLeft(), QSizeF(place.width(), width)), color);
    } else if (place.width() == 0) {
        painter.fillRect(QRectF(place.topLeft(), QSizeF(width, place.height())), color);
    } else {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(color, width));
        painter.drawLine(place.topLeft(), place.bottomRight());
    }
}

QMargins Line::margins() const
{
    const int width = BorderWidth();
    return {width, width, width, width};
}

} // namespace trovarium
