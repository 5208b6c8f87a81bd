#include "platform/toolkit/PictureButton.h"

#include "platform/pictures/PicturePainter.h"
#include "platform/qt/toolkit/ItemView.h"
#include "platform/toolkit/Label.h"

#include <QPainter>

namespace trovarium {

namespace {

class PictureButtonView : public ItemView {
public:
    explicit PictureButtonView(PictureButton& button)
        : ItemView(button)
        , m_button(button)
    {
    }

    void paint(QPainter& painter, const QRectF& place) override
    {
        const Picture picture = m_button.Picture();
        if (picture.empty() || place.isEmpty())
            return;
        painter.save();
        if (!m_button.Enabled())
            painter.setOpacity(0.45);
        m_painter.paint(painter, picture, place);
        painter.restore();
    }

    bool takesFocus() const override { return m_button.Click.isWired(); }
    QAccessible::Role accessibleRole() const override { return QAccessible::Button; }

    // A button without a name of its own is called as the label on it.
    QString accessibleText() const override
    {
        if (m_button.AccessibleName().empty()) {
            for (const Control* control : m_button.parent().controls()) {
                const auto* label = dynamic_cast<const Label*>(control);
                if (label != nullptr && label->Visible() && place().contains(placeInPixels(*label).center()))
                    return toQString(label->Caption());
            }
        }
        return ItemView::accessibleText();
    }

    void click() override { m_button.Click.raise(); }

private:
    PictureButton& m_button;
    PicturePainter m_painter;
};

} // namespace

std::unique_ptr<View> PictureButton::makeView()
{
    return std::make_unique<PictureButtonView>(*this);
}

} // namespace trovarium
