// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace trovarium {

// 15 twips to the device-independent pixel, on every screen.
inline constexpr float TwipsPerPixel = 15.0F;

enum class ScaleMode { Twips, Pixels };

enum class Alignment { Left, Right, Center };

struct Color {
    unsigned char red = 0;
    unsigned char green = 0;
    unsigned char blue = 0;

    bool operator==(const Color&) const = default;
};

// Mouse buttons, and the keys held with them, as handlers get them.
enum MouseButton { LeftButton = 1, RightButton = 2, MiddleButton = 4 };
enum ShiftKeys { NoKeys = 0, ShiftKey = 1, CtrlKey = 2, AltKey = 4 };

// The keys of KeyDown that the program acts on; letters have the number of their capital.
enum KeyNumber {
    EnterKey = 13,
    EscapeKey = 27,
    SpaceKey = 32,
    PageUpKey = 33,
    PageDownKey = 34,
    EndKey = 35,
    HomeKey = 36,
    LeftKey = 37,
    UpKey = 38,
    RightKey = 39,
    DownKey = 40,
    DeleteKey = 46,
    OneKey = 49,
    AKey = 65,
    FKey = 70,
    MenuKey = 93,
    PlusKey = 107,
    MinusKey = 109,
    F1Key = 112,
    F2Key = 113,
    F11Key = 122,
};

enum PointerNumber {
    DefaultPointer = 0,
    ArrowPointer = 1,
    TextPointer = 3,
    HourglassPointer = 11,
    NoDropPointer = 12,
    ArrowHourglassPointer = 13,
    FourWayPointer = 15,
    HiddenPointer = 98,
    OwnPointer = 99,
};

} // namespace trovarium
