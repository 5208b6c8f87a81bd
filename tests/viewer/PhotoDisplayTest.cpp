#include "ViewerWindow.h"

#include "platform/toolkit/Desktop.h"
#include "viewer/PhotoDisplay.h"
#include "viewer/SlideShow.h"

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
    struct Case {
        int width;
        int height;
        int reduction; // 0: beyond the ladder, the small one before it stays on show
    };
    const std::vector<Case> cases{{544, 468, 1}, {FrameWidth, 60, 2}, {60, FrameHeight, 2}, {4000, 3000, 8},
        {20 * FrameWidth - 1, 3, 20}, {100, 60, 1}, {20 * FrameWidth, 3, 0}, {3, 20 * FrameHeight, 0}};
    std::vector<std::string> lines;
    for (const Case& c : cases) {
        lines.push_back(std::to_string(c.width) + "x" + std::to_string(c.height) + ".bmp");
        putPhoto(lines.back(), c.width, c.height);
    }
    openAlbum(lines);
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(lines[i]);
        const Case& c = cases[i];
        const bool fits = c.reduction != 0;
        const Picture old = main().imgbox.Picture();
        EXPECT_TRUE(show(static_cast<int>(i) + 1));
        EXPECT_EQ(view().ZoomLevel, fits ? -c.reduction : 1);
        EXPECT_EQ(main().lbZoom.Caption(), "Zoom  1/" + std::to_string(fits ? c.reduction : 1));
        const auto divisor = static_cast<float>(c.reduction);
        EXPECT_TRUE(fits ? frameShows(static_cast<float>(c.width) / divisor, static_cast<float>(c.height) / divisor)
                         : frameShows(100, 60));
        EXPECT_NEAR(main().imgbox.Left() * 2 + main().imgbox.Width(), FrameWidth, 0.01);
        EXPECT_NEAR(main().imgbox.Top() * 2 + main().imgbox.Height(), FrameHeight, 0.01);
        EXPECT_EQ(main().imgbox.Picture(), fits ? main().pctBox(0).Picture() : old);
        EXPECT_TRUE(cells().empty()) << "the thumbnails go away";
        EXPECT_EQ(main().lbInfo(6).Caption(), lines[i]);
    }
}

TEST_F(PhotoDisplayTest, AFileThatCantBeShownKeepsThePictureAndItsInformation)
{
    struct Case {
        std::string name;
        std::string bytes; // "-": the file is gone
        bool isTold = true;
    };
    const std::vector<Case> cases{{"text.jpg", "no picture at all"}, {"empty.jpg", ""},
        {"cut.bmp", plainBitmap(300, 300).substr(0, 5000)}, {"FILM.Mov", "moov"}, {"gone.jpg", "-", false},
        {"beyond.bmp", plainBitmap(32768, 1), false}};
    std::vector<std::string> lines{"good.bmp"};
    putPhoto("good.bmp", 100, 60, {"TITLE=Good"});
    for (const Case& c : cases) {
        lines.push_back(c.name);
        putInfo(c.name, "\\Photos\\" + c.name, {"TITLE=Bad"});
        if (c.bytes != "-")
            test.put(test.paths().PhotoPath + c.name, c.bytes);
    }
    openAlbum(lines);
    display(1);
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(cases[i].name);
        const auto position = static_cast<std::int32_t>(i) + 2;
        if (cases[i].isTold)
            prompts.expectNotice("Invalid image file. Unable to open",
                [this] { EXPECT_EQ(desktop.Screen().MousePointer(), HourglassPointer); });
        view().IsVideo = true;
        EXPECT_FALSE(show(position));
        prompts.verify();
        EXPECT_EQ(view().CurrentIndex, position) << "the index has moved";
        EXPECT_TRUE(view().CurrentPhotoFile.ends_with("\\Photos\\" + cases[i].name)) << view().CurrentPhotoFile;
        EXPECT_FALSE(view().IsVideo);
        EXPECT_EQ(desktop.Screen().MousePointer(), DefaultPointer);
        EXPECT_TRUE(frameShows(100, 60));
        EXPECT_EQ(view().ZoomLevel, -1);
        EXPECT_EQ(main().lbTitle.Caption(), "Good");
    }
    EXPECT_EQ(prompts.asked().front().title, "Error");
    EXPECT_TRUE(logLines().empty());
}

