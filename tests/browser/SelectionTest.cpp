// SPDX-License-Identifier: GPL-3.0-or-later

#include "MainWindow.h"

namespace trovarium {

using SelectionTest = MainWindow;

TEST_F(SelectionTest, PressesSelectAsInAFileList)
{
    constexpr int Both = ShiftKey | CtrlKey;
    struct Case {
        std::vector<std::pair<int, int>> presses; // cell, shift
        Positions positions;
        int count; // one that was selected already may count again
        const char* what;
    };
    openGroup(40);
    for (const auto& [presses, positions, count, what] :
        {Case{{{0, NoKeys}, {4, ShiftKey}, {2, NoKeys}}, {3}, 1, "a plain press drops a selection of many"},
            {{{2, NoKeys}, {5, CtrlKey}}, {3, 6}, 2, "Ctrl adds"},
            {{{2, NoKeys}, {5, CtrlKey}, {2, CtrlKey}}, {6}, 1, "Ctrl takes away"},
            {{{2, ShiftKey}}, {1, 2, 3}, 3, "Shift without an anchor starts at the first"},
            {{{1, NoKeys}, {3, ShiftKey}, {1, ShiftKey}}, {2, 3, 4}, 5, "a range counts the selected ones again"},
            {{{3, NoKeys}, {3, Both}, {6, Both}, {8, ShiftKey}}, {4, 7, 8, 9}, 5, "both keys add and count again"},
            {{{3, NoKeys}, {6, AltKey}}, {4}, 1, "Alt changes nothing"}}) {
        SCOPED_TRACE(what);
        select({});
        for (const auto& [cell, shift] : presses)
            robot.click(main().imgThumbnail(cell), LeftButton, shift);
        EXPECT_EQ(selectedPositions(), positions);
        EXPECT_EQ(main().lbStatusSelected.Caption(), "Selected " + std::to_string(count));
        const std::string last = std::to_string(presses.back().first + 1);
        EXPECT_EQ(main().lbCount.Caption(), "Group [Alps] Viewing " + last + " of 40");
        EXPECT_EQ(main().lbInfo(6).Caption(), "p" + last + ".jpg");
    }
}

TEST_F(SelectionTest, ARightPressAddsAndOpensTheMenuOfTheRow)
{
    openGroup(5);
    select({2});
    for (const bool canLeave : {true, false}) {
        main().groupList().CurrentGroupRow = canLeave ? 1 : 0; // by its number, whatever group the row shows
        robot.whenMenuOpens([&] {
            EXPECT_EQ(main().mnuThumbMove.Enabled(), canLeave);
            EXPECT_EQ(main().mnuThumbRemove.Enabled(), canLeave);
            robot.dismissMenu();
        });
        robot.press(main().imgThumbnail(4), RightButton);
    }
    EXPECT_EQ(selectedPositions(), (Positions{2, 5}));
    EXPECT_EQ(group().SelectedCount, 3) << "counted again with each press";
    EXPECT_EQ(view().CurrentIndex, 5);
}

} // namespace trovarium
