// SPDX-License-Identifier: GPL-3.0-or-later

#include "MainWindow.h"

namespace trovarium {

using GroupListTest = MainWindow;

TEST_F(GroupListTest, APressOnARowOpensItsGroupOnPageOneAndARightPressItsMenu)
{
    for (const char* file : {"Zebra.lst", "aardvark.lst", "Beach.lst", "temp.group"})
        test.putGroup(file, {});
    putGroup("a.b", names(20));
    putGroup("a", names(20));
    putGroup("  All Photos  ", names(20));
    open();
    EXPECT_EQ(rows(), (Names{"  All Photos  ", "a", "a", "aardvark", "Beach", "Zebra"}));
    EXPECT_EQ(main().lbStatusSelected.Caption(), "Selected 1") << "the start counts one, and selects none";
    EXPECT_EQ(main().lbCount.Caption(), "Group [  All Photos  ] Viewing 0 of 20");
    robot.click(main().lbAlbumList(1));
    EXPECT_EQ(brightRows(), Positions{1});
    EXPECT_EQ(main().lbStatusSelected.Caption(), "Selected 0") << "another group leaves nothing selected";
    main().VScroll1.Value = 2;
    view().CurrentIndex = 3;
    for (const int row : {3, 0}) {
        view().ViewMode = ViewPhoto;
        robot.whenMenuOpens([&] { robot.dismissMenu(); });
        pressRow(row, RightButton);
        for (const Menu* entry : {&main().mnuGroupRemove, &main().mnuGroupRenameGroup})
            EXPECT_EQ(entry->Enabled(), row != 0) << "by the row that is pressed";
        EXPECT_EQ(group().CurrentGroupName, "a");
        EXPECT_EQ(selectedPositions(), Positions{3}) << "the current photograph is marked";
        EXPECT_EQ(view().ViewMode, ViewThumbnails);
    }
    putGroup("0", {});
    main().groupList().LoadGroupNames();
    // The group on show keeps its page, whatever its row.
    for (const auto& [row, shown] : {std::pair{2, "Page 2 of 2"}, {0, "Page 1 of 2"}}) {
        pressRow(row);
        EXPECT_EQ(page(), shown);
        main().mnuFile.Click.raise();
        main().mnuEdit.Click.raise();
        for (const Menu* entry : {&main().mnuFileRemove, &main().mnuFileRenameGroup, &main().mnuEditMove})
            EXPECT_EQ(entry->Enabled(), row != 0) << entry->Name();
    }
}

TEST_F(GroupListTest, AGroupThatIsOpenedWhileAnotherOneIsDrawnGetsNoSelection)
{
    openGroup(2);
    bool isPressed = false;
    desktop.files().setFaultHook([&](FileOperation operation, std::string_view) {
        if (operation == FileOperation::Picture && !std::exchange(isPressed, true))
            main().groupList().pctAlbumList_MouseDown(2, LeftButton, NoKeys, 0, 0);
    });
    main().groupList().reopenGroup();
    EXPECT_EQ(group().CurrentGroupName, "Rome");
    EXPECT_EQ(selectedPositions(), Positions{});
}

} // namespace trovarium
