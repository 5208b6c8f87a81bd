// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/DropGeometry.h"

#include "browser/ThumbnailPages.h"

#include <algorithm>
#include <cmath>

namespace trovarium {

namespace {

constexpr int Cells = ThumbnailPages::CellCount;

// Left of this the pointer is on its way to the group list, and turns no page.
constexpr std::int32_t TurnEdge = -15;

constexpr std::int32_t HalfCell = 50;
constexpr float MarkInFront = -15;
constexpr float MarkBehind = 113;

int quarter(std::int32_t place, float extent, int parts)
{
    return static_cast<int>(std::floor(static_cast<float>(place) / (extent / static_cast<float>(parts))));
}

} // namespace

Drop dropAt(const DragPointer& pointer, const DragPage& page)
{
    Drop drop;
    drop.cell =
        quarter(pointer.y, pointer.frameHeight, Rows) * Columns + quarter(pointer.x, pointer.frameWidth, Columns);
    const bool turns = pointer.x > TurnEdge;
    if (page.upperBound > Cells && drop.cell >= Cells && turns) {
        drop.turn = PageTurn::Forward;
        drop.cell %= Cells;
    } else if (drop.cell < 0 && page.page > 1 && turns) {
        drop.turn = PageTurn::Back;
        drop.cell += Cells;
    } else if (drop.cell < 0) {
        drop.cell = 0;
    } else {
        drop.cell = std::min(drop.cell, page.upperBound - 1 - (page.page - 1) * Cells);
    }
    return drop;
}

Insertion insertionAt(std::int32_t pointerX, float cellLeft, std::int32_t cellPosition)
{
    if (static_cast<float>(pointerX) - cellLeft < static_cast<float>(HalfCell))
        return {cellLeft + MarkInFront, -cellPosition};
    return {cellLeft + MarkBehind, cellPosition};
}

} // namespace trovarium
