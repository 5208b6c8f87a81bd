#include "MainWindow.h"

#include "browser/GroupCommands.h"
#include "browser/GroupListPane.h"
#include "browser/ThumbnailPages.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "runtime/Failure.h"

#include <utility>

namespace trovarium {

namespace {

using ThumbnailPagesTest = MainWindow;

} // namespace

TEST_F(ThumbnailPagesTest, PagesBarAndTextsFollowTheSizeOfTheGroup)
{
    struct Case {
        int photos;
        int pages;
        std::size_t onLastPage;
    };
    for (const Case& c : {Case{0, 1, 0}, Case{1, 1, 1}, Case{16, 1, 16}, Case{17, 2, 1}, Case{32, 2, 16},
             Case{33, 3, 1}, Case{1000, 63, 8}}) {
        SCOPED_TRACE(c.photos);
        const std::string name = "of " + std::to_string(c.photos);
        putGroup(name, names(c.photos));
        if (!isOpen())
            open();
        main().groupList().LoadGroupNames();
        pressRowNamed(name);
        EXPECT_EQ(main().VScroll1.Min(), 1);
        EXPECT_EQ(main().VScroll1.Max(), c.pages);
        EXPECT_EQ(main().VScroll1.Enabled(), c.photos > 16);
        EXPECT_EQ(main().lbStatusPage.Caption(), "Page 1 of " + std::to_string(c.pages));
        const std::string place = c.photos == 0 ? "0 of 0" : "1 of " + std::to_string(c.photos);
        std::string title = "Group [";
        title.append(name).append("] Viewing ").append(place);
        EXPECT_EQ(main().lbStatusCount.Caption(), "Photo " + place);
        EXPECT_EQ(main().lbCount.Caption(), title);

        main().VScroll1.Value = c.pages;
        EXPECT_EQ(cells().size(), c.onLastPage);
        if (c.photos > 0) {
            EXPECT_EQ(cells().back(), names(c.photos).back());
        }
        EXPECT_EQ(main().lbStatusPage.Caption(), "Page " + std::to_string(c.pages) + " of " + std::to_string(c.pages));
    }
}

TEST_F(ThumbnailPagesTest, AShrunkGroupFallsBackToItsLastPage)
{
    openGroup(60);
    main().VScroll1.Value = 4;
    putGroup("Alps", names(33));
    pressRowNamed("Alps");
    EXPECT_EQ(main().lbStatusPage.Caption(), "Page 3 of 3");
    EXPECT_EQ(cells(), std::vector<std::string>{"p33.jpg"});

    select({33});
    prompts.expectQuestion("Are you sure you want to remove the photograph(s) from this group?", Answer::Yes);
    main().groupCommands().mnuThumbRemove_Click();
    EXPECT_EQ(main().lbStatusPage.Caption(), "Page 2 of 2");
    EXPECT_EQ(cells().back(), "p32.jpg");
    EXPECT_EQ(linesOf("Alps"), names(32));
}

TEST_F(ThumbnailPagesTest, ACellWithoutAThumbnailHasItsNameAndNoPicture)
{
    std::vector<std::string> lines = names(3);
    putPhotos(lines);
    lines.insert(lines.begin() + 1, "");
    desktop.files().remove(test.paths().ThumbnailPath + "p2.jpg");
    test.put(test.paths().ThumbnailPath + "p3.jpg", "no picture");
    putGroup("Alps", lines);
    putGroup("Rome", {"p1.jpg", "p1.jpg", "p1.jpg", "p1.jpg"});
    open();
    pressRowNamed("Rome");
    pressRowNamed("Alps");
    EXPECT_EQ(cells(), lines);
    EXPECT_FALSE(main().imgThumbnail(0).Picture().empty());
    EXPECT_TRUE(main().imgThumbnail(1).Picture().empty()) << "a line without a name takes a cell";
    EXPECT_TRUE(main().imgThumbnail(2).Picture().empty()) << "no old picture stays behind";
    EXPECT_TRUE(main().imgThumbnail(3).Picture().empty());
    robot.click(main().imgThumbnail(2));
    EXPECT_EQ(selectedPositions(), std::vector<int>{3}) << "the cell stays live";
}

TEST_F(ThumbnailPagesTest, AListThatCantBeReadLeavesTheOldGroupOnShow)
{
    test.put(test.paths().SlideGroupPath + "a.b.lst", "x.jpg\r\n"); // its name is cut at the first dot
    openGroup(20);
    desktop.files().setFaultHook([](FileOperation operation, std::string_view path) {
        if (operation == FileOperation::Open && path.ends_with("Rome.lst"))
            throw Failure(FailureKind::PathFileAccess);
    });
    for (const char* name : {"Rome", "a"}) {
        pressRowNamed(name);
        EXPECT_EQ(main().groupList().SelectedGroupName, name);
        EXPECT_EQ(group().CurrentGroupName, "Alps");
        EXPECT_EQ(group().PhotoCount, 20);
        EXPECT_EQ(cells().size(), 16U);
        EXPECT_EQ(main().VScroll1.Max(), 2);
    }
    EXPECT_EQ(logLines(), std::vector<std::string>{});
}

TEST_F(ThumbnailPagesTest, ShowingTheBoxesShowsAllSixteenAndIsTheThumbnailView)
{
    openGroup(3);
    view().ViewMode = ViewPhoto;
    EXPECT_TRUE(main().pages().ShowThumbnailBoxes(false));
    EXPECT_TRUE(cells().empty());
    EXPECT_FALSE(main().VScroll1.Visible());
    EXPECT_EQ(view().ViewMode, ViewPhoto);
    EXPECT_TRUE(main().pages().ShowThumbnailBoxes(true));
    EXPECT_EQ(cells().size(), 16U);
    EXPECT_TRUE(main().VScroll1.Visible());
    EXPECT_EQ(view().ViewMode, ViewThumbnails);
}

TEST_F(ThumbnailPagesTest, APageTakesTheFrameBackFromAPhotograph)
{
    openGroup(2);
    select({1, 2});
    robot.doubleClick(main().imgThumbnail(1));
    EXPECT_EQ(selectedPositions(), std::vector<int>{});
    EXPECT_EQ(main().pctBox(0).Picture().width(), 40);
    EXPECT_TRUE(main().imgbox.Visible());
    EXPECT_EQ(view().ViewMode, ViewPhoto);
    EXPECT_EQ(main().lbStatusCount.Caption(), "Photo 2 of 2");
    EXPECT_TRUE(cells().empty());
    EXPECT_FALSE(main().VScroll1.Enabled());
    pressRowNamed("Alps");
    EXPECT_FALSE(main().imgbox.Visible());
    EXPECT_TRUE(main().VScroll1.Visible());
    EXPECT_EQ(cells(), names(2));
    EXPECT_EQ(view().ViewMode, ViewThumbnails);
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
        EXPECT_EQ(cells(), (std::vector<std::string>{"p17.jpg", "p18.jpg", "p19.jpg", "p20.jpg"}));
        EXPECT_EQ(main().lbStatusPage.Caption(), "Page 2 of 2");
        EXPECT_EQ(main().VScroll1.Value(), 2);
        desktop.files().setFaultHook({});
        main().VScroll1.Value = 1;
    }
}

} // namespace trovarium
