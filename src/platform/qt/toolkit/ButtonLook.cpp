#include "platform/qt/toolkit/ButtonLook.h"

#include "platform/qt/toolkit/Look.h"

#include <QAction>
#include <QFontMetricsF>
#include <QMenuBar>
#include <QPalette>

#include <algorithm>

namespace trovarium {

namespace {

constexpr int SmallestSize = 8; // pixels

QColor between(const QColor& first, const QColor& second)
{
    return {(first.red() + second.red()) / 2, (first.green() + second.green()) / 2, (first.blue() + second.blue()) / 2};
}

// The desktop opens neither of two that want the same key.
void leaveKeyToMenus(QAbstractButton& button)
{
    const auto* bar = button.window()->findChild<const QMenuBar*>();
    if (bar == nullptr)
        return;
    for (const QAction* menu : bar->actions()) {
        if (QKeySequence::mnemonic(menu->text()) == button.shortcut())
            button.setShortcut({});
    }
}

} // namespace

void setBackColor(QAbstractButton& button, std::optional<Color> color)
{
    button.setAutoFillBackground(color.has_value());
    if (!color) {
        button.setPalette({});
        return;
    }
    const QColor ground = toQColor(*color);
    const QColor text = isDark(ground) ? Qt::white : Qt::black;
    QPalette palette;
    palette.setColor(button.foregroundRole(), text);
    palette.setColor(QPalette::Disabled, button.foregroundRole(), between(ground, text));
    palette.setColor(button.backgroundRole(), ground);
    button.setPalette(palette);
}

// Letters that are a little narrower look less odd beside another button's than letters that are smaller.
void showCaption(QAbstractButton& button, const std::string& caption, int taken)
{
    const QString text = toQString(caption);
    const int room = std::max(0, button.width() - taken);
    const auto fitting = [&](int size) {
        return narrowedFont(planFont(static_cast<float>(size)), Qt::TextShowMnemonic, text, room);
    };
    int size = static_cast<int>(PlanFont);
    QFont font = fitting(size);
    while (size > SmallestSize && QFontMetricsF(font).size(Qt::TextShowMnemonic, text).width() > room)
        font = fitting(--size);
    button.setFont(font);
    button.setText(text);
    leaveKeyToMenus(button);
}

} // namespace trovarium
