#include "browser/DropGeometry.h"

#include <gtest/gtest.h>

namespace trovarium {

namespace {

constexpr float FrameWidth = 545;
constexpr float FrameHeight = 469;

Drop at(int x, int y, int page, int photos)
{
    return dropAt({x, y, FrameWidth, FrameHeight}, {page, photos});
}

} // namespace

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
        const Drop drop = at(c.x, c.y, c.page, c.photos);
        EXPECT_EQ(drop.cell, c.cell);
        EXPECT_EQ(drop.turn, c.turn);
    }
}

TEST(DropGeometryTest, TheLeftHalfOfACellIsInFrontOfItAndTheRestBehind)
{
    struct Case {
        int x;
        float cellLeft;
        int position;
        float mark;
        int dropPosition;
    };
    for (const Case& c : {Case{24, 24, 1, 9, -1}, Case{73, 24, 1, 9, -1}, Case{74, 24, 1, 137, 1},
             Case{0, 24, 17, 9, -17}, Case{500, 408, 20, 521, 20}}) {
        SCOPED_TRACE(c.x);
        const Insertion insertion = insertionAt(c.x, c.cellLeft, c.position);
        EXPECT_EQ(insertion.markLeft, c.mark);
        EXPECT_EQ(insertion.position, c.dropPosition);
    }
}

} // namespace trovarium
