#pragma once

#include "platform/toolkit/Colors.h"
#include "platform/toolkit/Control.h"

namespace trovarium {

// A drawn line from the upper left to the lower right corner of its place.
class Line : public Control {
public:
    using Control::Control;

    Stored<Color> BorderColor{this, Change::Appearance, Black};
    Stored<int> BorderWidth{this, Change::Appearance, 1}; // pixels

    std::unique_ptr<View> makeView() override;
};

} // namespace trovarium
