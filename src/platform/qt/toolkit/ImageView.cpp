#include "platform/toolkit/Image.h"

#include "platform/pictures/PicturePainter.h"
#include "platform/qt/toolkit/ItemView.h"

#include <QPainter>

namespace trovarium {

namespace {

class ImageView : public ItemView {
public:
    explicit ImageView(Image& image)
        : ItemView(image)
        , m_image(image)
    {
    }

    void paint(QPainter& painter, const QRectF& place) override
    {
        const Picture picture = m_image.Picture();
        if (picture.empty() || place.isEmpty())
            return;
        if (m_image.Stretch()) {
            m_painter.paint(painter, picture, place);
            return;
        }
        const QSizeF size(picture.width(), picture.height());
        painter.save();
        painter.setClipRect(place, Qt::IntersectClip);
        m_painter.paint(
            painter, picture, QRectF(QPointF(place.center().x() - std::floor(size.width() / 2), place.top()), size));
        painter.restore();
    }

    bool takesFocus() const override
    {
        return m_image.Click.isWired() || m_image.DblClick.isWired() || m_image.MouseDown.isWired();
    }
    bool hasDoubleClick() const override { return m_image.DblClick.isWired(); }
    QAccessible::Role accessibleRole() const override
    {
        return takesFocus() ? QAccessible::Button : QAccessible::Graphic;
    }

    void mouseDown(int button, int shift, QPointF pixels) override
    {
        raiseAt(m_image.MouseDown, button, shift, fromCorner(pixels));
    }
    void mouseMove(int button, int shift, QPointF pixels) override
    {
        raiseAt(m_image.MouseMove, button, shift, fromCorner(pixels));
    }
    void mouseUp(int button, int shift, QPointF pixels) override
    {
        raiseAt(m_image.MouseUp, button, shift, fromCorner(pixels));
    }
    void click() override { m_image.Click.raise(); }
    void doubleClick() override { m_image.DblClick.raise(); }

private:
    Image& m_image;
    PicturePainter m_painter;
};

} // namespace

std::unique_ptr<View> Image::makeView()
{
    return std::make_unique<ImageView>(*this);
}

} // namespace trovarium
