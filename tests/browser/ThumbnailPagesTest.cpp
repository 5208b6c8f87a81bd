#include "MainWindow.h"

#include "browser/GroupListPane.h"
#include "browser/ThumbnailPages.h"
#include "platform/toolkit/Desktop.h"

#include <tuple>
#include <utility>

namespace trovarium {

using ThumbnailPagesTest = MainWindow;

TEST_F(ThumbnailPagesTest, PagesBarAndTextsFollowTheSizeOfTheGroup)
{
    for (const auto& [photos, pages, onLastPage] :
        {std::tuple{0, 1, 0}, {1, 1, 1}, {16, 1, 16}, {17, 2, 1}, {32, 2, 16}, {33, 3, 1}, {1000, 63, 8}}) {
        const std::string count = std::to_string(photos);
        SCOPED_TRACE(count);
        const Names lines = names(photos);
        putGroup(count, lines);
        open();
        main().groupList().LoadGroupNames();
        pressRowNamed(count);
        EXPECT_EQ(main().VScroll1.Min(), 1);
        EXPECT_EQ(main().VScroll1.Max(), pages);
        EXPECT_EQ(main().VScroll1.Enabled(), photos > 16);
        EXPECT_EQ(page(), "Page 1 of " + std::to_string(pages));
        const std::string place = photos == 0 ? "0 of 0" : "1 of " + count;
        EXPECT_EQ(main().lbStatusCount.Caption(), "Photo " + place);
        EXPECT_EQ(main().lbCount.Caption(), std::string("Group [").append(count) + "] Viewing " + place);
        main().VScroll1.Value = pages;
        EXPECT_EQ(cells(), Names(lines.end() - onLastPage, lines.end()));
        EXPECT_EQ(page(), "Page " + std::to_string(pages) + " of " + std::to_string(pages));
    }
}

TEST_F(ThumbnailPagesTest, AShrunkGroupFallsBackToItsLastPage)
{
    openGroup(33);
    main().VScroll1.Value = 3;
    select({33});
    prompts.expectQuestion("Are you sure you want to remove the photograph(s) from this group?", Answer::Yes);
    robot.choose(main().mnuEditRemoveFromGroup);
    EXPECT_EQ(page(), "Page 2 of 2");
    EXPECT_EQ(cells().back(), "p32.jpg");
}

TEST_F(ThumbnailPagesTest, ACellWithoutAThumbnailHasItsNameAndNoPicture)
{
    const Names lines{"p1.jpg", "", "p2.jpg", "p3.jpg"};
    putPhotos(names(3));
    desktop.files().remove(test.paths().ThumbnailPath + "p2.jpg");
    test.put(test.paths().ThumbnailPath + "p3.jpg", "no picture");
    putGroup("Alps", lines);
    putGroup("Rome", Names(4, "p1.jpg"));
    open();
    pressRowNamed("Rome");
    pressRowNamed("Alps");
    EXPECT_EQ(cells(), lines);
    for (int cell = 0; cell < 4; ++cell)
        EXPECT_EQ(main().imgThumbnail(cell).Picture().empty(), cell > 0) << "an old picture stays behind";
    robot.click(main().imgThumbnail(2));
    EXPECT_EQ(selectedPositions(), Positions{3}) << "the cell stays live";
}

TEST_F(ThumbnailPagesTest, AListThatCantBeReadLeavesTheOldGroupOnShow)
{
    test.putGroup("a.b.lst", {"x.jpg"}); // its name is cut at the first dot
    openGroup(20);
    test.failAt(FileOperation::Open, "Rome.lst");
    for (const char* name : {"Rome", "a"}) {
        pressRowNamed(name);
        EXPECT_EQ(main().groupList().SelectedGroupName, name);
        EXPECT_EQ(group().CurrentGroupName, "Alps");
        EXPECT_EQ(cells(), names(16));
        EXPECT_EQ(main().VScroll1.Max(), 2);
    }
    EXPECT_EQ(logLines(), Names{});
}

TEST_F(ThumbnailPagesTest, APageTakesTheFrameBackFromAPhotograph)
{
    openGroup(2);
    select({1, 2});
    robot.doubleClick(main().imgThumbnail(1));
    EXPECT_EQ(selectedPositions(), Positions{});
    EXPECT_EQ(main().pctBox(0).Picture().width(), 40);
    EXPECT_TRUE(main().imgbox.Visible());
    EXPECT_EQ(main().lbStatusCount.Caption(), "Photo 2 of 2");
    EXPECT_EQ(cells(), Names{});
    EXPECT_FALSE(main().VScroll1.Visible() || main().VScroll1.Enabled());
    pressRowNamed("Alps");
    EXPECT_FALSE(main().imgbox.Visible());
    EXPECT_TRUE(main().VScroll1.Visible());
    EXPECT_EQ(cells(), names(2));
    view().ViewMode = ViewPhoto;
    EXPECT_TRUE(main().pages().ShowThumbnailBoxes(false) && view().ViewMode == ViewPhoto);
    EXPECT_TRUE(main().pages().ShowThumbnailBoxes(true) && view().ViewMode == ViewThumbnails);
    EXPECT_EQ(cells().size(), 16U) << "all of them";
    EXPECT_TRUE(main().VScroll1.Visible());
}

TEST_F(ThumbnailPagesTest, APageTurnedWhileAGroupOpensStandsWhole)
{
    putGroup("Alps", names(20));
    open();
    for (const char* group : {"another", "the one on show"}) {
        SCOPED_TRACE(group);
        bool turned = false;
        desktop.files().setFaultHook([&](FileOperation /*operation*/, std::string_view path) {
            if (!path.ends_with("p3.jpg") || std::exchange(turned, true))
                return;
            robot.atNextTurn([&] { main().VScroll1.page(1); });
            main().lbCount.Left = main().lbCount.Left() + 1; // what moved has the next turn look at everything
        });
        pressRowNamed("Alps");
        EXPECT_EQ(cells(), (Names{"p17.jpg", "p18.jpg", "p19.jpg", "p20.jpg"}));
        EXPECT_EQ(page(), "Page 2 of 2");
        EXPECT_EQ(main().VScroll1.Value(), 2);
        desktop.files().setFaultHook({});
        main().VScroll1.Value = 1;
    }
}

} // namespace trovarium
