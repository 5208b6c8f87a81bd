#pragma once

namespace trovarium {

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
    AKey = 65,
    MenuKey = 93,
    PlusKey = 107,
    MinusKey = 109,
    F2Key = 113,
    F11Key = 122,
};

} // namespace trovarium
