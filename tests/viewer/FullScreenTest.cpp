#include "ViewerWindow.h"

#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Keys.h"
#include "platform/toolkit/Screen.h"
#include "viewer/PhotoDisplay.h"

#include <cmath>
#include <tuple>

namespace trovarium {

namespace {

class FullScreenTest : public ViewerWindow {
protected:
    // Photographs as wide as the screen and 1, 2, 3... pixels high.
    void openFull(int count, int position)
    {
        for (int i = 1; i <= count; ++i)
            putPhoto("p" + std::to_string(i) + ".jpg", pixelsWide, i);
        openAlbum(names(count));
        display(position);
        openAgain();
    }
    void openAgain()
    {
        robot.click(main().cmdFullScreen);
        desktop.DoEvents();
    }
    // The position of the photograph on the screen, as its picture tells.
    int onScreen() { return static_cast<int>(std::lround(fullScreen().imgFullScreen.Height() / TwipsPerPixel)); }

    const float width = desktop.Screen().Width();
    const float height = desktop.Screen().Height();
    const int pixelsWide = static_cast<int>(width / TwipsPerPixel);
    const int pixelsHigh = static_cast<int>(height / TwipsPerPixel);
};

} // namespace

TEST_F(FullScreenTest, APictureFillsTheScreenOneWayAndStandsInTheMiddleTheOther)
{
    const std::vector<std::tuple<int, int, float, float>> cases{{pixelsWide / 8, pixelsHigh / 2, width / 4, height},
        {pixelsWide / 2, pixelsHigh / 8, width, height / 4}, {pixelsWide / 4, pixelsHigh / 4, width, height},
        {pixelsWide * 2, pixelsHigh, width, height / 2}};
    for (std::size_t i = 0; i < cases.size(); ++i)
        putPhoto(names(4)[i], std::get<0>(cases[i]), std::get<1>(cases[i]));
    openAlbum(names(4));
    robot.click(main().imgThumbnail(0));
    robot.choose(main().mnuViewFullscreen);
    for (const auto& [ownWidth, ownHeight, shownWidth, shownHeight] : cases) {
        SCOPED_TRACE(view().CurrentIndex);
        ASSERT_TRUE(isFullScreen());
        const Image& picture = fullScreen().imgFullScreen;
        EXPECT_EQ(picture.Picture(), main().pctBox(0).Picture());
        EXPECT_NEAR(picture.Width(), shownWidth, 0.1);
        EXPECT_NEAR(picture.Height(), shownHeight, 0.1);
        EXPECT_NEAR(picture.Left() * 2 + picture.Width(), width, 0.1);
        EXPECT_NEAR(picture.Top() * 2 + picture.Height(), height, 0.1);
        robot.key(fullScreen(), RightKey);
    }
}

TEST_F(FullScreenTest, KeysStepByWayOfTheMainWindowAndPutTheShowTimerBack)
{
    openFull(3, 2);
    for (const auto& [from, key, shows] :
        {std::tuple<int, int, int>{2, EnterKey, 3}, {2, SpaceKey, 3}, {2, RightKey, 3}, {2, DownKey, 3},
            {2, LeftKey, 1}, {2, UpKey, 1}, {3, RightKey, 3}, {1, LeftKey, 1}, {2, AKey, 2}}) {
        SCOPED_TRACE(std::to_string(from) + " by key " + std::to_string(key));
        for (const bool timer : {true, false}) {
            bool result = false;
            main().photoDisplay().DisplayPhoto(from, true, result);
            setShowTimer(timer);
            robot.key(fullScreen(), key);
            EXPECT_EQ(view().CurrentIndex, shows);
            EXPECT_EQ(main().tmrSlideShow.Enabled(), timer);
            EXPECT_TRUE(shows == from || onScreen() == shows);
        }
    }
    setShowTimer(true);
    robot.key(fullScreen(), LeftKey);
    test.put(test.paths().PhotoPath + "p2.jpg", "damaged since then");
    prompts.expectNotice("Invalid image file. Unable to open", [this] { EXPECT_FALSE(main().tmrSlideShow.Enabled()); });
    robot.key(fullScreen(), SpaceKey);
    EXPECT_EQ(view().CurrentIndex, 2);
    EXPECT_EQ(onScreen(), 1) << "the last one stays";
    EXPECT_TRUE(main().tmrSlideShow.Enabled());
}

TEST_F(FullScreenTest, EveryWayBackEndsTheShowAndLeavesItsViewMode)
{
    openFull(1, 1);
    // The timer comes back after the key, so that the pictures go on stepping in the main window.
    for (const auto& [leave, mode, timer] : std::vector<std::tuple<std::function<void()>, int, bool>>{
             {[this] { robot.click(fullScreen().imgFullScreen); }, ViewFullScreen, false},
             {[this] {
                  robot.click(fullScreen(), At{1, 1});
              },
                 ViewPhoto, false},
             {[this] { robot.key(fullScreen(), EscapeKey); }, ViewFullScreen, true}}) {
        ASSERT_TRUE(isFullScreen());
        setShowTimer(true);
        leave();
        EXPECT_FALSE(isFullScreen() || view().SlideShowRunning);
        EXPECT_EQ(view().ViewMode, mode);
        EXPECT_EQ(main().tmrSlideShow.Enabled(), timer);
        EXPECT_TRUE(main().imgbox.Visible()) << "the main window shows what it showed";
        openAgain();
    }
}

TEST_F(FullScreenTest, AClipTakesTheWindowOfItsOwnAndKeysStillStep)
{
    putInfo("clip.avi", "\\Photos\\clip.avi");
    putPhoto("p2.jpg", 100, 60);
    openAlbum({"clip.avi", "p2.jpg"});
    display(1);
    openAgain();
    PictureBox& window = fullScreen().picVideoWindowFS;
    EXPECT_TRUE(window.Visible() && !fullScreen().imgFullScreen.Visible());
    EXPECT_EQ((std::vector<float>{window.Left(), window.Top(), window.Width(), window.Height()}),
        (std::vector<float>{100, 100, width - 200, height - 200}));
    window.SetFocus();
    robot.key(fullScreen(), RightKey);
    EXPECT_EQ(view().CurrentIndex, 2);
    EXPECT_TRUE(fullScreen().imgFullScreen.Visible());
    EXPECT_EQ(window.Left(), width + 20);
    robot.key(fullScreen(), LeftKey);
    robot.click(window);
    EXPECT_FALSE(isFullScreen());
    EXPECT_EQ(view().ViewMode, ViewPhoto);
}

} // namespace trovarium
