#include "ViewerWindow.h"

#include "viewer/PhotoDisplay.h"
#include "viewer/SlideShow.h"

namespace trovarium {

struct PhotoDisplayTest : ViewerWindow {
    // What the operation says of itself.
    bool step(bool forward)
    {
        bool shown = true;
        (main().photoDisplay().*(forward ? &PhotoDisplay::NextPhoto : &PhotoDisplay::PrevPhoto))(shown);
        return shown;
    }
    bool displayed(int position, bool visibly)
    {
        bool shown = true;
        main().photoDisplay().DisplayPhoto(position, visibly, shown);
        return shown;
    }
};

TEST_F(PhotoDisplayTest, APictureIsReducedByTheFirstWholeNumberThatFitsStrictly)
{
    // Reduced to less than 545 by 469; beyond the ladder (0) the small one before it stays on show.
    const std::vector<Photo> photos{{"1.bmp", 544, 468}, {"2.bmp", 545, 60}, {"3.bmp", 60, 469}, {"4.bmp", 4000, 3000},
        {"5.bmp", 20 * 545 - 1, 3}, {"6.bmp"}, {"7.bmp", 20 * 545, 3}, {"8.bmp", 3, 20 * 469}};
    const std::vector<int> reductions{1, 2, 2, 8, 20, 1, 0, 0};
    openAlbum(photos);
    const Image& picture = main().imgbox;
    for (std::size_t i = 0; i < photos.size(); ++i) {
        const auto& [name, width, height, none] = photos[i];
        SCOPED_TRACE(name);
        const int reduction = reductions[i];
        const Picture old = picture.Picture();
        EXPECT_TRUE(displayed(static_cast<int>(i) + 1, true));
        EXPECT_EQ(view().ZoomLevel, reduction != 0 ? -reduction : 1);
        EXPECT_EQ(main().lbZoom.Caption(), "Zoom  1/" + std::to_string(std::max(reduction, 1)));
        const auto divisor = static_cast<float>(reduction);
        EXPECT_TRUE(reduction == 0 ? frameShows(100, 60) : frameShows(width / divisor, height / divisor));
        EXPECT_EQ(picture.Picture(), reduction == 0 ? old : main().pctBox(0).Picture());
        const std::vector<long> holder{(545 - width) * 5, (469 - height) * 5, width * 10, height * 10};
        EXPECT_EQ(place(main().pctBox(0)), holder);
        EXPECT_EQ(cells(), Names{}) << "the thumbnails go away";
        EXPECT_EQ(main().lbInfo(6).Caption(), name);
    }
    EXPECT_TRUE(displayed(8, false) && !picture.Visible() && cells().size() == 16) << "loaded without a look";
}

TEST_F(PhotoDisplayTest, AFileThatCantBeShownKeepsThePictureAndItsInformation)
{
    const Names bad{"TITLE=Bad"};
    openAlbum({{"FILM.Mov", 9, 9, bad}, {"gone.jpg", 9, 9, bad}, {"lost.bmp"}, {"4.bmp", 100, 60, {"TITLE=Good"}}});
    test.put(test.paths().PhotoPath + "FILM.Mov", plainBitmap(300, 300).substr(0, 5000));
    for (const std::string& path : {test.paths().PhotoPath + "gone.jpg", test.paths().InfoPath + "lost.bmp.info"})
        test.files().remove(path);
    display(4);
    prompts.expectNotice("Invalid image file. Unable to open");
    for (const int position : {1, 2}) {
        EXPECT_FALSE(displayed(position, true));
        EXPECT_EQ(view().CurrentIndex, position) << "the index has moved";
        EXPECT_EQ(desktop.Screen().MousePointer(), DefaultPointer);
        EXPECT_TRUE(frameShows(100, 60) && main().lbTitle.Caption() == "Good");
    }
    EXPECT_EQ(view().CurrentPhotoFile, test.library() + "\\\\Photos\\gone.jpg");
    EXPECT_EQ(logLines(), Names{}) << "a neighbour without information is no matter yet";
    EXPECT_FALSE(step(true));
    EXPECT_EQ(logLines(), Names(2, logged("GetPhotoLink", "File not found")));
}

// From the thumbnails forward shows the current one, and back the one before.
TEST_F(PhotoDisplayTest, StepsStartWhereTheUserIsAndStopAtBothEnds)
{
    std::vector<Photo> photos;
    for (int i = 1; i <= 5; ++i)
        photos.push_back({names(i).back(), 100 * i, 50});
    openAlbum(photos);
    for (const auto& [fromThumbnails, from, forward, result, shows] : {std::tuple{false, 4, true, true, 5},
             {false, 5, true, false, 5}, {false, 2, false, true, 1}, {false, 1, false, false, 1},
             {true, 5, true, true, 5}, {true, 2, false, true, 1}, {true, 1, false, false, 1}}) {
        pressRowNamed("Alps");
        robot.click(main().imgThumbnail(from - 1));
        if (!fromThumbnails)
            display(from);
        EXPECT_EQ(step(forward), result) << from;
        EXPECT_EQ(view().ViewMode, ViewPhoto);
        EXPECT_EQ(view().CurrentIndex, shows);
        EXPECT_TRUE(frameShows(static_cast<float>(100 * shows), 50));
        EXPECT_EQ(main().lbStatusCount.Caption(), "Photo " + std::to_string(shows) + " of 5");
        EXPECT_EQ(selectedPositions(), Positions{}) << "the selection is dropped";
    }
    display(1);
    const std::tuple<PictureButton&, Menu&, int> arrows[] = {
        {main().pctNext, main().mnuViewNext, 3}, {main().pctPrev, main().mnuViewPrevious, 1}};
    for (const auto& [button, entry, end] : arrows) {
        setShowTimer(true);
        robot.click(button, LeftButton, NoKeys, BesideLabel);
        EXPECT_FALSE(view().SlideShowRunning || main().tmrSlideShow.Enabled()) << "a show ends";
        EXPECT_EQ(button.Picture(), main().pctDarkSmall.Picture());
        robot.choose(entry);
        EXPECT_EQ(view().CurrentIndex, end);
    }
    group().GroupSelect(3) = 1;
    main().slideShow().ShowSelectedOnly = true;
    EXPECT_TRUE(step(true));
    EXPECT_EQ(view().CurrentIndex, 4) << "the one behind the selected";
    EXPECT_FALSE(step(true)) << "nothing selected is left";
    EXPECT_TRUE(view().CurrentIndex == 5 && frameShows(400, 50));
}

TEST_F(PhotoDisplayTest, FromTheThumbnailsAZoomOnlyOpensAndThenTheLadderSkipsZeroByItsDirection)
{
    openAlbum({{"p1.jpg"}, {"p2.jpg", 700, 60}});
    for (PictureButton* button : {&main().cmdZoomIn, &main().cmdZoomOut}) {
        pressRowNamed("Alps");
        robot.click(main().imgThumbnail(1));
        view().ZoomLevel = 7;
        robot.click(*button);
        EXPECT_TRUE(frameShows(350, 30) && view().ZoomLevel == -2 && view().ViewMode == ViewPhoto);
        EXPECT_EQ(button->Picture(), main().pctDarkSmall.Picture());
    }
    pressRowNamed("Alps");
    display(1);
    for (const auto& [direction, level, ratio, width] : {std::tuple{+1, 2, "2/1", 200.0F}, {+1, 3, "3/1", 300.0F},
             {-1, 2, "2/1", 200.0F}, {-1, 1, "1/1", 100.0F}, {-1, -2, "1/2", 50.0F}, {-1, -3, "1/3", 100 / 3.0F},
             {+1, -2, "1/2", 50.0F}, {+1, -1, "1/1", 100.0F}, {+1, 2, "2/1", 200.0F}}) {
        robot.click(direction > 0 ? main().cmdZoomIn : main().cmdZoomOut, LeftButton, NoKeys, BesideLabel);
        EXPECT_EQ(view().ZoomLevel, level);
        EXPECT_EQ(main().lbZoom.Caption(), std::string("Zoom  ") + ratio);
        EXPECT_TRUE(frameShows(width, width * 0.6F)) << ratio;
    }
    for (const auto& [entry, level] : {std::pair{&main().mnuViewEnlarge, 3}, {&main().mnuViewReduce, 2}}) {
        robot.choose(*entry);
        EXPECT_EQ(view().ZoomLevel, level);
    }
}

TEST_F(PhotoDisplayTest, ADraggedPictureFollowsTheMouseAndTheNextStepBringsItBack)
{
    openAlbum({{"p1.jpg", 100, 60}});
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
