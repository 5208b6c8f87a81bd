// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Units.h"

#include <QPalette>

#include <memory>

class QColor;
class QPainter;
class QRectF;
class QStyle;

namespace trovarium {

// The style of all windows: the desktop's controls in the program's colors.
std::unique_ptr<QStyle> makeStyle();

// For controls on a background of this color: dark text on a light one, light text on a dark one.
QPalette paletteOn(Color ground);

bool isDark(const QColor& ground);

// The ring around what the keys go to, inside `place`; it stands out from any picture.
void paintFocusRing(QPainter& painter, const QPalette& palette, const QRectF& place);

} // namespace trovarium
