// SPDX-License-Identifier: GPL-3.0-or-later

#include "ViewerWindow.h"

#include <QGuiApplication>

namespace trovarium {

struct FullScreenTest : ViewerWindow {
    const float width = desktop.Screen().Width();
    const float height = desktop.Screen().Height();
};

TEST_F(FullScreenTest, KeysStepThroughPicturesThatFillTheScreenOneWay)
{
    openAlbum({{"p1.jpg", 10, 100}, {"p2.jpg", 1000, 10}, {"p3.jpg", 400, 100}});
    const std::vector<long> places[] = {place((width - height / 10) / 2, 0, height / 10, height),
        place(0, (height - width / 100) / 2, width, width / 100), place(0, (height - width / 4) / 2, width, width / 4)};
    robot.click(main().imgThumbnail(0));
    robot.choose(main().mnuViewFullscreen);
    const Image& picture = fullScreen().imgFullScreen;
    for (const auto& [key, shows] : {std::pair<int, int>{AKey, 1}, {LeftKey, 1}, {EnterKey, 2}, {SpaceKey, 3},
             {UpKey, 2}, {RightKey, 3}, {DownKey, 3}, {LeftKey, 2}, {UpKey, 1}}) {
        SCOPED_TRACE("key " + std::to_string(key) + " to " + std::to_string(shows));
        const bool timer = key != LeftKey;
        setShowTimer(timer);
        robot.key(fullScreen(), key);
        EXPECT_EQ(view().CurrentIndex, shows);
        EXPECT_EQ(main().tmrSlideShow.Enabled(), timer);
        EXPECT_EQ(place(picture), places[shows - 1]);
    }
    test.put(test.paths().PhotoPath + "p2.jpg", "damaged since then");
    prompts.expectNotice("Invalid image file. Unable to open", [this] { EXPECT_FALSE(main().tmrSlideShow.Enabled()); });
    robot.key(fullScreen(), SpaceKey);
    EXPECT_EQ(place(picture), places[0]) << "the last one stays";
    EXPECT_TRUE(main().tmrSlideShow.Enabled() && picture.Visible());
}

TEST_F(FullScreenTest, ThePointerHidesUntilTheMouseMoves)
{
    openAlbum({{"p1.jpg"}, {"p2.jpg"}, {"p3.jpg"}});
    display(1);
    robot.choose(main().mnuViewFullscreen);
    for (const bool isOnPicture : {true, false}) {
        fullScreen().tmrPointer.Tick.raise();
        desktop.Screen().MousePointer = HourglassPointer; // as at each step of a show
        EXPECT_FALSE(QGuiApplication::overrideCursor());
        EXPECT_EQ(fullScreen().MousePointer(), HiddenPointer);
        isOnPicture ? robot.moveTo(fullScreen().imgFullScreen) : robot.moveTo(fullScreen(), {1, 1});
        EXPECT_TRUE(fullScreen().MousePointer() == DefaultPointer && fullScreen().tmrPointer.Enabled());
    }
    fullScreen().tmrPointer.Tick.raise();
    robot.key(fullScreen(), EnterKey);
    robot.hold(fullScreen(), EnterKey);
    EXPECT_EQ(fullScreen().MousePointer(), HiddenPointer);
    EXPECT_EQ(view().CurrentIndex, 3) << "a held key steps on";
    test.put(test.paths().PhotoPath + "p2.jpg", "damaged since then");
    prompts.expectNotice(
        "Invalid image file. Unable to open", [this] { EXPECT_EQ(fullScreen().MousePointer(), DefaultPointer); });
    robot.key(fullScreen(), LeftKey);
}

} // namespace trovarium
