// SPDX-License-Identifier: GPL-3.0-or-later

#include "MainWindow.h"

#include "browser/DropGeometry.h"

namespace trovarium {

struct ThumbnailDragTest : MainWindow {
    // From the middle of a cell to a place of the frame, by the mouse.
    void drag(int cell, At inFrame, int shift = NoKeys)
    {
        robot.press(main().imgThumbnail(cell), LeftButton, shift);
        robot.moveTo(main().pctWindow, inFrame);
        robot.release();
    }
    // The left half of a cell of the first row; the right half is 60 pixels on, the next row 112 below.
    static At leftOf(int column) { return {44 + 128 * static_cast<float>(column), 66}; }
    // A place of the window on a row of the list: rows are 31 pixels high, 32 apart, and their edges outside.
    static At onRow(int row) { return {100, 90 + 32 * static_cast<float>(row)}; }

    bool marksShow()
    {
        EXPECT_EQ(main().shpDropPosition.Visible(), main().shpThumbnailSelect(16).Visible());
        return main().shpDropPosition.Visible();
    }
};

TEST(DropGeometryTest, ThePointerAimsAtAQuarterOfTheFrameAndTurnsPagesAtItsEdges)
{
    using enum PageTurn;
    struct Case {
        int x, y, page, photos, cell;
        PageTurn turn;
    };
    for (const auto& [x, y, page, photos, cell, turn] :
        {Case{.x = 136, .y = 117, .page = 1, .photos = 40, .cell = 0, .turn = None}, {137, 118, 1, 40, 5, None},
            {544, 468, 1, 40, 15, None}, {10, 469, 1, 40, 0, Forward}, {545, 460, 1, 40, 0, Forward},
            {545, 10, 1, 40, 4, None},                              // right of the first row
            {10, 480, 1, 16, 15, None}, {300, 300, 3, 40, 7, None}, // groups and pages that are too short
            {10, -1, 2, 40, 12, Back}, {300, -1, 1, 40, 0, None}, {-14, 10, 2, 40, 15, Back},
            {-15, 10, 2, 40, 0, None}}) { // on the way to the list
        const Drop drop = dropAt({x, y, 545, 469}, {page, photos});
        EXPECT_EQ(std::pair(drop.cell, drop.turn), std::pair(cell, turn)) << x << " " << y << " " << page;
    }
}

TEST_F(ThumbnailDragTest, ADropMovesTheSelectionAsOneBlock)
{
    openGroup(6, 8);
    struct Case {
        Positions selected;
        int cell;
        At place;
        const char* order;
    };
    for (const auto& [selected, cell, place, order] :
        {Case{.selected = {}, .cell = 4, .place = leftOf(0), .order = "512346"},
            {{}, 0, {232, 178}, "123465"}, // the right half of a cell of the second row
            {{}, 0, {500, 440}, "234651"}, // past the end lands behind the last
            {{}, 1, leftOf(1), "234651"}, {{1, 6}, 3, leftOf(2), "326145"}}) {
        select(selected);
        drag(cell, place, CtrlKey);
        EXPECT_EQ(numbersOf("Alps"), order);
        EXPECT_EQ(main().lbStatusSelected.Caption(), "Selected 0");
        EXPECT_EQ(cells(), linesOf("Alps"));
    }
    robot.click(main().pctArrows(2));
    drag(2, leftOf(0));
    EXPECT_EQ(numbersOf("Alps") + "|" + numbersOf("h1"), "632145|") << "the group on show, whatever stands on its row";
}

TEST_F(ThumbnailDragTest, ADropOnARowCopiesThereOnce)
{
    const At between{20, 80 + 31};
    const At start{204 + 24 + 2 * 128 + 52, 40 + 66}; // within 200 twips of the press
    struct Case {
        std::vector<At> way;
        int pointer;
        const char *list, *numbers;
    };
    openGroup(4);
    for (const auto& [way, pointer, list, numbers] :
        {Case{.way = {onRow(0)}, .pointer = OwnPointer, .list = "  All Photos  ", .numbers = "123413"},
            {{onRow(6)}, OwnPointer, "Label3", "13"}, // a hidden row, by the name that it had last
            {{onRow(2), between}, NoDropPointer, "Rome", "9"}, {{onRow(2), start}, DefaultPointer, "Alps", "2134"}}) {
        SCOPED_TRACE(list);
        putGroup("Rome", {"p9.jpg"});
        putGroup("Alps", names(4));
        pressRowNamed("Alps");
        select({1});
        robot.press(main().imgThumbnail(2), LeftButton, CtrlKey);
        robot.moveTo(main(), At{400, 200});
        for (const At& place : way)
            robot.moveTo(main(), place);
        EXPECT_EQ(main().imgThumbnail(2).MousePointer(), pointer);
        EXPECT_EQ(marksShow(), pointer == DefaultPointer);
        robot.release();
        EXPECT_EQ(main().imgThumbnail(2).MousePointer(), DefaultPointer);
        EXPECT_EQ(selectedPositions(), pointer == DefaultPointer ? Positions{} : (Positions{1, 3}));
        robot.click(main().imgThumbnail(3), MiddleButton);
        EXPECT_EQ(numbersOf(list), numbers);
    }
}

TEST_F(ThumbnailDragTest, EscapeOrAMenuCancelsADrag)
{
    openGroup(4);
    for (const bool byKey : {true, false}) {
        robot.press(main().imgThumbnail(2));
        robot.moveTo(main(), onRow(2));
        if (byKey) {
            robot.key(main(), EscapeKey);
            robot.moveTo(main(), At{21, 150});
        } else {
            robot.whenMenuOpens([&] { robot.dismissMenu(); });
            robot.press(main().imgThumbnail(2), RightButton);
        }
        EXPECT_FALSE(marksShow());
        robot.release();
        robot.moveTo(main().imgThumbnail(0), At{2, 2});
        EXPECT_FALSE(marksShow());
        EXPECT_EQ(main().imgThumbnail(2).MousePointer(), DefaultPointer);
        EXPECT_EQ(linesOf("Rome"), Names{"old.jpg"});
    }
}

TEST_F(ThumbnailDragTest, AListThatSomebodyElseChangedOrDeletedIsReadAgainAndNotWritten)
{
    const auto reorder = [&] { drag(2, leftOf(0), CtrlKey); };
    const auto move = [&] { main().groupCommands().MoveToGroup("Rome.lst"); };
    const auto remove = [&] {
        prompts.expectQuestion("Are you sure you want to remove the photograph(s) from this group?", Answer::Yes);
        robot.choose(main().mnuEditRemoveFromGroup);
    };
    openGroup(4);
    for (const std::function<void()>& act : std::initializer_list<std::function<void()>>{reorder, move, remove}) {
        for (const bool isGone : {false, true}) {
            putGroup("Alps", names(4));
            pressRowNamed("Alps");
            select({1});
            if (isGone)
                test.files().remove(test.paths().SlideGroupPath + "Alps.lst");
            else
                putGroup("Alps", {"p1.jpg", "p4.jpg"});
            const auto before = test.allFiles();
            if (isGone)
                main().groupCommands().AddToGroup("Alps.lst"); // as a drop on its row
            act();
            EXPECT_EQ(cells(), linesOf("Alps"));
            EXPECT_EQ(main().lbStatusSelected.Caption(), "Selected 0");
            EXPECT_EQ(test.allFiles(), before);
        }
    }
}

} // namespace trovarium