TEST_F(PhotoDisplayTest, ALinkShowsAFileOutsideTheLibrary)
{
    const std::string outside = test.folder().inside("Elsewhere.bmp");
    test.put(outside, plainBitmap(120, 80));
    putInfo("link.bmp", outside);
    openAlbum({"link.bmp", "lost.bmp"});
    display(1);
    EXPECT_TRUE(frameShows(120, 80));
    EXPECT_EQ(view().CurrentPhotoFile, outside);
    EXPECT_TRUE(logLines().empty()) << "a neighbour without information is no matter yet";
    EXPECT_FALSE(next());
    EXPECT_TRUE(frameShows(120, 80));
    EXPECT_EQ(view().CurrentPhotoFile, "");
    EXPECT_EQ(logLines(), std::vector<std::string>(2, logged("GetPhotoLink", "File not found")));
}

TEST_F(PhotoDisplayTest, AClipTakesItsWindowAndLeavesThePictureAround)
{
    putPhoto("p1.jpg", 100, 60);
    putInfo("clip.avi", "\\Photos\\clip.avi", {"TITLE=Waves"});
    putInfo("clip.Mpg", "\\Photos\\clip.Mpg");
    openAlbum({"p1.jpg", "clip.avi", "clip.Mpg"});
    display(1);
    for (int clip = 0; clip < 2; ++clip) {
        EXPECT_TRUE(next());
        EXPECT_TRUE(view().IsVideo);
        const PictureBox& window = main().picVideoWindow;
        EXPECT_TRUE(window.Visible());
        EXPECT_EQ((std::vector<float>{window.Left(), window.Top(), window.Width(), window.Height()}),
            (std::vector<float>{20, 48, 497, 373}));
        EXPECT_TRUE(frameShows(100, 60));
        robot.click(main().cmdZoomIn);
        robot.click(main().cmdZoomOut);
        EXPECT_TRUE(frameShows(100, 60)) << "a clip isn't zoomed";
        EXPECT_EQ(view().ZoomLevel, -1);
    }
    view().CurrentIndex = 2;
    EXPECT_TRUE(previous());
    EXPECT_FALSE(view().IsVideo);
    EXPECT_FALSE(main().picVideoWindow.Visible());
    EXPECT_EQ(main().picVideoWindow.Left(), FrameWidth + 20);
    EXPECT_TRUE(main().imgbox.Visible());
}

// From the thumbnails forward shows the current one, and back the one before.
TEST_F(PhotoDisplayTest, StepsStartWhereTheUserIsAndStopAtBothEnds)
{
    struct Case {
        bool fromThumbnails;
        int from;
        bool forward;
        bool result;
        int shows;
    };
    openRow(3);
    for (const Case& c : {Case{false, 1, true, true, 2}, Case{false, 2, true, true, 3}, Case{false, 3, true, false, 3},
             Case{false, 3, false, true, 2}, Case{false, 1, false, false, 1}, Case{true, 2, true, true, 2},
             Case{true, 3, true, true, 3}, Case{true, 2, false, true, 1}, Case{true, 1, false, false, 1}}) {
        SCOPED_TRACE(std::to_string(c.from) + (c.forward ? " forward" : " back"));
        pressRowNamed("Alps");
        robot.click(main().imgThumbnail(c.from - 1));
        if (!c.fromThumbnails)
            display(c.from);
        main().lbStatusCount.Caption = "";
        EXPECT_EQ(c.forward ? next() : previous(), c.result);
        EXPECT_EQ(view().ViewMode, ViewPhoto);
        EXPECT_EQ(view().CurrentIndex, c.shows);
        EXPECT_TRUE(frameShows(static_cast<float>(100 * c.shows), 50));
        EXPECT_EQ(main().lbStatusCount.Caption(), "Photo " + std::to_string(c.shows) + " of 3");
        EXPECT_TRUE(selectedPositions().empty()) << "the selection is dropped";
    }
    pressRowNamed("Alps");
    view().CurrentIndex = 0;
    EXPECT_FALSE(next()) << "the unused slot in front of the first photograph";
    EXPECT_EQ(view().ViewMode, ViewPhoto);
}

TEST_F(PhotoDisplayTest, TheButtonsStepAndEndASlideShow)
{
    openRow(2);
    display(1);
    const auto expectStep = [this](const std::function<void()>& step, int shows) {
        setShowTimer(true);
        step();
        EXPECT_EQ(view().CurrentIndex, shows);
        EXPECT_FALSE(view().SlideShowRunning);
        EXPECT_FALSE(main().tmrSlideShow.Enabled());
    };
    expectStep([this] { robot.click(main().pctNext); }, 2);
    expectStep([this] { robot.click(main().pctNext); }, 2); // nowhere to go
    expectStep([this] { robot.click(main().pctPrev); }, 1);
    expectStep([this] { robot.choose(main().mnuViewNext); }, 2);
    expectStep([this] { robot.choose(main().mnuViewPrevious); }, 1);
}

TEST_F(PhotoDisplayTest, AStepThroughTheSelectionShowsTheOneBehindTheSelected)
{
    openRow(5);
    display(1);
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
