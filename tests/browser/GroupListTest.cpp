#include "MainWindow.h"

#include "browser/GroupListPane.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "runtime/Failure.h"

#include <algorithm>

namespace trovarium {

namespace {

constexpr const char* AllPhotos = "  All Photos  ";

class GroupListTest : public MainWindow {
protected:
    // Groups "g01", "g02", ... besides that of all photographs.
    void putGroups(int count)
    {
        for (int i = 1; i <= count; ++i)
            putGroup(nameOf(i), {});
    }
    static std::string nameOf(int i) { return (i < 10 ? "g0" : "g") + std::to_string(i); }
    bool upShows() { return main().pctArrows(0).Visible(); }
    bool downShows() { return main().pctArrows(2).Visible(); }
};

} // namespace

TEST_F(GroupListTest, ArrowsShowOnlyWhereMoreGroupsLie)
{
    struct Case {
        int groups; // with that of all photographs
        std::size_t rows;
        bool down;
    };
    for (const Case& c : {Case{1, 1, false}, Case{8, 8, false}, Case{9, 8, true}, Case{60, 8, true}}) {
        SCOPED_TRACE(c.groups);
        putGroups(c.groups - 1);
        open();
        EXPECT_EQ(rows().size(), c.rows);
        EXPECT_EQ(rows().front(), AllPhotos);
        EXPECT_FALSE(upShows());
        EXPECT_EQ(downShows(), c.down);
        main().unload();
        desktop.DoEvents();
    }
}

TEST_F(GroupListTest, TheListMovesOneRowAClickAndStopsAtItsEnds)
{
    putGroups(9);
    putGroup(AllPhotos, names(3));
    open();
    EXPECT_EQ(brightRow(), 0);
    robot.click(main().pctArrows(2));
    EXPECT_EQ(rows(), (std::vector<std::string>{"g01", "g02", "g03", "g04", "g05", "g06", "g07", "g08"}));
    EXPECT_TRUE(upShows());
    EXPECT_TRUE(downShows());
    EXPECT_EQ(brightRow(), -1) << "a redraw goes back to dark";
    EXPECT_EQ(cells(), names(3)) << "scrolling changes no group";
    EXPECT_EQ(group().CurrentGroupName, AllPhotos);
    EXPECT_EQ(main().groupList().CurrentGroupRow, 0);

    robot.click(main().pctArrows(2));
    EXPECT_EQ(rows().back(), "g09");
    EXPECT_FALSE(downShows());
    EXPECT_FALSE(main().groupList().ScrollGroupNames(3)) << "beyond the end";
    EXPECT_FALSE(main().groupList().ScrollGroupNames(-1)) << "before the start";
    EXPECT_EQ(main().groupList().FirstGroupRow, 2);
    main().groupList().LoadGroupNames();
    EXPECT_EQ(rows().front(), "g02") << "the names read anew stay where they are";
    pressRow(0);
    EXPECT_EQ(group().CurrentGroupName, "g02");
    EXPECT_EQ(brightRow(), 0);
    EXPECT_EQ(view().CurrentIndex, 0) << "taken for the group on show, by its row";

    robot.click(main().pctArrows(0));
    robot.click(main().pctArrows(0));
    EXPECT_EQ(rows().front(), AllPhotos);
    EXPECT_FALSE(upShows());
    EXPECT_FALSE(main().pctArrows(1).Visible()) << "the pressed arrow is hidden again";
}

TEST_F(GroupListTest, NamesSortWithoutRegardToCaseBehindTheGroupOfAllPhotographs)
{
    for (const char* name : {"Zebra", "aardvark", "Beach", "apple pie", "  ALL photos  ", "\xC3\x84gypten"})
        putGroup(name, {});
    test.put(test.paths().SlideGroupPath + "a.b.lst", "");
    test.put(test.paths().SlideGroupPath + "temp.group", "");
    open();
    EXPECT_EQ(rows(),
        (std::vector<std::string>{AllPhotos, "a", "aardvark", "apple pie", "Beach", "Zebra", "\xC3\x84gypten"}));
}

TEST_F(GroupListTest, APressOnARowOpensItsGroupOnPageOne)
{
    putGroup("Alps", names(20, "alp"));
    putGroup("Rome", names(2, "rome"));
    open();
    pressRowNamed("Alps");
    EXPECT_EQ(brightRow(), 1);
    EXPECT_EQ(group().CurrentGroupName, "Alps");
    EXPECT_EQ(main().lbCount.Caption(), "Group [Alps] Viewing 1 of 20");
    EXPECT_TRUE(selectedPositions().empty()) << "another group leaves nothing selected";
    main().VScroll1.Value = 2;
    EXPECT_EQ(cells(), (std::vector<std::string>{"alp17.jpg", "alp18.jpg", "alp19.jpg", "alp20.jpg"}));

    view().CurrentIndex = 3;
    pressRowNamed("Alps");
    EXPECT_EQ(main().lbStatusPage.Caption(), "Page 2 of 2") << "the group on show keeps its page";
    EXPECT_EQ(selectedPositions(), std::vector<int>{3}) << "and marks the current photograph";

    pressRowNamed("Rome");
    EXPECT_EQ(cells(), names(2, "rome"));
    pressRowNamed("Alps");
    EXPECT_EQ(main().lbStatusPage.Caption(), "Page 1 of 2");
}

TEST_F(GroupListTest, ARightPressShowsTheMenuAndLeavesTheGroupOnShow)
{
    putGroup(AllPhotos, names(5));
    putGroups(9);
    open();
    robot.click(main().pctArrows(2));
    select({2, 3});
    view().ViewMode = ViewPhoto;
    robot.whenMenuOpens([&] {
        EXPECT_TRUE(main().mnuGroupRemove.Enabled());
        EXPECT_TRUE(main().mnuGroupRenameGroup.Enabled());
        EXPECT_FALSE(main().mnuGroupSort.Enabled());
        robot.dismissMenu();
    });
    pressRow(3, RightButton);
    EXPECT_EQ(main().groupList().SelectedGroupName, "g04");
    EXPECT_EQ(group().CurrentGroupName, AllPhotos);
    EXPECT_EQ(selectedPositions(), (std::vector<int>{2, 3}));
    EXPECT_EQ(view().ViewMode, ViewThumbnails);

    robot.click(main().pctArrows(0));
    view().CurrentIndex = 4;
    robot.whenMenuOpens([&] {
        EXPECT_FALSE(main().mnuGroupRemove.Enabled());
        EXPECT_FALSE(main().mnuGroupRenameGroup.Enabled());
        robot.dismissMenu();
    });
    pressRow(0, RightButton);
    EXPECT_EQ(selectedPositions(), std::vector<int>{4}) << "a list that isn't scrolled marks the current photograph";
    robot.whenMenuOpens([&] {
        EXPECT_TRUE(main().mnuGroupRemove.Enabled()) << "by the row that is pressed";
        robot.dismissMenu();
    });
    pressRow(1, RightButton);
}

TEST_F(GroupListTest, TheStartSelectsNoPhotographAndCountsOne)
{
    putGroup(AllPhotos, names(3));
    open();
    EXPECT_EQ(selectedPositions(), std::vector<int>{0});
    EXPECT_TRUE(framedCells().empty());
    EXPECT_EQ(main().lbStatusSelected.Caption(), "Selected 1");
    EXPECT_EQ(main().lbCount.Caption(), "Group [  All Photos  ] Viewing 0 of 3");
    robot.moveTo(main().lbAlbumList(0));
    EXPECT_EQ(main().lbAlbumList(0).ToolTipText(), "  All Photos   (Right-click for menu.)");
}

TEST_F(GroupListTest, AFolderThatCantBeListedIsLoggedAndTheHintNeverComes)
{
    desktop.files().setFaultHook([](FileOperation operation, std::string_view) {
        if (operation == FileOperation::List)
            throw Failure(FailureKind::PathNotFound);
    });
    open();
    EXPECT_EQ(logLines(),
        (std::vector<std::string>{"An error has occurred in 'LoadGroupNames'. Error = Path not found",
            "An error has occurred in 'Form_Load'. Error = Type mismatch"}));
    EXPECT_TRUE(prompts.asked().empty());
}

} // namespace trovarium
