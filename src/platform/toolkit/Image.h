#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/Control.h"

namespace trovarium {

// A drawn picture that takes the mouse. With Stretch it fills its own size; without, the picture shows at
// its natural size in the middle of the width, at the top edge. X and Y of its mouse events are twips
// relative to the item as it lies now.
class Image : public Control {
public:
    using Control::Control;

    Stored<trovarium::Picture> Picture{this, Change::Content};
    Stored<bool> Stretch{this, Change::Appearance};

    Event<int, int, float, float> MouseDown{this}; // Button, Shift, X, Y
    Event<int, int, float, float> MouseMove{this};
    Event<int, int, float, float> MouseUp{this};
    Event<> Click{this};
    Event<> DblClick{this};

    std::unique_ptr<View> makeView() override;
};

} // namespace trovarium
