#pragma once

#include "platform/toolkit/Colors.h"
#include "platform/toolkit/Control.h"

#include <string>

namespace trovarium {

// A panel that other controls lie on, with a caption in its upper left corner when it has one. Its children's places
// are in twips.
class Frame : public Control, public Container {
public:
    Frame(Container* parent, const Plan& plan);
    ~Frame() override;

    Form& form() override { return Control::form(); }

    Stored<std::string> Caption;
    Stored<Color> BackColor{this, Change::Appearance, PanelBlue};

    Event<int, int, float, float> MouseMove{this}; // Button, Shift, X, Y in twips

    std::unique_ptr<View> makeView() override;
};

} // namespace trovarium
