#pragma once

#include "platform/toolkit/Units.h"

#include <string_view>

namespace trovarium {

// A control as the form's plan draws it. Place and size are in twips, whatever the parent's scale.
struct Plan {
    std::string_view Name{};
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    std::string_view Caption{};
    std::string_view ToolTipText{};
    bool Visible = true;
    bool Enabled = true;
};

} // namespace trovarium
