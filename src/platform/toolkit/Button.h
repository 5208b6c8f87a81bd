#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/Control.h"

#include <string>

namespace trovarium {

// A push button; "&" in the caption marks the access key.
class Button : public Control {
public:
    Button(Container* parent, const Plan& plan)
        : Control(parent, plan)
        , Caption(this, Change::Text, plan.Caption)
    {
    }

    Stored<std::string> Caption;
    Stored<trovarium::Picture> Picture{this, Change::Appearance};
    Stored<bool> Default{this, Change::Appearance}; // Enter presses it
    Stored<bool> Cancel{this, Change::Appearance};  // Escape presses it

    Event<> Click{this};

    std::unique_ptr<View> makeView() override;
};

} // namespace trovarium
