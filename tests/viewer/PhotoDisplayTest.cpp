#include "ViewerWindow.h"

#include "platform/toolkit/Desktop.h"
#include "viewer/PhotoDisplay.h"
#include "viewer/SlideShow.h"

#include <tuple>

namespace trovarium {

namespace {

class PhotoDisplayTest : public ViewerWindow {
protected:
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

} // namespace

TEST_F(PhotoDisplayTest, APictureIsReducedByTheFirstWholeNumberThatFitsStrictly)
{
    // Width, height, reduction to less than 545 by 469; beyond the ladder (0) the small one before it stays on show.
    const std::vector<std::tuple<int, int, int>> cases{{544, 468, 1}, {545, 60, 2}, {60, 469, 2}, {4000, 3000, 8},
        {20 * 545 - 1, 3, 20}, {100, 60, 1}, {20 * 545, 3, 0}, {3, 20 * 469, 0}};
    Names lines;
    for (const auto& [width, height, reduction] : cases) {
        lines.push_back(std::to_string(width) + "x" + std::to_string(height) + ".bmp");
        putPhoto(lines.back(), width, height);
    }
    openAlbum(lines);
    const Image& picture = main().imgbox;
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(lines[i]);
        const auto& [width, height, reduction] = cases[i];
        const Picture old = picture.Picture();
        EXPECT_TRUE(displayed(static_cast<int>(i) + 1, true));
        EXPECT_EQ(view().ZoomLevel, reduction != 0 ? -reduction : 1);
        EXPECT_EQ(main().lbZoom.Caption(), "Zoom  1/" + std::to_string(std::max(reduction, 1)));
        const auto divisor = static_cast<float>(reduction);
        EXPECT_TRUE(reduction == 0 ? frameShows(100, 60) : frameShows(width / divisor, height / divisor));
        EXPECT_EQ(picture.Picture(), reduction == 0 ? old : main().pctBox(0).Picture());
        EXPECT_EQ(cells(), Names{}) << "the thumbnails go away";
        EXPECT_EQ(main().lbInfo(6).Caption(), lines[i]);
    }
    EXPECT_TRUE(displayed(8, false) && !picture.Visible() && cells().size() == 16) << "loaded without a look";
}

TEST_F(PhotoDisplayTest, AFileThatCantBeShownKeepsThePictureAndItsInformation)
{
    putPhoto("1.bmp", 100, 60, {"TITLE=Good"});
    for (const char* name : {"FILM.Mov", "gone.jpg"})
        putInfo(name, {"TITLE=Bad"});
    test.put(test.paths().PhotoPath + "FILM.Mov", plainBitmap(300, 300).substr(0, 5000));
    openAlbum({"1.bmp", "FILM.Mov", "gone.jpg", "lost.bmp"});
    display(1);
    prompts.expectNotice("Invalid image file. Unable to open");
    for (const int position : {2, 3}) {
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
    for (int i = 1; i <= 5; ++i)
        putPhoto(names(i).back(), 100 * i, 50);
    openAlbum(names(5));
    for (const auto& [fromThumbnails, from, forward, result, shows] : {std::tuple{false, 4, true, true, 5},
             {false, 5, true, false, 5}, {false, 2, false, true, 1}, {false, 1, false, false, 1},
             {true, 5, true, true, 5}, {true, 2, false, true, 1}, {true, 1, false, false, 1}}) {
        SCOPED_TRACE(std::to_string(from) + (forward ? " forward" : " back"));
        pressRowNamed("Alps");
        robot.click(main().imgThumbnail(from - 1));
        if (!fromThumbnails)
            display(from);
        EXPECT_EQ(step(forward), result);
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
        robot.click(button);
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

} // namespace trovarium
