#include "MainWindow.h"

namespace trovarium {

using GroupListTest = MainWindow;

TEST_F(GroupListTest, TheListMovesOneRowAClickAndStopsAtItsEnds)
{
    // Which arrows show above and below the first row of the list.
    const auto arrows = [this] {
        return (main().pctArrows(0).Visible() ? "up " : "") + rows().front()
            + (main().pctArrows(2).Visible() ? " down" : "");
    };
    openGroup(3, 5);
    EXPECT_EQ(arrows(), "  All Photos  ");
    putGroup("h6", {});
    putGroup("h7", {});
    main().groupList().LoadGroupNames();
    pressRow(0);
    EXPECT_EQ(arrows(), "  All Photos   down");
    robot.click(main().pctArrows(2));
    EXPECT_EQ(arrows() + rows().back(), "up Alps downh7");
    EXPECT_EQ(brightRows(), Positions{}) << "a redraw goes back to dark";
    robot.click(main().pctArrows(2));
    main().groupList().LoadGroupNames();
    EXPECT_EQ(arrows(), "up h1") << "the names read anew stay where they are";
    robot.click(main().pctArrows(0));
    EXPECT_EQ(arrows(), "up Alps down");
    EXPECT_FALSE(main().pctArrows(1).Visible()) << "the pressed arrow is hidden again";
}

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

TEST_F(GroupListTest, AGroupOfAnySizeHasItsPages)
{
    openGroup(2);
    for (const auto& [photos, pages, place] : {std::tuple{17, 2, "1 of 17"}, {16, 1, "1 of 16"}, {0, 1, "0 of 0"}}) {
        putGroup("Rome", names(photos));
        pressRowNamed("Alps");
        pressRowNamed("Rome");
        EXPECT_EQ(main().VScroll1.Max(), pages);
        EXPECT_EQ(main().VScroll1.Enabled(), pages > 1);
        EXPECT_EQ(main().lbCount.Caption(), std::string("Group [Rome] Viewing ") + place);
        EXPECT_EQ(main().imgThumbnail(0).Picture().empty(), photos == 0);
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
