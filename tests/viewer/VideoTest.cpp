// SPDX-License-Identifier: GPL-3.0-or-later

#include "ViewerWindow.h"

#include "support/RecordedMedia.h"

namespace trovarium {

struct VideoTest : ViewerWindow {
    VideoTest() { openAlbum({{"p.bmp"}, {"a.avi"}, {"b.Mpg"}}); }
    std::string told() { return std::exchange(media.film->told, {}); }
    // The buttons that are lit: play, pause ("="), stop.
    std::string lit()
    {
        std::string text = ">=.";
        main().cmdVideo.forEach([&](int index, Button& button) { text[index] = button.Enabled() ? text[index] : '-'; });
        return text;
    }
    static std::string times8(float side) { return numberText(side * 8) + " "; }

    RecordedMedia media{desktop};
    const std::string closed =
        "Stop Left" + times8(desktop.Screen().Width()) + "Height" + times8(desktop.Screen().Height()) + "Owner0 gone ";
};

TEST_F(VideoTest, AClipIsOpenedInTheFrameAndPlays)
{
    const PictureBox& window = main().picVideoWindow;
    main().tmrVideo.Interval = 600'000; // no tick is told among the calls
    display(1);
    robot.click(main().pctNext);
    EXPECT_EQ(told() + lit(), "a.avi Style100663296 Top0 Left0 Width497 Height373 Owner Rate1 Run Run -=.");
    EXPECT_EQ(main().lbVideo.Caption() + numberText(main().hscVideo.Max()), "12.3 sec12");
    EXPECT_TRUE(view().IsVideo && window.Visible() && main().hscVideo.Value() == 0);
    EXPECT_EQ(place(window), place(20, 48, 497, 373));
    robot.click(main().cmdZoomIn);
    EXPECT_TRUE(frameShows(100, 60) && view().ZoomLevel == -1) << "a clip isn't zoomed";
    robot.click(main().pctNext);
    EXPECT_TRUE(told().starts_with(closed + "b.Mpg "));
    robot.click(main().pctPrev);
    robot.click(main().pctPrev);
    EXPECT_TRUE(told().ends_with("Stop At0 "));
    EXPECT_FALSE(main().hscVideo.Enabled() || window.Visible() || view().IsVideo);
    EXPECT_EQ(window.Left(), 545 + 20) << "parked";
}

TEST_F(VideoTest, TheSliderFollowsAClipToItsEndAndSeeks)
{
    display(2);
    media.film->position = 5.496; // rounded to two places, and then to even
    told();
    EXPECT_TRUE(robot.until([&] { return main().hscVideo.Value() == 6; }));
    EXPECT_EQ(told().find("At"), std::string::npos) << "a tick doesn't seek";
    media.film->position = 12.34;
    media.film->code = 1;
    EXPECT_TRUE(robot.until([&] { return lit() == ">--"; }));
    EXPECT_FALSE(main().tmrVideo.Enabled());
    told();
    robot.click(main().cmdVideo(0));
    main().hscVideo.SetFocus();
    robot.key(main(), RightKey);
    EXPECT_EQ(told() + lit(), "At0 Run At7 Pause >-.");
    for (std::int16_t second : {-1, 13})
        video.SeekVideo(second);
    EXPECT_EQ(told(), "At0 Pause At12 Pause ");
    robot.click(main().cmdVideo(2));
    EXPECT_EQ(told() + lit() + numberText(main().hscVideo.Value()), "Stop At0 >--0");
    robot.click(main().cmdVideo(0));
    robot.key(main(), SpaceKey);
    robot.key(main(), SpaceKey);
    EXPECT_EQ(told(), "Run Pause Run ") << "a disabled button gives the focus to the one that undoes its action";
}

} // namespace trovarium
