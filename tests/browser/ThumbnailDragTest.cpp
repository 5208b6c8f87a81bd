#include "MainWindow.h"

#include "browser/GroupListPane.h"
#include "browser/Selection.h"
#include "browser/ThumbnailDrag.h"
#include "browser/ThumbnailPages.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Keys.h"

#include <algorithm>
#include <random>
#include <utility>

namespace trovarium {

namespace {

class ThumbnailDragTest : public MainWindow {
protected:
    // From the middle of a cell to a place of the frame, by the mouse.
    void drag(int cell, At inFrame, int shift = NoKeys)
    {
        robot.press(main().imgThumbnail(cell), LeftButton, shift);
        robot.moveTo(main().pctWindow, inFrame);
        robot.release();
    }
    // The left or the right half of a cell.
    static At leftOf(int cell) { return {24 + 128.0F * static_cast<float>(cell % 4) + 20, middleOf(cell)}; }
    static At rightOf(int cell) { return {24 + 128.0F * static_cast<float>(cell % 4) + 80, middleOf(cell)}; }
    static float middleOf(int cell)
    {
        const int row = cell / 4;
        return 16 + 112.0F * static_cast<float>(row) + 50;
    }

    bool marksShow()
    {
        EXPECT_EQ(main().shpDropPosition.Visible(), main().shpThumbnailSelect(16).Visible());
        return main().shpDropPosition.Visible();
    }
    std::string order(const std::string& name)
    {
        std::string text;
        for (const std::string& line : linesOf(name))
            text += line.substr(1, line.find('.') - 1) + " ";
        return text;
    }
};

} // namespace

TEST_F(ThumbnailDragTest, ADropMovesTheSelectionAsOneBlock)
{
    openGroup(6);
    drag(4, leftOf(0));
    EXPECT_EQ(order("Alps"), "5 1 2 3 4 6 ");
    EXPECT_EQ(cells().front(), "p5.jpg") << "the page shows the new order";
    EXPECT_EQ(selectedPositions(), std::vector<int>{}) << "the selection is gone";

    drag(0, rightOf(5));
    EXPECT_EQ(order("Alps"), "1 2 3 4 6 5 ");
    drag(0, {500, 440});
    EXPECT_EQ(order("Alps"), "2 3 4 6 5 1 ") << "past the end lands behind the last";

    select({1, 6});
    drag(3, leftOf(2), CtrlKey);
    EXPECT_EQ(order("Alps"), "3 2 6 1 4 5 ");
    EXPECT_EQ(logLines(), std::vector<std::string>{});
}

TEST_F(ThumbnailDragTest, MoreThanTwoHundredTwipsStartADrag)
{
    openGroup(3);
    ThumbnailDrag& drag = main().thumbnailDrag();
    struct Case {
        float x, y;
        bool dragging;
    };
    for (const Case& c : {Case{900, 750, false}, Case{901, 750, true}, Case{500, 750, false}, Case{499, 750, true},
             Case{700, 950, false}, Case{700, 951, true}, Case{900, 550, false}}) {
        SCOPED_TRACE(testing::Message() << c.x << ", " << c.y);
        main().selection().imgThumbnail_MouseDown(0, LeftButton, NoKeys, 700, 750);
        drag.imgThumbnail_MouseMove(0, LeftButton, NoKeys, c.x, c.y);
        EXPECT_EQ(drag.ThumbnailDragging, c.dragging);
        EXPECT_EQ(marksShow(), c.dragging);
        drag.imgThumbnail_MouseUp(0);
        EXPECT_FALSE(drag.ThumbnailDragging);
        EXPECT_FALSE(marksShow());
    }
    EXPECT_EQ(main().imgThumbnail(0).ToolTipText(),
        "Double-click to view. Right-click for menu. Drag-n-drop to rearrange.  [Media File: p1.jpg]");
}

TEST_F(ThumbnailDragTest, APressWithoutAMoveWritesNothing)
{
    openGroup(3);
    int written = 0;
    desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
        if (operation != FileOperation::Open || path.ends_with(".info"))
            return;
        ++written;
    });
    robot.click(main().imgThumbnail(1));
    EXPECT_EQ(written, 0);
}

TEST_F(ThumbnailDragTest, TheFrameFollowsThePointerAndTheMarkStandsBetweenCells)
{
    openGroup(6);
    main().selection().imgThumbnail_MouseDown(0, LeftButton, NoKeys, 300, 450);
    main().thumbnailDrag().imgThumbnail_MouseMove(0, LeftButton, NoKeys, 300 + 1920 + 15, 450 + 30);
    EXPECT_EQ(main().shpThumbnailSelect(16).Left(), 24 + 129);
    EXPECT_EQ(main().shpThumbnailSelect(16).Top(), 16 + 2);
    EXPECT_EQ(main().shpDropPosition.Left(), 152 - 15) << "the left half of the second cell";
    EXPECT_EQ(main().shpDropPosition.Top(), 16);
    EXPECT_EQ(main().thumbnailDrag().DropPosition, -2);
    EXPECT_EQ(main().thumbnailDrag().DropTarget, ThumbnailDrag::ReorderTarget);
    main().thumbnailDrag().imgThumbnail_MouseUp(0);
}

