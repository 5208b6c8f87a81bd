#include "browser/DropGeometry.h"

#include <gtest/gtest.h>

#include <tuple>

namespace trovarium {

TEST(DropGeometryTest, ThePointerAimsAtAQuarterOfTheFrameAndTurnsPagesAtItsEdges)
{
    struct Case {
        const char* what;
        int x, y, page, photos;
        int cell;
        PageTurn turn;
    };
    constexpr Case Cases[] = {
        {"first cell", 0, 0, 1, 40, 0, PageTurn::None},
        {"a quarter ends at 136", 136, 117, 1, 40, 0, PageTurn::None},
        {"and the next begins at 137", 137, 118, 1, 40, 5, PageTurn::None},
        {"last cell", 544, 468, 1, 40, 15, PageTurn::None},
        {"below the frame", 10, 469, 1, 40, 0, PageTurn::Forward},
        {"below on the last page", 10, 469, 3, 40, 0, PageTurn::Forward},
        {"right of the last row", 545, 460, 1, 40, 0, PageTurn::Forward},
        {"right of the first row", 545, 10, 1, 40, 4, PageTurn::None},
        {"below a group of sixteen", 10, 480, 1, 16, 15, PageTurn::None},
        {"below a group of five", 10, 480, 1, 5, 4, PageTurn::None},
        {"past the end of a short page", 300, 300, 3, 40, 7, PageTurn::None},
        {"above page two", 10, -1, 2, 40, 12, PageTurn::Back},
        {"above page one", 300, -1, 1, 40, 0, PageTurn::None},
        {"just left of the first row", -14, 10, 2, 40, 15, PageTurn::Back},
        {"on the way to the list", -15, 10, 2, 40, 0, PageTurn::None},
        {"left of the second row", -15, 130, 2, 40, 3, PageTurn::None},
        {"left below the frame turns nothing", -15, 480, 1, 40, 15, PageTurn::None},
    };
    for (const Case& c : Cases) {
        SCOPED_TRACE(c.what);
        const Drop drop = dropAt({c.x, c.y, 545, 469}, {c.page, c.photos});
        EXPECT_EQ(drop.cell, c.cell);
        EXPECT_EQ(drop.turn, c.turn);
    }
}

TEST(DropGeometryTest, TheLeftHalfOfACellIsInFrontOfItAndTheRestBehind)
{
    for (const auto& [x, cellLeft, position, mark, dropPosition] :
        {std::tuple{24, 24.0F, 1, 9.0F, -1}, {73, 24.0F, 1, 9.0F, -1}, {74, 24.0F, 1, 137.0F, 1},
            {0, 24.0F, 17, 9.0F, -17}, {500, 408.0F, 20, 521.0F, 20}}) {
        const Insertion insertion = insertionAt(x, cellLeft, position);
        EXPECT_EQ(insertion.markLeft, mark) << x;
        EXPECT_EQ(insertion.position, dropPosition) << x;
    }
}

} // namespace trovarium
