#pragma once

#include "platform/toolkit/Colors.h"
#include "platform/toolkit/Control.h"

#include <optional>

namespace trovarium {

// A drawn rectangle; the mouse goes through it.
class Shape : public Control {
public:
    using Control::Control;

    Stored<Color> BorderColor{this, Change::Appearance, Black};
    Stored<int> BorderWidth{this, Change::Appearance, 1}; // pixels
    Stored<std::optional<Color>> FillColor{this, Change::Appearance};

    std::unique_ptr<View> makeView() override;
};

} // namespace trovarium