TEST_F(ThumbnailDragTest, EachMovePastTheEdgeTurnsOnePage)
{
    openGroup(40);
    robot.press(main().imgThumbnail(2));
    robot.moveTo(main().pctWindow, At{60, 470});
    EXPECT_EQ(main().lbStatusPage.Caption(), "Page 2 of 3");
    robot.moveTo(main().pctWindow, At{60, 471});
    EXPECT_EQ(main().lbStatusPage.Caption(), "Page 3 of 3");
    robot.moveTo(main().pctWindow, At{60, 472});
    EXPECT_EQ(main().lbStatusPage.Caption(), "Page 3 of 3") << "the last page stays";
    robot.moveTo(main().pctWindow, At{60, -1});
    EXPECT_EQ(main().lbStatusPage.Caption(), "Page 2 of 3");
    robot.moveTo(main().pctWindow, leftOf(0));
    EXPECT_EQ(main().thumbnailDrag().DropPosition, -17);
    robot.release();
    std::vector<std::string> expected = names(40);
    std::rotate(expected.begin() + 2, expected.begin() + 3, expected.begin() + 16);
    EXPECT_EQ(linesOf("Alps"), expected) << "p3 stands behind position 16";
    EXPECT_EQ(main().lbStatusPage.Caption(), "Page 2 of 3");
}

TEST_F(ThumbnailDragTest, AReleaseWhileThePageTurnsLeavesNoMarks)
{
    openGroup(40);
    bool turned = false;
    desktop.files().setFaultHook([&](FileOperation /*operation*/, std::string_view path) {
        if (!path.ends_with("p20.jpg") || std::exchange(turned, true))
            return;
        robot.atNextTurn([&] { robot.release(); });
        main().lbCount.Left = main().lbCount.Left() + 1; // what moved has the next turn look at everything
    });
    robot.press(main().imgThumbnail(2));
    robot.moveTo(main().pctWindow, At{60, 470});
    EXPECT_TRUE(turned);
    EXPECT_FALSE(marksShow());
}

TEST_F(ThumbnailDragTest, ADropOnARowCopiesThereOnceAndStaysOneUntilItsEnd)
{
    // Rows are 31 pixels high, 32 apart, and their edges outside.
    const auto row = [](int number) { return At{100, 90 + 32 * static_cast<float>(number)}; };
    const At frame{400, 200};
    const At between{20, 80 + 31};
    const At start{204 + 24 + 2 * 128 + 52, 40 + 66}; // within 200 twips of the press
    struct Case {
        const char* what;
        std::vector<At> way;
        int target;
        int pointer;
        const char* list;
        std::vector<std::string> lines;
    };
    const std::vector<Case> cases{
        {"a row", {frame, row(2)}, 2, OwnPointer, "Rome", {"old.jpg", "p1.jpg", "p3.jpg"}},
        {"the row of the group on show", {frame, row(1)}, 1, OwnPointer, "Alps",
            {"p1.jpg", "p2.jpg", "p3.jpg", "p4.jpg", "p1.jpg", "p3.jpg"}},
        {"a hidden row, by the name that it had last", {frame, row(6)}, 6, OwnPointer, "Label3", {"p1.jpg", "p3.jpg"}},
        {"off a row again", {frame, row(2), between}, ThumbnailDrag::NoTarget, NoDropPointer, "Rome", {"old.jpg"}},
        {"back near its start", {frame, row(2), start}, ThumbnailDrag::ReorderTarget, DefaultPointer, "Alps",
            {"p2.jpg", "p1.jpg", "p3.jpg", "p4.jpg"}},
    };
    openGroup(4);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        putGroup("Rome", {"old.jpg"});
        putGroup("Alps", names(4));
        pressRowNamed("Alps");
        select({1});
        robot.press(main().imgThumbnail(2), LeftButton, CtrlKey);
        for (const At& place : c.way)
            robot.moveTo(main(), place);
        EXPECT_EQ(main().thumbnailDrag().DropTarget, c.target);
        EXPECT_EQ(main().imgThumbnail(2).MousePointer(), c.pointer);
        EXPECT_EQ(marksShow(), c.target == ThumbnailDrag::ReorderTarget);
        robot.release();
        EXPECT_EQ(main().imgThumbnail(2).MousePointer(), DefaultPointer);
        EXPECT_EQ(main().MousePointer(), DefaultPointer);
        EXPECT_FALSE(marksShow());
        EXPECT_EQ(cells().size(), 4U) << "not shown until the group is loaded again";
        const bool moved = c.target == ThumbnailDrag::ReorderTarget;
        EXPECT_EQ(selectedPositions(), moved ? std::vector<int>{} : (std::vector<int>{1, 3}));
        EXPECT_EQ(framedCells().size(), moved ? 0U : 2U);
        EXPECT_EQ(main().lbStatusSelected.Caption(), moved ? "Selected 0" : "Selected 2");
        robot.click(main().imgThumbnail(3), MiddleButton);
        EXPECT_EQ(linesOf(c.list), c.lines);
    }
}

