#include "platform/toolkit/Shape.h"

#include "platform/qt/toolkit/ItemView.h"

#include <QPainter>

namespace trovarium {

namespace {

class ShapeView : public ItemView {
public:
    explicit ShapeView(Shape& shape)
        : ItemView(shape)
        , m_shape(shape)
    {
    }

    bool takesMouse() const override { return false; }

    void paint(QPainter& painter, const QRectF& place) override
    {
        if (place.isEmpty())
            return;
        if (const std::optional<Color> fill = m_shape.FillColor())
            painter.fillRect(place, toQColor(*fill));
        const qreal width = std::min<qreal>(m_shape.BorderWidth(), std::min(place.width(), place.height()));
        if (width <= 0)
            return;
        // Four bars and no pen: edges stay on whole pixels at every scale.
        const QColor color = toQColor(m_shape.BorderColor());
        painter.fillRect(QRectF(place.topLeft(), QSizeF(place.width(), width)), color);
        painter.fillRect(QRectF(place.left(), place.bottom() - width, place.width(), width), color);
        painter.fillRect(QRectF(place.topLeft(), QSizeF(width, place.height())), color);
        painter.fillRect(QRectF(place.right() - width, place.top(), width, place.height()), color);
    }

private:
    Shape& m_shape;
};

} // namespace

std::unique_ptr<View> Shape::makeView()
{
    return std::make_unique<ShapeView>(*this);
}

} // namespace trovarium
