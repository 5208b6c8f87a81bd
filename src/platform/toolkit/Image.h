#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/Control.h"

namespace trovarium {

// A drawn picture that takes the mouse. With Stretch it fills its own size; without, the picture shows at
// its natural size in the middle of the width, at the top edge. X and Y of its mouse events are twips
// relative to the item as it lies now.
class Image : public Control {
public:
    Image(Container* parent, const Plan& plan);

private:
    const trovarium::Picture& picture() const { return m_picture; }
    void setPicture(trovarium::Picture value);
    bool stretch() const { return m_stretch; }
    void setStretch(bool value);

public:
    Property<&Image::picture, &Image::setPicture> Picture{this};
    Property<&Image::stretch, &Image::setStretch> Stretch{this};

    Event<int, int, float, float> MouseDown{this}; // Button, Shift, X, Y
    Event<int, int, float, float> MouseMove{this};
    Event<int, int, float, float> MouseUp{this};
    Event<> Click{this};
    Event<> DblClick{this};

    std::unique_ptr<View> makeView() override;

private:
    trovarium::Picture m_picture;
    bool m_stretch = false;
};

} // namespace trovarium
