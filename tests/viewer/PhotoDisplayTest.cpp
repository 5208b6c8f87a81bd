#include "ViewerWindow.h"

#include "platform/toolkit/Desktop.h"
#include "viewer/PhotoDisplay.h"
#include "viewer/SlideShow.h"

#include <tuple>

namespace trovarium {

namespace {

constexpr int FrameWidth = 545; // pixels
constexpr int FrameHeight = 469;

class PhotoDisplayTest : public ViewerWindow {
protected:
    // Photographs 1 to `count` of 100, 200, 300... pixels width and 50 height, so that each is known by its size.
    void openRow(int count)
    {
        for (int i = 1; i <= count; ++i)
            putPhoto("p" + std::to_string(i) + ".jpg", 100 * i, 50);
        openAlbum(names(count));
        display(1);
    }
    bool next() { return step(&PhotoDisplay::NextPhoto); }
    bool previous() { return step(&PhotoDisplay::PrevPhoto); }
    bool show(int position)
    {
        bool shown = false;
        main().photoDisplay().DisplayPhoto(position, true, shown);
        return shown;
    }

private:
    bool step(void (PhotoDisplay::*operation)(bool&))
    {
        bool shown = true;
        (main().photoDisplay().*operation)(shown);
        return shown;
    }
};

} // namespace

TEST_F(PhotoDisplayTest, APictureIsReducedByTheFirstWholeNumberThatFitsStrictly)
{
    // Width, height, reduction; beyond the ladder (0) the small one before it stays on show.
    const std::vector<std::tuple<int, int, int>> cases{{544, 468, 1}, {FrameWidth, 60, 2}, {60, FrameHeight, 2},
        {4000, 3000, 8}, {20 * FrameWidth - 1, 3, 20}, {100, 60, 1}, {20 * FrameWidth, 3, 0}, {3, 20 * FrameHeight, 0}};
    Names lines;
    for (const auto& [width, height, reduction] : cases) {
        lines.push_back(std::to_string(width) + "x" + std::to_string(height) + ".bmp");
        putPhoto(lines.back(), width, height);
    }
    openAlbum(lines);
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(lines[i]);
        const auto& [width, height, reduction] = cases[i];
        const bool fits = reduction != 0;
        const Picture old = main().imgbox.Picture();
        EXPECT_TRUE(show(static_cast<int>(i) + 1));
        EXPECT_EQ(view().ZoomLevel, fits ? -reduction : 1);
        EXPECT_EQ(main().lbZoom.Caption(), "Zoom  1/" + std::to_string(fits ? reduction : 1));
        const auto divisor = static_cast<float>(reduction);
        EXPECT_TRUE(fits ? frameShows(static_cast<float>(width) / divisor, static_cast<float>(height) / divisor)
                         : frameShows(100, 60));
        EXPECT_NEAR(main().imgbox.Left() * 2 + main().imgbox.Width(), FrameWidth, 0.01);
        EXPECT_NEAR(main().imgbox.Top() * 2 + main().imgbox.Height(), FrameHeight, 0.01);
        EXPECT_EQ(main().imgbox.Picture(), fits ? main().pctBox(0).Picture() : old);
        EXPECT_EQ(cells(), Names{}) << "the thumbnails go away";
        EXPECT_EQ(main().lbInfo(6).Caption(), lines[i]);
    }
    bool hidden = false;
    main().photoDisplay().DisplayPhoto(1, false, hidden);
    EXPECT_TRUE(hidden && !main().imgbox.Visible() && cells().size() == 16) << "loaded without a look";
}

TEST_F(PhotoDisplayTest, AFileThatCantBeShownKeepsThePictureAndItsInformation)
{
    // Name, bytes ("-": the file is gone), whether it is told.
    const std::vector<std::tuple<std::string, std::string, bool>> cases{{"text.jpg", "no picture at all", true},
        {"empty.jpg", "", true}, {"cut.bmp", plainBitmap(300, 300).substr(0, 5000), true}, {"FILM.Mov", "moov", true},
        {"gone.jpg", "-", false}, {"beyond.bmp", plainBitmap(32768, 1), false}};
    Names lines{"good.bmp"};
    const std::string outside = test.folder().inside("Elsewhere.bmp"); // of the library
    test.put(outside, plainBitmap(100, 60));
    putInfo("good.bmp", outside, {"TITLE=Good"});
    for (const auto& [name, bytes, isTold] : cases) {
        lines.push_back(name);
        putInfo(name, "\\Photos\\" + name, {"TITLE=Bad"});
        if (bytes != "-")
            test.put(test.paths().PhotoPath + name, bytes);
    }
    lines.emplace_back("lost.bmp"); // which has no information
    openAlbum(lines);
    display(1);
    EXPECT_EQ(view().CurrentPhotoFile, outside);
    std::int32_t position = 1;
    for (const auto& [name, bytes, isTold] : cases) {
        SCOPED_TRACE(name);
        if (isTold)
            prompts.expectNotice("Invalid image file. Unable to open",
                [this] { EXPECT_EQ(desktop.Screen().MousePointer(), HourglassPointer); });
        view().IsVideo = true;
        EXPECT_FALSE(show(++position));
        prompts.verify();
        EXPECT_EQ(view().CurrentIndex, position) << "the index has moved";
        EXPECT_TRUE(view().CurrentPhotoFile.ends_with("\\Photos\\" + name)) << view().CurrentPhotoFile;
        EXPECT_FALSE(view().IsVideo);
        EXPECT_EQ(desktop.Screen().MousePointer(), DefaultPointer);
        EXPECT_TRUE(frameShows(100, 60));
        EXPECT_EQ(view().ZoomLevel, -1);
        EXPECT_EQ(main().lbTitle.Caption(), "Good");
    }
    EXPECT_EQ(prompts.asked().front().title, "Error");
    EXPECT_EQ(logLines(), Names{}) << "a neighbour without information is no matter yet";
    EXPECT_FALSE(next());
    EXPECT_EQ(view().CurrentPhotoFile, "");
    EXPECT_EQ(logLines(), Names(2, logged("GetPhotoLink", "File not found")));
}

