// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace trovarium {

// The pointer of a drag, and the size of the viewing frame; in pixels of the frame.
struct DragPointer {
    std::int32_t x = 0;
    std::int32_t y = 0;
    float frameWidth = 0;
    float frameHeight = 0;
};

// The page on show.
struct DragPage {
    std::int32_t page = 1; // 1-based
    int upperBound = 0;    // photographs of the group
};

enum class PageTurn { None, Forward, Back };

struct Drop {
    int cell = 0; // 0 to 15 unless the pointer is far outside
    PageTurn turn = PageTurn::None;
};

// The cell under the pointer: the frame counts as a grid of equal quarters, which is not quite where the cells are. On
// a short page it is at most the last photograph. Past the upper or lower edge, the page to turn to as well.
Drop dropAt(const DragPointer& pointer, const DragPage& page);

// The mark beside a cell, and the position in the group that it stands for: +n is after, -n before position n.
struct Insertion {
    float markLeft = 0; // pixels of the frame
    std::int32_t position = 0;
};
Insertion insertionAt(std::int32_t pointerX, float cellLeft, std::int32_t cellPosition);

} // namespace trovarium
