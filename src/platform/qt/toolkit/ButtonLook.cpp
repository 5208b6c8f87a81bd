#include "platform/qt/toolkit/ButtonLook.h"

#include "platform/qt/toolkit/View.h"

#include <QAbstractButton>
#include <QPalette>

namespace trovarium {

void setBackColor(QAbstractButton& button, std::optional<Color> color)
{
    button.setAutoFillBackground(color.has_value());
    if (!color) {
        button.setPalette({});
        return;
    }
    constexpr int MiddleGrey = 128;
    const QColor ground = toQColor(*color);
    const QColor text = qGray(ground.rgb()) < MiddleGrey ? Qt::white : Qt::black;
    QPalette palette;
    palette.setColor(button.backgroundRole(), ground);
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        palette.setColor(group, button.foregroundRole(), text);
    button.setPalette(palette);
}

void nameByToolTip(QAbstractButton& button, const Control& control)
{
    if (button.text().isEmpty() && control.AccessibleName().empty())
        button.setAccessibleName(toQString(control.ToolTipText()));
}

} // namespace trovarium
