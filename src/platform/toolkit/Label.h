#pragma once

#include "platform/toolkit/Control.h"

#include <optional>
#include <string>

namespace trovarium {

// Where a text that is too long is cut off.
enum class Elision { End, Start, Middle };

// A drawn text, as it stands. With AutoSize it grows about its alignment, so that a centred one keeps its
// centre.
class Label : public Control {
public:
    Label(Container* parent, const Plan& plan)
        : Control(parent, plan)
        , Caption(this, Change::Text, plan.Caption)
    {
    }

    Stored<std::string> Caption;
    Stored<trovarium::Alignment> Alignment{this, Change::Appearance, trovarium::Alignment::Left};
    Stored<bool> AutoSize{this, Change::Text};
    Stored<float> MostWidth{this, Change::Text};                      // of AutoSize; 0: no limit
    Stored<std::optional<Color>> ForeColor{this, Change::Appearance}; // none: that of what it lies on
    Stored<std::optional<Color>> BackColor{this, Change::Appearance}; // none: what lies below shows
    Stored<float> FontSize{this, Change::Text, 12.0F};                // pixels of the plan
    Stored<bool> Bold{this, Change::Text};
    Stored<bool> WordWrap{this, Change::Text};     // otherwise a long text gets a "…"
    Stored<bool> Shadow{this, Change::Appearance}; // a dark halo, legible on any picture
    Stored<bool> UseMnemonic{this, Change::Text};  // "&" marks an access key, "&&" shows as one
    Stored<bool> Raised{this, Change::Appearance}; // looks like a push button, for one that is clicked
    // A text that is too long is drawn narrower before it is cut.
    Stored<bool> NarrowToFit{this, Change::Appearance};
    Stored<trovarium::Elision> Elision{this, Change::Appearance, trovarium::Elision::End};

    Event<int, int, float, float> MouseDown{this}; // Button, Shift, X, Y in twips
    Event<int, int, float, float> MouseMove{this};
    Event<> Click{this};

    std::unique_ptr<View> makeView() override;

protected:
    void changed(Change change) override;

private:
    void fit(); // AutoSize
};

} // namespace trovarium
