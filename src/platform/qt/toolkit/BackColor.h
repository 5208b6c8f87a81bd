#pragma once

#include "platform/toolkit/Units.h"

#include <optional>

class QWidget;

namespace trovarium {

// Fills the widget's ground with a colour, with text that can be read on it; none: what lies below shows.
void setBackColor(QWidget& widget, std::optional<Color> color);

} // namespace trovarium
