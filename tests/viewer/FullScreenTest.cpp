#include "ViewerWindow.h"

#include "platform/toolkit/Units.h"
#include "platform/toolkit/Desktop.h"

namespace trovarium {

struct FullScreenTest : ViewerWindow {
    const float width = desktop.Screen().Width();
    const float height = desktop.Screen().Height();
};

TEST_F(FullScreenTest, KeysStepThroughPicturesThatFillTheScreenOneWay)
{
    openAlbum({{"p1.jpg", 10, 100}, {"p2.jpg", 1000, 10}, {"p3.jpg", 100, 100}, {"p4.jpg", 400, 100}});
    const std::vector<long> places[] = {place((width - height / 10) / 2, 0, height / 10, height),
        place(0, (height - width / 100) / 2, width, width / 100), place((width - height) / 2, 0, height, height),
        place(0, (height - width / 4) / 2, width, width / 4)};
    robot.click(main().imgThumbnail(0));
    robot.choose(main().mnuViewFullscreen);
    ASSERT_TRUE(isFullScreen());
    const Image& picture = fullScreen().imgFullScreen;
    for (const auto& [key, shows] : {std::pair<int, int>{AKey, 1}, {LeftKey, 1}, {EnterKey, 2}, {SpaceKey, 3},
             {UpKey, 2}, {RightKey, 3}, {DownKey, 4}, {RightKey, 4}, {LeftKey, 3}, {LeftKey, 2}, {UpKey, 1}}) {
        SCOPED_TRACE("key " + std::to_string(key) + " to " + std::to_string(shows));
        const bool timer = key != LeftKey;
        setShowTimer(timer);
        robot.key(fullScreen(), key);
        EXPECT_EQ(view().CurrentIndex, shows);
        EXPECT_EQ(main().tmrSlideShow.Enabled(), timer);
        EXPECT_EQ(picture.Picture(), main().pctBox(0).Picture());
        EXPECT_EQ(place(picture), places[shows - 1]);
    }
    setShowTimer(true);
    test.put(test.paths().PhotoPath + "p2.jpg", "damaged since then");
    prompts.expectNotice("Invalid image file. Unable to open", [this] { EXPECT_FALSE(main().tmrSlideShow.Enabled()); });
    robot.key(fullScreen(), SpaceKey);
    EXPECT_EQ(view().CurrentIndex, 2);
    EXPECT_EQ(place(picture), places[0]) << "the last one stays";
    EXPECT_TRUE(main().tmrSlideShow.Enabled() && picture.Visible());
}

TEST_F(FullScreenTest, EveryWayBackEndsTheShowAndLeavesItsViewMode)
{
    openAlbum({{"clip.avi"}, {"p2.jpg"}});
    display(2);
    pressRowNamed("Alps");
    const auto beside = [this] { robot.click(fullScreen(), At{1, 1}); };
    const auto window = [this]() -> PictureBox& { return fullScreen().picVideoWindowFS; };
    // The timer comes back after the key, so that the pictures go on stepping in the main window.
    using Case = std::tuple<int, std::function<void()>, int, bool>;
    for (const auto& [position, leave, mode, timer] :
        {Case{2, [&] { robot.click(fullScreen().imgFullScreen); }, ViewFullScreen, false},
            {1, [&] { robot.click(window()); }, ViewPhoto, false}, {2, beside, ViewPhoto, false},
            {2, [&] { robot.key(fullScreen(), EscapeKey); }, ViewFullScreen, true}}) {
        display(position);
        robot.click(main().cmdFullScreen, LeftButton, NoKeys, BesideLabel);
        EXPECT_EQ(main().cmdFullScreen.Picture(), main().pctAlbumList(11).Picture());
        EXPECT_EQ(window().Visible(), position == 1);
        EXPECT_EQ(fullScreen().imgFullScreen.Visible(), position == 2);
        if (position == 1) {
            robot.key(fullScreen(), RightKey);
            EXPECT_EQ(window().Left(), width + 20) << "parked beside the picture";
            robot.key(fullScreen(), LeftKey);
            EXPECT_FALSE(fullScreen().imgFullScreen.Visible());
            EXPECT_EQ(place(window()), place(100, 100, width - 200, height - 200));
        }
        setShowTimer(true);
        leave();
        EXPECT_FALSE(isFullScreen() || view().SlideShowRunning);
        EXPECT_EQ(view().ViewMode, mode);
        EXPECT_EQ(main().tmrSlideShow.Enabled(), timer);
        EXPECT_TRUE(main().imgbox.Visible()) << "the main window shows what it showed";
        pressRowNamed("Alps");
    }
}

} // namespace trovarium
