#include "platform/qt/toolkit/ButtonLook.h"

#include <QFontMetrics>
#include <QPalette>

#include <algorithm>

namespace trovarium {

namespace {

constexpr int PlanSize = 12; // pixels
constexpr int SmallestSize = 8;
constexpr int NarrowestStretch = 80; // per cent
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

// Letters that are a little narrower look less odd beside another button's than letters that are smaller. Each font
// that is tried is looked up in the system, so the stretch is worked out.
void showCaption(QAbstractButton& button, const std::string& caption, int taken)
{
    const QString text = toQString(caption);
    const int room = std::max(0, button.width() - taken);
    const auto width = [&](const QFont& font) { return QFontMetrics(font).size(Qt::TextShowMnemonic, text).width(); };
    QFont font = planFont(PlanSize);
    for (int size = PlanSize; width(font) > room && size >= SmallestSize; --size) {
        font.setPixelSize(size);
        font.setStretch(QFont::Unstretched);
        if (const int stretch = 100 * room / width(font); stretch >= NarrowestStretch && stretch < 100)
            font.setStretch(stretch);
    }
    button.setFont(font);
    button.setText(text);
}

} // namespace trovarium
