#include "ViewerWindow.h"

#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Screen.h"
#include "viewer/PhotoDisplay.h"

#include <cmath>

namespace trovarium {

namespace {

enum Key { Enter = 13, Escape = 27, Space = 32, LeftArrow = 37, UpArrow = 38, RightArrow = 39, DownArrow = 40, A = 65 };

class FullScreenTest : public ViewerWindow {
protected:
    // Photographs as wide as the screen and 1, 2, 3... pixels high.
    void openFull(int count, int position)
    {
        for (int i = 1; i <= count; ++i)
            putPhoto("p" + std::to_string(i) + ".jpg", screenWidth(), i);
        openAlbum(names(count));
        display(position);
        robot.click(main().cmdFullScreen);
        desktop.DoEvents();
    }
    int screenWidth() { return static_cast<int>(desktop.Screen().Width() / TwipsPerPixel); }
    int screenHeight() { return static_cast<int>(desktop.Screen().Height() / TwipsPerPixel); }
    // The position of the photograph on the screen, as its picture tells.
    int onScreen() { return static_cast<int>(std::lround(fullScreen().imgFullScreen.Height() / TwipsPerPixel)); }
};

} // namespace

TEST_F(FullScreenTest, APictureFillsTheScreenOneWayAndStandsInTheMiddleTheOther)
{
    const float width = desktop.Screen().Width();
    const float height = desktop.Screen().Height();
    const struct {
        int pixelsWide;
        int pixelsHigh;
        float width;
        float height;
    } cases[] = {{screenWidth() / 8, screenHeight() / 2, width / 4, height},
        {screenWidth() / 2, screenHeight() / 8, width, height / 4},
        {screenWidth() / 4, screenHeight() / 4, width, height}, {screenWidth() * 2, screenHeight(), width, height / 2}};
    const std::vector<std::string> lines = names(4);
    for (std::size_t i = 0; i < lines.size(); ++i)
        putPhoto(lines[i], cases[i].pixelsWide, cases[i].pixelsHigh);
    openAlbum(lines);
    robot.click(main().imgThumbnail(0));
    robot.choose(main().mnuViewFullscreen);
    for (const auto& c : cases) {
        SCOPED_TRACE(view().CurrentIndex);
        ASSERT_TRUE(isFullScreen());
        const Image& picture = fullScreen().imgFullScreen;
        EXPECT_EQ(picture.Picture(), main().pctBox(0).Picture());
        EXPECT_NEAR(picture.Width(), c.width, 0.1);
        EXPECT_NEAR(picture.Height(), c.height, 0.1);
        EXPECT_NEAR(picture.Left() * 2 + picture.Width(), width, 0.1);
        EXPECT_NEAR(picture.Top() * 2 + picture.Height(), height, 0.1);
        robot.key(fullScreen(), RightArrow);
    }
}

TEST_F(FullScreenTest, KeysStepByWayOfTheMainWindowAndPutTheShowTimerBack)
{
    struct Case {
        int from;
        int key;
        int shows;
    };
    openFull(3, 2);
    for (const Case& c :
        {Case{2, Enter, 3}, Case{2, Space, 3}, Case{2, RightArrow, 3}, Case{2, DownArrow, 3}, Case{2, LeftArrow, 1},
            Case{2, UpArrow, 1}, Case{3, RightArrow, 3}, Case{1, LeftArrow, 1}, Case{2, A, 2}}) {
        SCOPED_TRACE(std::to_string(c.from) + " by key " + std::to_string(c.key));
        bool result = false;
        for (const bool timer : {true, false}) {
            main().photoDisplay().DisplayPhoto(c.from, true, result);
            setShowTimer(timer);
            robot.key(fullScreen(), c.key);
            EXPECT_EQ(view().CurrentIndex, c.shows);
            EXPECT_EQ(main().tmrSlideShow.Enabled(), timer);
        }
        if (c.shows != c.from) {
            EXPECT_EQ(onScreen(), c.shows);
        }
    }
}

TEST_F(FullScreenTest, APictureThatCantBeReadLeavesTheLastOneWhileTheTimerIsOff)
{
    openFull(2, 1);
    test.put(test.paths().PhotoPath + "p2.jpg", "damaged since then");
    setShowTimer(true);
    prompts.expectNotice("Invalid image file. Unable to open", [this] { EXPECT_FALSE(main().tmrSlideShow.Enabled()); });
    robot.key(fullScreen(), Space);
    EXPECT_EQ(view().CurrentIndex, 2);
    EXPECT_EQ(onScreen(), 1);
    EXPECT_TRUE(main().tmrSlideShow.Enabled());
}

TEST_F(FullScreenTest, EveryWayBackEndsTheShowAndLeavesItsViewMode)
{
    openFull(1, 1);
    const auto expectReturn = [this](const std::function<void()>& leave, int mode, bool timer) {
        ASSERT_TRUE(isFullScreen());
        setShowTimer(true);
        leave();
        EXPECT_FALSE(isFullScreen());
        EXPECT_EQ(view().ViewMode, mode);
        EXPECT_FALSE(view().SlideShowRunning);
        EXPECT_EQ(main().tmrSlideShow.Enabled(), timer);
        EXPECT_TRUE(main().imgbox.Visible()) << "the main window shows what it showed";
        robot.click(main().cmdFullScreen);
        desktop.DoEvents();
    };
    expectReturn([this] { robot.click(fullScreen().imgFullScreen); }, ViewFullScreen, false);
    expectReturn([this] { robot.click(fullScreen(), At{1, 1}); }, ViewPhoto, false);
    // The timer comes back after the key, so that the pictures go on stepping in the main window.
    expectReturn([this] { robot.key(fullScreen(), Escape); }, ViewFullScreen, true);
}

TEST_F(FullScreenTest, AClipTakesTheWindowOfItsOwnAndKeysStillStep)
{
    putInfo("clip.avi", "\\Photos\\clip.avi");
    putPhoto("p2.jpg", 100, 60);
    openAlbum({"clip.avi", "p2.jpg"});
    display(1);
    robot.click(main().cmdFullScreen);
    desktop.DoEvents();
    PictureBox& window = fullScreen().picVideoWindowFS;
    EXPECT_TRUE(window.Visible());
    EXPECT_FALSE(fullScreen().imgFullScreen.Visible());
    EXPECT_EQ((std::vector<float>{window.Left(), window.Top(), window.Width(), window.Height()}),
        (std::vector<float>{100, 100, desktop.Screen().Width() - 200, desktop.Screen().Height() - 200}));
    window.SetFocus();
    robot.key(fullScreen(), RightArrow);
    EXPECT_EQ(view().CurrentIndex, 2);
    EXPECT_TRUE(fullScreen().imgFullScreen.Visible());
    EXPECT_EQ(window.Left(), desktop.Screen().Width() + 20);

    robot.key(fullScreen(), LeftArrow);
    robot.click(window);
    EXPECT_FALSE(isFullScreen());
    EXPECT_EQ(view().ViewMode, ViewPhoto);
}

} // namespace trovarium
