#include "ViewerWindow.h"

#include <tuple>

namespace trovarium {

class ZoomAndPanTest : public ViewerWindow {
protected:
    ZoomAndPanTest()
    {
        putPhoto("p1.jpg", 100, 60);
        putPhoto("p2.jpg", 700, 60);
        openAlbum({"p1.jpg", "p2.jpg"});
    }
};

TEST_F(ZoomAndPanTest, TheLadderSkipsZeroAndGoesOnFromNaturalSizeByItsDirection)
{
    display(1);
    for (const auto& [direction, level, ratio, width] : {std::tuple{+1, 2, "2/1", 200.0F}, {+1, 3, "3/1", 300.0F},
             {-1, 2, "2/1", 200.0F}, {-1, 1, "1/1", 100.0F}, {-1, -2, "1/2", 50.0F}, {-1, -3, "1/3", 100 / 3.0F},
             {+1, -2, "1/2", 50.0F}, {+1, -1, "1/1", 100.0F}, {+1, 2, "2/1", 200.0F}}) {
        SCOPED_TRACE(ratio);
        robot.click(direction > 0 ? main().cmdZoomIn : main().cmdZoomOut, LeftButton, NoKeys, BesideLabel);
        EXPECT_EQ(view().ZoomLevel, level);
        EXPECT_EQ(main().lbZoom.Caption(), std::string("Zoom  ") + ratio);
        EXPECT_TRUE(frameShows(width, width * 0.6F));
    }
    robot.choose(main().mnuViewEnlarge);
    EXPECT_EQ(view().ZoomLevel, 3);
    robot.choose(main().mnuViewReduce);
    EXPECT_EQ(view().ZoomLevel, 2);
    for (const auto& [level, button] : {std::pair{32'767, &main().cmdZoomIn}, {-32'768, &main().cmdZoomOut}}) {
        view().ZoomLevel = static_cast<std::int16_t>(level);
        robot.click(*button);
        EXPECT_FALSE(main().imgbox.Visible());
        EXPECT_EQ(view().ZoomLevel, level);
    }
    EXPECT_EQ(logLines(), (Names{logged("cmdZoomIn_Click", "Overflow"), logged("cmdZoomOut_Click", "Overflow")}));
}

TEST_F(ZoomAndPanTest, TheFirstPressFromTheThumbnailsOnlyOpensThePhotograph)
{
    for (PictureButton* button : {&main().cmdZoomIn, &main().cmdZoomOut}) {
        pressRowNamed("Alps");
        robot.click(main().imgThumbnail(1));
        view().ZoomLevel = 7;
        robot.click(*button);
        EXPECT_EQ(view().ZoomLevel, -2);
        EXPECT_TRUE(frameShows(350, 30));
        EXPECT_EQ(view().ViewMode, ViewPhoto);
        EXPECT_EQ(button->Picture(), main().pctDarkSmall.Picture());
    }
}

TEST_F(ZoomAndPanTest, ADraggedPictureFollowsTheMouseAndTheNextStepBringsItBack)
{
    display(1);
    Image& picture = main().imgbox;
    for (const int button : {LeftButton, RightButton}) {
        robot.moveTo(picture, At{5, 5});
        EXPECT_TRUE(frameShows(100, 60));
        robot.press(picture, button, NoKeys, At{10, 10});
        EXPECT_EQ(picture.MousePointer(), FourWayPointer);
        robot.moveTo(picture, At{30, 25});
        robot.moveTo(picture, At{10, 10}); // where the mouse is now: the start point has come back
        EXPECT_EQ(place(picture), place(222.5F + 20, 204.5F + 15, 100, 60));
        robot.moveTo(picture, At{1010, -990});
        EXPECT_EQ(place(picture), place(222.5F + 1020, 204.5F - 985, 100, 60)) << "the frame is no limit";
        robot.release();
        EXPECT_EQ(picture.MousePointer(), DefaultPointer);
        robot.click(main().cmdZoomIn);
        robot.click(main().cmdZoomOut);
    }
}

} // namespace trovarium
