#include "platform/qt/toolkit/BackColor.h"

#include "platform/qt/toolkit/View.h"

#include <QPalette>

namespace trovarium {

void setBackColor(QWidget& widget, std::optional<Color> color)
{
    widget.setAutoFillBackground(color.has_value());
    if (!color) {
        widget.setPalette({});
        return;
    }
    constexpr int MiddleGrey = 128;
    const QColor ground = toQColor(*color);
    QPalette palette;
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::WindowText, qGray(ground.rgb()) < MiddleGrey ? Qt::white : Qt::black);
    widget.setPalette(palette);
}

} // namespace trovarium
