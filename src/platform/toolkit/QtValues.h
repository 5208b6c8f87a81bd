// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Control.h"

#include <QColor>
#include <QCursor>
#include <QFont>
#include <QRectF>
#include <QString>

#include <string>
#include <string_view>

class QKeyEvent;
class QScreen;
class QWheelEvent;
class QWidget;

// The toolkit's values as the library's, and the other way round.
namespace trovarium {

struct DesktopState;

QString toQString(std::string_view text);
std::string toText(const QString& text);
// A tool tip that shows its text as it stands, whatever it may look like, in lines that are not too long.
QString toolTipText(std::string_view text);
QColor toQColor(Color color);
QCursor cursorOf(int pointer, qreal ratio);

// A font of so many pixels of the plan, and the size of all that no plan makes larger.
inline constexpr float PlanFont = 12;
QFont planFont(float pixels, bool bold = false);
// The font, made so much narrower, within reason, that the text fits into a width. `flags` as for measuring it.
QFont narrowedFont(QFont font, int flags, const QString& text, qreal width);

// The control's place in pixels of its parent, fractions kept.
QRectF placeInPixels(const Control& control);
// With its edges rounded to whole pixels.
QRect roundedPlace(const Control& control);
// A place in pixels of the container's widget as its handlers get it: in its scale, from inside its border.
QPointF handlerPlaceOn(const Container& container, const QPointF& pixels);

// Modifiers and buttons as handlers get them.
int shiftKeys(Qt::KeyboardModifiers modifiers);
int mouseButtons(Qt::MouseButtons buttons);
// A `KeyNumber`, letters on every keyboard layout; 0 for any other key.
int keyCode(const QKeyEvent& event);
// The character of a key press (13 Enter, 27 Escape), 0 for a key without one.
int keyAscii(const QKeyEvent& event);

// Adds up what a wheel turns: fine ones send many small parts of a notch.
class WheelTurn {
public:
    int notches(const QWheelEvent& event); // that are complete with this event, up is positive

private:
    int m_rest = 0; // less than a notch
};

// Where the center of a window lies, or where it will come up.
QScreen& screenOf(const QWidget& window);
// Where the active form stands, and the first one while there is none: what comes up next comes up there.
QScreen& screenInUse(const DesktopState& state);

} // namespace trovarium
