#include "MainWindow.h"

#include "browser/GroupListPane.h"
#include "platform/toolkit/Desktop.h"

namespace trovarium {

namespace {

constexpr const char* AllPhotos = "  All Photos  ";

class GroupListTest : public MainWindow {
protected:
    // Groups "g1", "g2", ... besides that of all photographs, and which arrows show then.
    void openGroups(int count, int photos = 3)
    {
        for (int i = 1; i <= count; ++i)
            putGroup("g" + std::to_string(i), {});
        putGroup(AllPhotos, names(photos));
        open();
    }
    std::string arrows()
    {
        return std::string(main().pctArrows(0).Visible() ? "up" : "") + (main().pctArrows(2).Visible() ? "down" : "");
    }
};

} // namespace

TEST_F(GroupListTest, TheListMovesOneRowAClickAndStopsAtItsEnds)
{
    openGroups(7);
    EXPECT_EQ(rows(), (Names{AllPhotos, "g1", "g2", "g3", "g4", "g5", "g6", "g7"}));
    EXPECT_EQ(arrows(), "");
    putGroup("g8", {});
    putGroup("g9", {});
    main().groupList().LoadGroupNames();
    pressRow(0);
    EXPECT_EQ(arrows(), "down");
    EXPECT_EQ(brightRows(), Positions{0});
    robot.click(main().pctArrows(2));
    EXPECT_EQ(rows(), (Names{"g1", "g2", "g3", "g4", "g5", "g6", "g7", "g8"}));
    EXPECT_EQ(arrows(), "updown");
    EXPECT_EQ(brightRows(), Positions{}) << "a redraw goes back to dark";
    EXPECT_EQ(cells(), names(3)) << "scrolling changes no group";
    EXPECT_EQ(main().groupList().CurrentGroupRow, 0);

    robot.click(main().pctArrows(2));
    EXPECT_EQ(rows().back(), "g9");
    EXPECT_EQ(arrows(), "up");
    EXPECT_FALSE(main().groupList().ScrollGroupNames(3)) << "beyond the end";
    EXPECT_FALSE(main().groupList().ScrollGroupNames(-1)) << "before the start";
    main().groupList().LoadGroupNames();
    EXPECT_EQ(rows().front(), "g2") << "the names read anew stay where they are";
    pressRow(0);
    EXPECT_EQ(group().CurrentGroupName, "g2");
    EXPECT_EQ(brightRows(), Positions{0});
    EXPECT_EQ(view().CurrentIndex, 0) << "taken for the group on show, by its row";

    robot.click(main().pctArrows(0));
    robot.click(main().pctArrows(0));
    EXPECT_EQ(rows().front(), AllPhotos);
    EXPECT_EQ(arrows(), "down");
    EXPECT_FALSE(main().pctArrows(1).Visible()) << "the pressed arrow is hidden again";
}

TEST_F(GroupListTest, NamesSortWithoutRegardToCaseBehindTheGroupOfAllPhotographs)
{
    for (const char* name : {"Zebra", "aardvark", "Beach", "apple pie", "  ALL photos  ", "Ägypten"})
        putGroup(name, {});
    for (const char* file : {"a.b.lst", ".lst", "temp.group"})
        test.putGroup(file, {});
    open();
    EXPECT_EQ(rows(), (Names{"", AllPhotos, "a", "aardvark", "apple pie", "Beach", "Zebra", "Ägypten"}));
}

TEST_F(GroupListTest, APressOnARowOpensItsGroupOnPageOne)
{
    putGroup("Alps", names(20, "alp"));
    putGroup("Rome", names(2, "rome"));
    openGroups(0);
    EXPECT_EQ(selectedPositions(), Positions{0}) << "the start selects no photograph and counts one";
    EXPECT_EQ(main().lbStatusSelected.Caption(), "Selected 1");
    EXPECT_EQ(main().lbCount.Caption(), "Group [  All Photos  ] Viewing 0 of 3");
    robot.moveTo(main().lbAlbumList(0));
    EXPECT_EQ(main().lbAlbumList(0).ToolTipText(), "  All Photos   (Right-click for menu.)");

    robot.click(main().lbAlbumList(1));
    EXPECT_EQ(brightRows(), Positions{1});
    EXPECT_EQ(main().lbCount.Caption(), "Group [Alps] Viewing 1 of 20");
    EXPECT_EQ(selectedPositions(), Positions{}) << "another group leaves nothing selected";
    main().VScroll1.Value = 2;
    EXPECT_EQ(cells(), (Names{"alp17.jpg", "alp18.jpg", "alp19.jpg", "alp20.jpg"}));
    view().CurrentIndex = 3;
    pressRowNamed("Alps");
    EXPECT_EQ(page(), "Page 2 of 2") << "the group on show keeps its page";
    EXPECT_EQ(selectedPositions(), Positions{3}) << "and marks the current photograph";
    pressRowNamed("Rome");
    EXPECT_EQ(cells(), names(2, "rome"));
    pressRowNamed("Alps");
    EXPECT_EQ(page(), "Page 1 of 2");
}

TEST_F(GroupListTest, ARightPressShowsTheMenuAndLeavesTheGroupOnShow)
{
    openGroups(9, 5);
    const auto pressMenu = [this](int row, bool canChange) {
        robot.whenMenuOpens([&] {
            EXPECT_EQ(main().mnuGroupRemove.Enabled(), canChange) << "by the row that is pressed";
            EXPECT_EQ(main().mnuGroupRenameGroup.Enabled(), canChange);
            EXPECT_FALSE(main().mnuGroupSort.Enabled());
            robot.dismissMenu();
        });
        pressRow(row, RightButton);
    };
    robot.click(main().pctArrows(2));
    select({2, 3});
    view().ViewMode = ViewPhoto;
    pressMenu(3, true);
    EXPECT_EQ(main().groupList().SelectedGroupName, "g4");
    EXPECT_EQ(group().CurrentGroupName, AllPhotos);
    EXPECT_EQ(selectedPositions(), (Positions{2, 3}));
    EXPECT_EQ(view().ViewMode, ViewThumbnails);

    robot.click(main().pctArrows(0));
    view().CurrentIndex = 4;
    pressMenu(0, false);
    EXPECT_EQ(selectedPositions(), Positions{4}) << "a list that isn't scrolled marks the current photograph";
    pressMenu(1, true);
}

TEST_F(GroupListTest, AFolderThatCantBeListedIsLoggedAndTheHintNeverComes)
{
    test.failAt(FileOperation::List, "", FailureKind::PathNotFound);
    open();
    EXPECT_EQ(logLines(),
        (Names{"An error has occurred in 'LoadGroupNames'. Error = Path not found",
            "An error has occurred in 'Form_Load'. Error = Type mismatch"}));
}

} // namespace trovarium
