#pragma once

#include "platform/toolkit/Control.h"

#include <string>

namespace trovarium {

// A panel that other controls lie on, with a caption on its border when it has one. Its children's places
// are in twips.
class Frame : public Control, public Container {
public:
    Frame(Container* parent, const Plan& plan);
    ~Frame() override;

    Form& form() override { return Control::form(); }

private:
    const std::string& caption() const { return m_caption; }
    void setCaption(std::string value);
    Color backColor() const { return m_backColor; }
    void setBackColor(Color value);

public:
    Property<&Frame::caption, &Frame::setCaption> Caption{this};
    Property<&Frame::backColor, &Frame::setBackColor> BackColor{this};

    Event<int, int, float, float> MouseMove{this}; // Button, Shift, X, Y in twips

    std::unique_ptr<View> makeView() override;

private:
    std::string m_caption;
    Color m_backColor = PanelGrey;
};

} // namespace trovarium
