#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/Control.h"

namespace trovarium {

// A drawn button whose face is its picture, stretched to its size. Labels may lie over it.
class PictureButton : public Control {
public:
    using Control::Control;

    Stored<trovarium::Picture> Picture{this, Change::Content};

    Event<> Click{this};

    std::unique_ptr<View> makeView() override;
};

} // namespace trovarium
