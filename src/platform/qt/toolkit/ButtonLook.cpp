#include "platform/qt/toolkit/ButtonLook.h"

#include "platform/qt/toolkit/View.h"

#include <QAbstractButton>
#include <QFontMetrics>
#include <QPalette>

namespace trovarium {

namespace {

constexpr int PlanSize = 12; // pixels
constexpr int SmallestSize = 8;
constexpr int MiddleGrey = 128;

QColor between(const QColor& first, const QColor& second)
{
    return {(first.red() + second.red()) / 2, (first.green() + second.green()) / 2, (first.blue() + second.blue()) / 2};
}

} // namespace

void setBackColor(QAbstractButton& button, std::optional<Color> color)
{
    const QColor ground = toQColor(color.value_or(PanelGrey));
    const QColor text = qGray(ground.rgb()) < MiddleGrey ? Qt::white : Qt::black;
    QPalette palette;
    palette.setColor(button.foregroundRole(), text);
    // The desktop's own grey for what is disabled can't be told from a form's.
    palette.setColor(QPalette::Disabled, button.foregroundRole(), between(ground, text));
    if (color)
        palette.setColor(button.backgroundRole(), ground);
    button.setPalette(palette);
    button.setAutoFillBackground(color.has_value());
}

void showCaption(QAbstractButton& button, const std::string& caption, int taken)
{
    const QString text = toQString(caption);
    int size = PlanSize;
    while (size > SmallestSize
        && QFontMetrics(planFont(static_cast<float>(size))).size(Qt::TextShowMnemonic, text).width() + taken
            > button.width())
        --size;
    button.setFont(planFont(static_cast<float>(size)));
    button.setText(text);
}

void nameByToolTip(QAbstractButton& button, const Control& control)
{
    if (button.text().isEmpty() && control.AccessibleName().empty())
        button.setAccessibleName(toQString(control.ToolTipText()));
}

} // namespace trovarium
