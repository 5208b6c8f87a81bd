#pragma once

#include "platform/toolkit/Units.h"

namespace trovarium {

// What the forms of the check have in common on the dark background.
inline constexpr Color NameShadow{6, 14, 26};
inline constexpr Color SoftWhite{214, 224, 236};

} // namespace trovarium
