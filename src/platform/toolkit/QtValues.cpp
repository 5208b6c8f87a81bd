// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/QtValues.h"

#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/FormWindow.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>
#include <QPolygonF>
#include <QScreen>
#include <QTextDocument>
#include <QWheelEvent>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <map>

namespace trovarium {

namespace {

constexpr int NarrowestFont = 70;    // per cent
constexpr qsizetype TipColumns = 70; // of a tool tip, so that none runs off the screen
constexpr int NarrowStep = 10;       // few, since each is another font to the desktop

// An arrow with a sheet under it that carries a plus: what is held here is copied there.
QCursor dropPointer(qreal ratio)
{
    QPixmap pixmap(QSize(32, 32) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(40, 40, 40), 1));
    painter.setBrush(QColor(255, 246, 190));
    painter.drawRoundedRect(QRectF(10.5, 13.5, 18, 15), 2, 2);
    painter.setPen(QPen(QColor(0, 100, 30), 2));
    painter.drawLine(QPointF(19.5, 17), QPointF(19.5, 25));
    painter.drawLine(QPointF(15.5, 21), QPointF(23.5, 21));
    painter.setPen(QPen(Qt::black, 1));
    painter.setBrush(Qt::white);
    painter.drawPolygon(
        QPolygonF({{0.5, 0.5}, {0.5, 15.5}, {4.3, 12.1}, {7.1, 18.1}, {9.5, 16.9}, {6.9, 11.1}, {11.5, 11.1}}));
    painter.end();
    return QCursor(pixmap, 0, 0); // the corner, since desktops differ in whose pixels they count the hot spot in
}

// With line breaks, in place of blanks as far as there are some.
QString broken(QString text, qsizetype columns)
{
    for (qsizetype start = 0; text.size() - start > columns;) {
        const qsizetype blank = text.lastIndexOf(' ', start + columns);
        const qsizetype end = blank > start ? blank : start + columns;
        text.replace(end, blank > start ? 1 : 0, '\n');
        start = end + 1;
    }
    return text;
}

} // namespace

QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string toText(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

QString toolTipText(std::string_view text)
{
    const QString plain = broken(toQString(text), TipColumns);
    return Qt::mightBeRichText(plain) ? Qt::convertFromPlainText(plain) : plain;
}

QFont planFont(float pixels, bool bold)
{
    QFont font;
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixels))));
    font.setBold(bold);
    return font;
}

QFont narrowedFont(QFont font, int flags, const QString& text, qreal width)
{
    for (int stretch = 100; stretch > NarrowestFont && QFontMetricsF(font).size(flags, text).width() > width;) {
        stretch -= NarrowStep;
        font.setStretch(stretch);
    }
    return font;
}

QColor toQColor(Color color)
{
    return {color.red, color.green, color.blue};
}

QCursor cursorOf(int pointer, qreal ratio)
{
    switch (pointer) {
    case TextPointer:
        return QCursor(Qt::IBeamCursor);
    case HourglassPointer:
        return QCursor(Qt::WaitCursor);
    case NoDropPointer:
        return QCursor(Qt::ForbiddenCursor);
    case ArrowHourglassPointer:
        return QCursor(Qt::BusyCursor);
    case FourWayPointer:
        return QCursor(Qt::SizeAllCursor);
    case HiddenPointer:
        return QCursor(Qt::BlankCursor);
    case OwnPointer:
        return dropPointer(ratio);
    default:
        return QCursor(Qt::ArrowCursor);
    }
}

QRectF placeInPixels(const Control& control)
{
    const Container& parent = control.parent();
    return {parent.edge() + parent.toPixels(control.Left()), parent.edge() + parent.toPixels(control.Top()),
        parent.toPixels(control.Width()), parent.toPixels(control.Height())};
}

QRect roundedPlace(const Control& control)
{
    const QRectF place = placeInPixels(control);
    const QPoint corner(static_cast<int>(std::lround(place.left())), static_cast<int>(std::lround(place.top())));
    const QPoint end(static_cast<int>(std::lround(place.right())), static_cast<int>(std::lround(place.bottom())));
    return {corner, QSize(end.x() - corner.x(), end.y() - corner.y())};
}

