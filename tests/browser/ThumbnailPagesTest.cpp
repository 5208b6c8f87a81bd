#include "MainWindow.h"

namespace trovarium {

using ThumbnailPagesTest = MainWindow;

TEST_F(ThumbnailPagesTest, AGroupOfAnySizeHasItsPagesAndAPageTakesTheFrameBackFromAPhotograph)
{
    openGroup(2);
    for (const auto& [photos, pages, place] :
        {std::tuple{17, 2, "1 of 17"}, {16, 1, "1 of 16"}, {0, 1, "0 of 0"}, {1000, 63, "1 of 1000"}}) {
        putGroup("Rome", names(photos));
        pressRowNamed("Alps");
        pressRowNamed("Rome");
        EXPECT_EQ(main().VScroll1.Max(), pages);
        EXPECT_EQ(main().VScroll1.Enabled(), pages > 1);
        EXPECT_EQ(main().lbStatusCount.Caption(), std::string("Photo ") + place);
        EXPECT_EQ(main().lbCount.Caption(), std::string("Group [Rome] Viewing ") + place);
        EXPECT_EQ(main().imgThumbnail(0).Picture().empty(), photos == 0);
        main().VScroll1.Value = pages;
    }
    EXPECT_EQ(page() + " " + cells().back() + " " + std::to_string(cells().size()), "Page 63 of 63 p1000.jpg 8");
    EXPECT_TRUE(main().imgThumbnail(0).Picture().empty()) << "no thumbnail, and no old picture";

    pressRowNamed("Alps");
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