TEST_F(PhotoDisplayTest, AClipTakesItsWindowAndLeavesThePictureAround)
{
    putPhoto("p1.jpg", 100, 60);
    putInfo("clip.avi", "\\Photos\\clip.avi");
    putInfo("clip.Mpg", "\\Photos\\clip.Mpg");
    openAlbum({"p1.jpg", "clip.avi", "clip.Mpg"});
    display(1);
    const PictureBox& window = main().picVideoWindow;
    for (int clip = 0; clip < 2; ++clip) {
        EXPECT_TRUE(next());
        EXPECT_TRUE(view().IsVideo && window.Visible());
        EXPECT_EQ((std::vector<float>{window.Left(), window.Top(), window.Width(), window.Height()}),
            (std::vector<float>{20, 48, 497, 373}));
        robot.click(main().cmdZoomIn);
        robot.click(main().cmdZoomOut);
        EXPECT_TRUE(frameShows(100, 60)) << "a clip isn't zoomed";
        EXPECT_EQ(view().ZoomLevel, -1);
    }
    pressRowNamed("Alps");
    EXPECT_EQ(window.Left(), FrameWidth + 20) << "parked";
    display(2);
    EXPECT_TRUE(previous());
    EXPECT_FALSE(view().IsVideo || window.Visible());
    EXPECT_EQ(window.Left(), FrameWidth + 20);
    EXPECT_TRUE(main().imgbox.Visible());
}

// From the thumbnails forward shows the current one, and back the one before.
TEST_F(PhotoDisplayTest, StepsStartWhereTheUserIsAndStopAtBothEnds)
{
    openRow(3);
    for (const auto& [fromThumbnails, from, forward, result, shows] :
        {std::tuple{false, 1, true, true, 2}, {false, 2, true, true, 3}, {false, 3, true, false, 3},
            {false, 3, false, true, 2}, {false, 1, false, false, 1}, {true, 2, true, true, 2}, {true, 3, true, true, 3},
            {true, 2, false, true, 1}, {true, 1, false, false, 1}}) {
        SCOPED_TRACE(std::to_string(from) + (forward ? " forward" : " back"));
        pressRowNamed("Alps");
        robot.click(main().imgThumbnail(from - 1));
        if (!fromThumbnails)
            display(from);
        main().lbStatusCount.Caption = "";
        EXPECT_EQ(forward ? next() : previous(), result);
        EXPECT_EQ(view().ViewMode, ViewPhoto);
        EXPECT_EQ(view().CurrentIndex, shows);
        EXPECT_TRUE(frameShows(static_cast<float>(100 * shows), 50));
        EXPECT_EQ(main().lbStatusCount.Caption(), "Photo " + std::to_string(shows) + " of 3");
        EXPECT_EQ(selectedPositions(), Positions{}) << "the selection is dropped";
    }
    pressRowNamed("Alps");
    view().CurrentIndex = 0;
    EXPECT_FALSE(next()) << "the unused slot in front of the first photograph";
    EXPECT_EQ(view().ViewMode, ViewPhoto);

    display(1);
    for (const auto& [step, shows] : std::vector<std::pair<std::function<void()>, int>>{
             {[this] { robot.click(main().pctNext); }, 2}, {[this] { robot.click(main().pctPrev); }, 1},
             {[this] { robot.choose(main().mnuViewNext); }, 2}, {[this] { robot.choose(main().mnuViewPrevious); }, 1},
             {[this] { robot.click(main().pctPrev); }, 1}}) { // nowhere to go
        setShowTimer(true);
        step();
        EXPECT_EQ(view().CurrentIndex, shows);
        EXPECT_FALSE(view().SlideShowRunning || main().tmrSlideShow.Enabled()) << "a show ends";
        for (const PictureButton* button : {&main().pctNext, &main().pctPrev})
            EXPECT_EQ(button->Picture(), main().pctDarkSmall.Picture());
    }
}

TEST_F(PhotoDisplayTest, AStepThroughTheSelectionShowsTheOneBehindTheSelected)
{
    openRow(5);
    group().GroupSelect(3) = 1;
    main().slideShow().ShowSelectedOnly = true;
    EXPECT_TRUE(next());
    EXPECT_EQ(view().CurrentIndex, 4);
    EXPECT_FALSE(next()) << "nothing selected is left";
    EXPECT_EQ(view().CurrentIndex, 5);
    EXPECT_TRUE(frameShows(400, 50));
    EXPECT_TRUE(previous()) << "back pays no regard to the selection";
    EXPECT_EQ(view().CurrentIndex, 4);
}

} // namespace trovarium
