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
    for (const auto& [photos, pages, place] :
        {std::tuple{0, 1, "0 of 0"}, {16, 1, "1 of 16"}, {17, 2, "1 of 17"}, {1000, 63, "1 of 1000"}}) {
        putGroup("Rome", names(photos));
        pressRowNamed("Alps");
        pressRowNamed("Rome");
        EXPECT_EQ(main().VScroll1.Max(), pages);
        EXPECT_EQ(main().VScroll1.Enabled(), pages > 1);
        EXPECT_EQ(main().lbStatusCount.Caption(), std::string("Photo ") + place);
        EXPECT_EQ(main().lbCount.Caption(), std::string("Group [Rome] Viewing ") + place);
        main().VScroll1.Value = pages;
    }
    EXPECT_EQ(page() + " " + cells().back() + " " + std::to_string(cells().size()), "Page 63 of 63 p1000.jpg 8");
    for (int cell = 0; cell < 8; ++cell)
        EXPECT_TRUE(main().imgThumbnail(cell).Picture().empty()) << "no thumbnail, and no old picture";
}

TEST_F(ThumbnailPagesTest, APageTakesTheFrameBackFromAPhotograph)
{
    openGroup(2);
    select({1, 2});
    robot.doubleClick(main().imgThumbnail(1));
    EXPECT_EQ(selectedPositions(), Positions{});
    EXPECT_EQ(main().lbStatusCount.Caption(), "Photo 2 of 2");
    for (const bool isPhotograph : {true, false}) {
        EXPECT_EQ(main().imgbox.Visible(), isPhotograph);
        EXPECT_EQ(main().VScroll1.Visible(), !isPhotograph);
        EXPECT_EQ(cells(), isPhotograph ? Names{} : names(2));
        pressRowNamed("Alps");
    }
    view().ViewMode = ViewPhoto;
    EXPECT_TRUE(main().pages().ShowThumbnailBoxes(false) && view().ViewMode == ViewPhoto);
    EXPECT_TRUE(main().pages().ShowThumbnailBoxes(true) && view().ViewMode == ViewThumbnails);
    EXPECT_EQ(cells().size(), 16U) << "all of them";
}

} // namespace trovarium