QPointF handlerPlaceOn(const Container& container, const QPointF& pixels)
{
    const QPointF twips = (pixels - QPointF(container.edge(), container.edge())) * TwipsPerPixel;
    return {container.fromTwips(static_cast<float>(twips.x())), container.fromTwips(static_cast<float>(twips.y()))};
}

int shiftKeys(Qt::KeyboardModifiers modifiers)
{
    return (modifiers.testFlag(Qt::ShiftModifier) ? ShiftKey : 0)
        | (modifiers.testFlag(Qt::ControlModifier) ? CtrlKey : 0) | (modifiers.testFlag(Qt::AltModifier) ? AltKey : 0);
}

int mouseButtons(Qt::MouseButtons buttons)
{
    return (buttons.testFlag(Qt::LeftButton) ? LeftButton : 0) | (buttons.testFlag(Qt::RightButton) ? RightButton : 0)
        | (buttons.testFlag(Qt::MiddleButton) ? MiddleButton : 0);
}

// A Cyrillic or Greek letter counts as the Latin one in its place. X and Wayland count the keys by their places.
int keyCode(const QKeyEvent& event)
{
    static const std::map<int, int> codes{{Qt::Key_Return, EnterKey}, {Qt::Key_Enter, EnterKey},
        {Qt::Key_Escape, EscapeKey}, {Qt::Key_Space, SpaceKey}, {Qt::Key_PageUp, PageUpKey},
        {Qt::Key_PageDown, PageDownKey}, {Qt::Key_End, EndKey}, {Qt::Key_Home, HomeKey}, {Qt::Key_Left, LeftKey},
        {Qt::Key_Up, UpKey}, {Qt::Key_Right, RightKey}, {Qt::Key_Down, DownKey}, {Qt::Key_Delete, DeleteKey},
        {Qt::Key_1, OneKey}, {Qt::Key_A, AKey}, {Qt::Key_C, CKey}, {Qt::Key_F, FKey}, {Qt::Key_V, VKey},
        {Qt::Key_Z, ZKey}, {Qt::Key_Menu, MenuKey}, {Qt::Key_Plus, PlusKey}, {Qt::Key_Minus, MinusKey},
        {Qt::Key_F1, F1Key}, {Qt::Key_F2, F2Key}, {Qt::Key_F11, F11Key}};
    static const std::map<quint32, int> places{{38, AKey}, {41, FKey}, {52, ZKey}, {54, CKey}, {55, VKey}};
    const int key = event.key();
    if (const auto found = codes.find(key); found != codes.end())
        return found->second;
    const auto letter = places.find(event.nativeScanCode());
    const bool isOther = letter != places.end() && QChar::script(static_cast<char32_t>(key)) > QChar::Script_Latin;
    return isOther ? letter->second : 0;
}

int WheelTurn::notches(const QWheelEvent& event)
{
    const QPoint turned = event.angleDelta();
    const int turn = turned.y() != 0 ? turned.y() : turned.x();
    m_rest = (turn > 0) == (m_rest > 0) ? m_rest + turn : turn;
    const int whole = m_rest / QWheelEvent::DefaultDeltasPerStep;
    m_rest -= whole * QWheelEvent::DefaultDeltasPerStep;
    return whole;
}

int keyAscii(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Escape:
        return 27;
    default:
        break;
    }
    const QString text = event.text();
    return text.size() == 1 && text.front().isPrint() ? text.front().unicode() : 0;
}

QScreen& screenOf(const QWidget& window)
{
    QScreen* screen = QGuiApplication::screenAt(window.frameGeometry().center());
    return screen != nullptr ? *screen : *window.screen(); // out of sight
}

QScreen& screenInUse(const DesktopState& state)
{
    const Form* active = state.activeForm();
    return active != nullptr ? active->window().standsOn() : *QGuiApplication::primaryScreen();
}

} // namespace trovarium
