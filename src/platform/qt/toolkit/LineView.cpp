#include "platform/toolkit/Line.h"

#include "platform/qt/toolkit/ItemView.h"

#include <QPainter>

namespace trovarium {

namespace {

class LineView : public ItemView {
public:
    explicit LineView(Line& line)
        : ItemView(line)
        , m_line(line)
    {
    }

    bool takesMouse() const override { return false; }

    void paint(QPainter& painter, const QRectF& place) override
    {
        const qreal width = m_line.BorderWidth();
        const QColor color = toQColor(m_line.BorderColor());
        if (place.height() == 0) {
            painter.fillRect(QRectF(place.topLeft(), QSizeF(place.width(), width)), color);
        } else if (place.width() == 0) {
            painter.fillRect(QRectF(place.topLeft(), QSizeF(width, place.height())), color);
        } else {
            painter.save();
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(QPen(color, width));
            painter.drawLine(place.topLeft(), place.bottomRight());
            painter.restore();
        }
    }

    QRectF paintedPlace(qreal ratio) const override
    {
        const qreal width = m_line.BorderWidth();
        return devicePlace(ratio).adjusted(-width, -width, width, width);
    }

    QAccessible::Role accessibleRole() const override { return QAccessible::Separator; }

private:
    Line& m_line;
};

} // namespace

std::unique_ptr<View> Line::makeView()
{
    return std::make_unique<LineView>(*this);
}

} // namespace trovarium
