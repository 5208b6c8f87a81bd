// SPDX-License-Identifier: GPL-3.0-or-later

#include "ViewerWindow.h"

#include "viewer/PhotoDisplay.h"

namespace trovarium {

struct PhotoDisplayTest : ViewerWindow {
    bool displayed(int position, bool visibly) { return main().photoDisplay().DisplayPhoto(position, visibly); }
};

TEST_F(PhotoDisplayTest, APictureIsReducedByTheFirstWholeNumberThatFitsStrictly)
{
    struct Case {
        int width, height, reduction; // 0: beyond the ladder, and the small one before it stays on show
    };
    const Case cases[] = {{.width = 544, .height = 468, .reduction = 1}, {545, 60, 2}, {60, 469, 2}, {4000, 3000, 8},
        {20 * 545 - 1, 3, 20}, {100, 60, 1}, {20 * 545, 3, 0}, {3, 20 * 469, 0}};
    std::vector<Photo> photos;
    for (const auto& [width, height, reduction] : cases)
        photos.push_back({names(static_cast<int>(photos.size()) + 1).back(), width, height});
    openAlbum(photos);
    int position = 0;
    for (const auto& [width, height, reduction] : cases) {
        EXPECT_TRUE(displayed(++position, true));
        EXPECT_EQ(view().ZoomLevel, reduction != 0 ? -reduction : 1);
        EXPECT_EQ(main().lbZoom.Caption(), "Zoom  1/" + std::to_string(std::max(reduction, 1)));
        const auto divisor = static_cast<float>(reduction);
        EXPECT_TRUE(reduction == 0 ? frameShows(100, 60) : frameShows(width / divisor, height / divisor)) << position;
        EXPECT_EQ(main().pctBox(0).Width(), width) << "natural size";
        EXPECT_EQ(cells(), Names{}) << "the thumbnails go away";
        EXPECT_EQ(main().lbInfo(6).Caption(), names(position).back());
    }
    EXPECT_TRUE(displayed(8, false) && !main().imgbox.Visible() && cells().size() == 16) << "loaded without a look";
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
        EXPECT_TRUE(frameShows(100, 60) && main().lbTitle.Caption() == "Good");
    }
    EXPECT_EQ(view().CurrentPhotoFile, test.library() + "\\\\Photos\\gone.jpg");
    EXPECT_EQ(logLines(), Names{}) << "a neighbour without information is no matter yet";
    robot.choose(main().mnuViewNext);
    EXPECT_EQ(logLines(), Names(2, "GetPhotoLink: File not found"));
}

TEST_F(PhotoDisplayTest, TheWheelAndTheKey1Zoom)
{
    openAlbum({{"p1.jpg", 2000, 60}, {"p2.jpg", 20 * 545, 3}});
    const auto act = [this](float notches) {
        if (notches == 1)
            robot.key(main(), OneKey);
        else
            robot.wheel(main().pctWindow, -notches, At{notches < 0 ? 5.0F : 270.0F, 240}); // beside or on the picture
    };
    for (const float notches : {1.0F, 2.0F})
        act(notches);
    EXPECT_EQ(view().ViewMode, ViewThumbnails);
    display(1);
    for (const auto& [notches, level] : {std::pair{2.0F, -2}, {0.5F, -2}, {0.75F, -1}, {2.0F, 3}, {-0.5F, 3},
             {-0.5F, 2}, {-3.0F, -3}, {1.0F, -1}, {1.0F, -4}, {3.0F, -1}, {1.0F, -4}, {4.0F, 2}, {1.0F, -1}}) {
        act(notches);
        const float factor = level < 0 ? -1.0F / static_cast<float>(level) : static_cast<float>(level);
        EXPECT_TRUE(frameShows(2000 * factor, 60 * factor)) << notches << " to " << level;
    }
    main().mnuView.Enabled = false;
    for (const float notches : {1.0F, 2.0F})
        act(notches);
    EXPECT_EQ(view().ZoomLevel, -1);
    main().mnuView.Enabled = true;
    robot.click(main().pctNext);
    act(1);
    EXPECT_TRUE(view().ZoomLevel == 1 && frameShows(2000, 60)) << "too large for the frame: the one before stays";
}

// From the thumbnails forward shows the current one, and back the one before.
TEST_F(PhotoDisplayTest, StepsStartWhereTheUserIsAndStopAtBothEnds)
{
    std::vector<Photo> photos;
    for (int i = 1; i <= 5; ++i)
        photos.push_back({names(i).back(), 100 * i, 50});
    openAlbum(photos);
    struct Case {
        bool fromThumbnails, forward;
        int from, shows;
    };
    for (const auto& [fromThumbnails, forward, from, shows] :
        {Case{.fromThumbnails = false, .forward = true, .from = 4, .shows = 5}, {false, true, 5, 5},
            {false, false, 2, 1}, {false, false, 1, 1}, {true, true, 5, 5}, {true, false, 2, 1}, {true, false, 1, 1}}) {
        pressRowNamed("Alps");
        robot.click(main().imgThumbnail(from - 1));
        if (!fromThumbnails)
            display(from);
        robot.choose(forward ? main().mnuViewNext : main().mnuViewPrevious);
        EXPECT_TRUE(view().ViewMode == ViewPhoto && frameShows(static_cast<float>(100 * shows), 50)) << from;
        EXPECT_EQ(main().lbStatusCount.Caption(), "Photo " + std::to_string(shows) + " of 5");
        EXPECT_EQ(selectedPositions(), Positions{}) << "the selection is dropped";
    }
    setShowTimer(true);
    robot.click(main().pctNext, LeftButton, NoKeys, BesideLabel);
    EXPECT_FALSE(view().SlideShowRunning || main().tmrSlideShow.Enabled()) << "a show ends";
}

} // namespace trovarium
