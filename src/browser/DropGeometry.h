#pragma once

#include <cstdint>

namespace trovarium {

// Where the pointer of a drag lies, and what it lies over; pixels of the viewing frame.
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

// The cell that a drag aims at, by equal quarters of the frame and not by the real grid, held at the last
// photograph of a short page; and the page that a pointer past the upper or lower edge turns to.
Drop dropAt(const DragPointer& pointer, const DragPage& page);

// Where the mark stands beside a cell, and the group position that it means: +n behind, -n in front of
// position n.
struct Insertion {
    float markLeft = 0; // pixels of the frame
    std::int32_t position = 0;
};
Insertion insertionAt(std::int32_t pointerX, float cellLeft, std::int32_t cellPosition);

} // namespace trovarium
