#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/Control.h"

namespace trovarium {

// A drawn button whose face is its picture, stretched to its size. Labels may lie over it.
class PictureButton : public Control {
public:
    PictureButton(Container* parent, const Plan& plan);

private:
    const trovarium::Picture& picture() const { return m_picture; }
    void setPicture(trovarium::Picture value);

public:
    Property<&PictureButton::picture, &PictureButton::setPicture> Picture{this};

    Event<> Click{this};

    std::unique_ptr<View> makeView() override;

private:
    trovarium::Picture m_picture;
};

} // namespace trovarium
