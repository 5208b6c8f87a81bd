#include "MainWindow.h"

#include "browser/GroupListPane.h"
#include "browser/Selection.h"
#include "platform/toolkit/Desktop.h"

namespace trovarium {

namespace {

constexpr int Both = ShiftKey | CtrlKey;

using SelectionTest = MainWindow;

} // namespace

TEST_F(SelectionTest, PressesSelectAsInAFileList)
{
    struct Press {
        int cell;
        int shift;
    };
    struct Case {
        const char* what;
        std::vector<Press> presses;
        std::vector<int> positions;
        int count; // counts a photograph once more that was selected already
    };
    const std::vector<Case> cases{
        {"a plain press takes one alone", {{2, NoKeys}, {5, NoKeys}}, {6}, 1},
        {"Ctrl adds", {{2, NoKeys}, {5, CtrlKey}}, {3, 6}, 2},
        {"Ctrl takes away", {{2, NoKeys}, {5, CtrlKey}, {2, CtrlKey}}, {6}, 1},
        {"Shift extends down", {{1, NoKeys}, {4, ShiftKey}}, {2, 3, 4, 5}, 4},
        {"Shift extends up", {{4, NoKeys}, {1, ShiftKey}}, {2, 3, 4, 5}, 4},
        {"Shift without an anchor starts at the first", {{2, ShiftKey}}, {1, 2, 3}, 3},
        {"Shift leaves the anchor where it ended", {{1, NoKeys}, {3, ShiftKey}, {5, ShiftKey}}, {2, 3, 4, 5, 6}, 5},
        {"a range counts the selected ones again", {{1, NoKeys}, {3, ShiftKey}, {1, ShiftKey}}, {2, 3, 4}, 5},
        {"Shift on the anchor changes nothing", {{3, NoKeys}, {3, ShiftKey}}, {4}, 1},
        {"both keys add and count again", {{3, NoKeys}, {3, Both}, {6, Both}}, {4, 7}, 3},
        {"and set the anchor", {{3, NoKeys}, {6, Both}, {8, ShiftKey}}, {4, 7, 8, 9}, 4},
        {"Alt changes nothing", {{3, NoKeys}, {6, AltKey}}, {4}, 1},
        {"a plain press drops a selection of many", {{0, NoKeys}, {4, ShiftKey}, {2, NoKeys}}, {3}, 1},
    };
    openGroup(9);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        main().selection().SetGroupListSelect(-1, NoKeys);
        for (const Press& press : c.presses)
            robot.click(main().imgThumbnail(press.cell), LeftButton, press.shift);
        EXPECT_EQ(selectedPositions(), c.positions);
        EXPECT_EQ(group().SelectedCount, c.count);
        EXPECT_EQ(main().lbStatusSelected.Caption(), "Selected " + std::to_string(c.count));
        const std::string last = std::to_string(c.presses.back().cell + 1);
        EXPECT_EQ(main().lbCount.Caption(), "Group [Alps] Viewing " + last + " of 9");
        EXPECT_EQ(main().lbTitle.Caption(), "p" + last + ".jpg");
        EXPECT_EQ(main().lbInfo(6).Caption(), "p" + last + ".jpg");
    }
    EXPECT_EQ(logLines(), std::vector<std::string>{});
}

TEST_F(SelectionTest, FramesShowOnThePageThatHoldsThePositions)
{
    openGroup(40);
    select({2, 17, 18, 40});
    EXPECT_EQ(framedCells(), std::vector<int>{1});
    main().VScroll1.Value = 2;
    EXPECT_EQ(framedCells(), (std::vector<int>{0, 1}));
    main().VScroll1.Value = 3;
    EXPECT_EQ(framedCells(), std::vector<int>{7});
    EXPECT_EQ(main().lbStatusSelected.Caption(), "Selected 4");
}

TEST_F(SelectionTest, ARightPressJoinsTheSelectionAndOpensTheMenu)
{
    openGroup(6, 8);
    robot.click(main().pctArrows(2)); // so that row 0 isn't that of all photographs
    select({2, 5});
    for (const int row : {1, 0}) {
        main().groupList().CurrentGroupRow = static_cast<std::int16_t>(row);
        robot.whenMenuOpens([&] {
            // By the number of the row, whatever group it shows.
            EXPECT_EQ(main().mnuThumbMove.Enabled(), row != 0);
            EXPECT_EQ(main().mnuThumbRemove.Enabled(), row != 0);
            EXPECT_TRUE(main().mnuThumbAdd.Enabled());
            robot.dismissMenu();
        });
        robot.press(main().imgThumbnail(4), RightButton);
    }
    EXPECT_EQ(selectedPositions(), (std::vector<int>{2, 5}));
    EXPECT_EQ(group().SelectedCount, 4) << "counted again with each press";
    EXPECT_EQ(view().CurrentIndex, 5);
}

TEST_F(SelectionTest, AGroupBeyondSixteenBitsIsLoggedAndStays)
{
    openGroup(3);
    test.showGroup(std::vector<std::string>(32768, "p.jpg"), {7});
    main().selection().SetGroupListSelect(-1, NoKeys);
    EXPECT_EQ(logLines(), std::vector<std::string>{"An error has occurred in 'SetGroupListSelect'. Error = Overflow"});
    EXPECT_EQ(selectedPositions(), std::vector<int>{7});
}

} // namespace trovarium