TEST_F(ThumbnailDragTest, ADragThatAMenuOrADialogBreaksOffDropsNothing)
{
    openGroup(4);
    const auto before = test.allFiles();
    for (const bool menu : {true, false}) {
        for (const At& place : {At{100, 90 + 32 * 2}, At{400, 200}}) {
            SCOPED_TRACE(testing::Message() << (menu ? "menu" : "dialog") << " at " << place.x);
            robot.press(main().imgThumbnail(2));
            robot.moveTo(main(), place);
            if (menu) {
                robot.whenMenuOpens([&] {
                    EXPECT_FALSE(marksShow());
                    robot.dismissMenu();
                });
                robot.press(main().imgThumbnail(2), RightButton);
            } else {
                prompts.expectInput("Rename \"Alps\" group to ...", "");
                robot.key(main(), F2Key);
            }
            robot.release(); // goes to the one or the other
            robot.moveTo(main().imgThumbnail(0));
            EXPECT_FALSE(main().thumbnailDrag().ThumbnailDragging);
            EXPECT_FALSE(marksShow());
            EXPECT_EQ(main().imgThumbnail(2).MousePointer(), DefaultPointer);
            robot.click(main().imgThumbnail(3), MiddleButton);
        }
    }
    EXPECT_EQ(test.allFiles(), before);
}

TEST_F(ThumbnailDragTest, AfterAScrollTheRowAndNotTheGroupOnShowIsWritten)
{
    openGroup(3, 8);
    robot.click(main().pctArrows(2));
    ASSERT_EQ(main().lbAlbumList(1).Caption(), "h1");
    drag(2, leftOf(0));
    EXPECT_EQ(linesOf("Alps"), names(3));
    EXPECT_EQ(order("h1"), "3 1 2 ");
}

TEST_F(ThumbnailDragTest, AThousandDragsKeepTheSameLines)
{
    openGroup(40);
    std::vector<std::string> sorted = names(40);
    std::sort(sorted.begin(), sorted.end());
    main().hide();              // nothing to look at
    std::minstd_rand random(5); // the same drags in every run
    const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int i = 0; i < 1000; ++i) {
        main().VScroll1.Value = 1 + below(3);
        const int cell = below(main().VScroll1.Value() == 3 ? 8 : 16);
        const int shift = below(4);
        main().selection().imgThumbnail_MouseDown(cell, LeftButton, shift, 700, 700);
        for (int move = 1 + below(3); move > 0; --move) {
            // Twips from the cell to anywhere in the frame and a little beyond its edges.
            const float x = static_cast<float>(below(560)) - main().imgThumbnail(cell).Left();
            const float y = static_cast<float>(below(520) - 20) - main().imgThumbnail(cell).Top();
            main().thumbnailDrag().imgThumbnail_MouseMove(
                cell, LeftButton, shift, x * TwipsPerPixel, y * TwipsPerPixel);
        }
        main().thumbnailDrag().imgThumbnail_MouseUp(cell);
        std::vector<std::string> lines = linesOf("Alps");
        std::sort(lines.begin(), lines.end());
        ASSERT_EQ(lines, sorted) << "drag " << i
                                 << (test.isThere(test.paths().SlideGroupPath + "Alps.lst") ? "" : ", no list");
    }
    EXPECT_EQ(logLines(), std::vector<std::string>{});
}

TEST_F(ThumbnailDragTest, AMoveFarAboveIsLoggedAndTheNextOneWorks)
{
    openGroup(40);
    main().VScroll1.Value = 3;
    main().selection().imgThumbnail_MouseDown(0, LeftButton, NoKeys, 700, 700);
    main().thumbnailDrag().imgThumbnail_MouseMove(0, LeftButton, NoKeys, 700, -9000);
    EXPECT_EQ(logLines(),
        std::vector<std::string>{
            "An error has occurred in 'imgThumbnail_MouseMove'. Error = Control array element does not exist"});
    main().thumbnailDrag().imgThumbnail_MouseMove(0, LeftButton, NoKeys, 1500, 700);
    EXPECT_TRUE(marksShow());
    main().thumbnailDrag().imgThumbnail_MouseUp(0);
}

} // namespace trovarium
