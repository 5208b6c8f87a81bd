#pragma once

#include "platform/toolkit/Units.h"

#include <optional>
#include <string>

class QAbstractButton;

namespace trovarium {

class Control;

// Fills the button's ground with a colour, with text that can be read on it; none: what lies below shows.
void setBackColor(QAbstractButton& button, std::optional<Color> color);

// Shows a caption in a size that its button has room for beside `taken` pixels: fonts differ in width.
void showCaption(QAbstractButton& button, const std::string& caption, int taken);

// A button without a caption or a name of its own is known to screen readers by its tool tip.
void nameByToolTip(QAbstractButton& button, const Control& control);

} // namespace trovarium
