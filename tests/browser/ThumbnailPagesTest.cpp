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
    openGroup(0);
    for (const auto& [photos, pages, onLastPage] : {std::tuple{0, 1, 0}, {16, 1, 16}, {17, 2, 1}, {1000, 63, 8}}) {
        SCOPED_TRACE(photos);
        const Names lines = names(photos);
        putGroup("Rome", lines);
        pressRowNamed("Alps");
        pressRowNamed("Rome");
        EXPECT_EQ(main().VScroll1.Max(), pages);
        EXPECT_EQ(main().VScroll1.Enabled(), photos > 16);
        const std::string place = (photos == 0 ? "0 of " : "1 of ") + std::to_string(photos);
        EXPECT_EQ(main().lbStatusCount.Caption() + main().lbCount.Caption(),
            "Photo " + place + "Group [Rome] Viewing " + place);
        main().VScroll1.Value = pages;
        EXPECT_EQ(cells(), Names(lines.end() - onLastPage, lines.end()));
        EXPECT_EQ(page(), "Page " + std::to_string(pages) + " of " + std::to_string(pages));
    }
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
}

} // namespace trovarium
