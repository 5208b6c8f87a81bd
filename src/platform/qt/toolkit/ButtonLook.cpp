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

// The desktop opens neither of two that want the same key, so a button leaves it to the menu, and shows no mark.
QString withoutKeyOfMenu(const QAbstractButton& button, QString text)
{
    const auto* bar = button.window()->findChild<const QMenuBar*>();
    const QKeySequence key = QKeySequence::mnemonic(text);
    if (bar == nullptr || key.isEmpty())
        return text;
    const QList<QAction*> menus = bar->actions();
    if (std::none_of(menus.begin(), menus.end(),
            [&](const QAction* menu) { return QKeySequence::mnemonic(menu->text()) == key; }))
        return text;
    qsizetype mark = text.indexOf('&');
    while (text.mid(mark, 2) == "&&")
        mark = text.indexOf('&', mark + 2);
    return text.remove(mark, 1);
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
    const QString text = withoutKeyOfMenu(button, toQString(caption));
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
}

} // namespace trovarium
