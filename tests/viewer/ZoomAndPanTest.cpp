#include "ViewerWindow.h"

namespace trovarium {

namespace {

class ZoomAndPanTest : public ViewerWindow {
protected:
    void openOne()
    {
        putPhoto("p1.jpg", 100, 60);
        openAlbum({"p1.jpg"});
        display(1);
    }
    bool isCentred()
    {
        const Image& picture = main().imgbox;
        return picture.Left() * 2 + picture.Width() == main().pctWindow.ScaleWidth()
            && picture.Top() * 2 + picture.Height() == main().pctWindow.ScaleHeight();
    }
    std::pair<float, float> corner() { return {main().imgbox.Left(), main().imgbox.Top()}; }
};

} // namespace

TEST_F(ZoomAndPanTest, TheLadderSkipsZeroAndGoesOnFromNaturalSizeByItsDirection)
{
    struct Case {
        int direction;
        int level;
        std::string ratio;
        float width;
    };
    openOne();
    for (const Case& c : {Case{+1, 2, "2/1", 200}, Case{+1, 3, "3/1", 300}, Case{-1, 2, "2/1", 200},
             Case{-1, 1, "1/1", 100}, Case{-1, -2, "1/2", 50}, Case{-1, -3, "1/3", 100 / 3.0F}, Case{+1, -2, "1/2", 50},
             Case{+1, -1, "1/1", 100}, Case{+1, 2, "2/1", 200}}) {
        SCOPED_TRACE(c.ratio);
        robot.click(c.direction > 0 ? main().cmdZoomIn : main().cmdZoomOut);
        EXPECT_EQ(view().ZoomLevel, c.level);
        EXPECT_EQ(main().lbZoom.Caption(), "Zoom  " + c.ratio);
        EXPECT_TRUE(main().imgbox.Visible());
        EXPECT_FLOAT_EQ(main().imgbox.Width(), c.width);
        EXPECT_FLOAT_EQ(main().imgbox.Height(), c.width * 0.6F);
        EXPECT_TRUE(isCentred());
    }
    robot.choose(main().mnuViewEnlarge);
    EXPECT_EQ(view().ZoomLevel, 3);
    robot.choose(main().mnuViewReduce);
    EXPECT_EQ(view().ZoomLevel, 2);
}

TEST_F(ZoomAndPanTest, TheFirstPressFromTheThumbnailsOnlyOpensThePhotograph)
{
    putPhoto("p1.jpg", 100, 60);
    putPhoto("p2.jpg", 700, 60);
    openAlbum({"p1.jpg", "p2.jpg"});
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

TEST_F(ZoomAndPanTest, ALevelBeyondSixteenBitsHidesThePictureAndIsLogged)
{
    openOne();
    view().ZoomLevel = 32'766;
    robot.click(main().cmdZoomIn);
    EXPECT_EQ(main().lbZoom.Caption(), "Zoom  32767/1");
    EXPECT_TRUE(main().imgbox.Visible());
    robot.click(main().cmdZoomIn);
    EXPECT_FALSE(main().imgbox.Visible());
    EXPECT_EQ(view().ZoomLevel, 32'767);

    view().ZoomLevel = -32'768;
    robot.click(main().cmdZoomOut);
    EXPECT_FALSE(main().imgbox.Visible());
    EXPECT_EQ(logLines(),
        (std::vector<std::string>{logged("cmdZoomIn_Click", "Overflow"), logged("cmdZoomOut_Click", "Overflow")}));
}

TEST_F(ZoomAndPanTest, ADraggedPictureFollowsTheMouseAndTheNextStepBringsItBack)
{
    openOne();
    Image& picture = main().imgbox;
    const auto [left, top] = corner();
    for (const int button : {LeftButton, RightButton}) {
        robot.press(picture, button, NoKeys, At{10, 10});
        EXPECT_EQ(picture.MousePointer(), FourWayPointer);
        robot.moveTo(picture, At{30, 25});
        EXPECT_EQ(corner(), std::pair(left + 20, top + 15));
        robot.moveTo(picture, At{10, 10}); // where the mouse is now
        EXPECT_EQ(corner(), std::pair(left + 20, top + 15)) << "the start point has come back";
        robot.moveTo(picture, At{1010, -990});
        EXPECT_EQ(corner(), std::pair(left + 1020, top - 985)) << "the frame is no limit";
        robot.release();
        EXPECT_EQ(picture.MousePointer(), DefaultPointer);
        robot.click(main().cmdZoomIn);
        EXPECT_TRUE(isCentred());
        robot.click(main().cmdZoomOut);
        EXPECT_EQ(corner(), std::pair(left, top));
    }
}

} // namespace trovarium
