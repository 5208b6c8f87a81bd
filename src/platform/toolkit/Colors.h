// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Units.h"

namespace trovarium {

// The colors of the windows, but for those inside the artwork. Text has a contrast of at least 4.5 to 1 with its
// background, disabled text and the outlines of controls 3 to 1.

inline constexpr Color Black{0, 0, 0};
inline constexpr Color White{255, 255, 255};
inline constexpr Color Yellow{255, 255, 0};
inline constexpr Color MarkRed{255, 0, 0};

// Backgrounds, from dark to light: of fields and lists, of windows, of panels and menus.
inline constexpr Color FieldBlue{15, 24, 41};
inline constexpr Color WindowBlue{24, 36, 64};
inline constexpr Color PanelBlue{32, 46, 74};
inline constexpr Color PanelGray{192, 192, 192}; // of the information box

// Text and lines on the blue backgrounds.
inline constexpr Color Ink{238, 242, 248};
inline constexpr Color SoftWhite{214, 224, 236};
inline constexpr Color FaintInk{148, 164, 188};    // disabled
inline constexpr Color OutlineBlue{128, 150, 186}; // of fields and marks
inline constexpr Color SeparatorBlue{54, 72, 108}; // of panels, and of what is disabled
inline constexpr Color NameShadow{6, 14, 26};

// Text and lines on the gray background.
inline constexpr Color DarkFaintInk{76, 76, 76}; // disabled
inline constexpr Color OutlineGray{84, 84, 84};

// Buttons and selected rows.
inline constexpr Color ButtonBlue{29, 79, 134};
inline constexpr Color ButtonEdge{66, 126, 196};
inline constexpr Color DisabledButton{38, 54, 84};
inline constexpr Color ChosenBlue{42, 112, 200};
inline constexpr Color ThumbBlue{98, 124, 166}; // of scroll bars

// The focus ring.
inline constexpr Color FocusLight{166, 212, 255};
inline constexpr Color FocusDark{6, 32, 110};

// Progress bars.
inline constexpr Color BarBlue{58, 134, 230};
inline constexpr Color BarGray{128, 128, 128};

// The background picture's color behind the icon of the About box, whose round corners let it through.
inline constexpr Color GroundBehindIcon{44, 65, 95};

} // namespace trovarium
