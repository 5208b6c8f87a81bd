#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/Control.h"

#include <string>

namespace trovarium {

// A push button; "&" in the caption marks the access key.
class Button : public Control {
public:
    Button(Container* parent, const Plan& plan);

private:
    const std::string& caption() const { return m_caption; }
    void setCaption(std::string value);
    const trovarium::Picture& picture() const { return m_picture; }
    void setPicture(trovarium::Picture value);
    bool isDefault() const { return m_default; }
    void setDefault(bool value);
    bool isCancel() const { return m_cancel; }
    void setCancel(bool value);

public:
    Property<&Button::caption, &Button::setCaption> Caption{this};
    Property<&Button::picture, &Button::setPicture> Picture{this};
    Property<&Button::isDefault, &Button::setDefault> Default{this}; // Enter presses it
    Property<&Button::isCancel, &Button::setCancel> Cancel{this};    // Escape presses it

    Event<> Click{this};

    std::unique_ptr<View> makeView() override;

private:
    std::string m_caption;
    trovarium::Picture m_picture;
    bool m_default = false;
    bool m_cancel = false;
};

} // namespace trovarium
