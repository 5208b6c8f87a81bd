#include "ViewerWindow.h"

#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Keys.h"
#include "support/RecordedMedia.h"
#include "viewer/AudioControls.h"
#include "viewer/SlideShow.h"
#include "viewer/frmSSP.h"

#include <utility>

namespace trovarium {

// A group of three photographs and the dialog of the show. Shows tick every 30 ms, and are waited for.
class SlideShowTest : public ViewerWindow {
protected:
    SlideShowTest()
    {
        main().dialogs().showSlideShow = [this] { form().showModal(); };
        for (const std::string& name : names(3))
            putPhoto(name, 40, 30);
        openAlbum(names(3));
    }

    // Begins a show, with the boxes unchecked whose digits stand in `without`.
    void begin(const std::string& interval, const std::string& without)
    {
        media.told.clear();
        robot.whenShown("frmSSP", [&] {
            EXPECT_TRUE(selectedPositions().empty());
            EXPECT_EQ(form().txtSlideShowInterval.Text(), "5");
            robot.type(form(), interval); // in place of it
            for (const char box : without)
                robot.click(form().chkSlideshow(box - '0'));
            robot.key(form(), EnterKey);
            refused = form.isLoaded();
            if (refused)
                robot.key(form(), EscapeKey);
        });
        robot.click(main().lbButtonText(7));
    }
    bool isOver() { return !main().tmrSlideShow.Enabled(); }
    bool thumbnailsAreBack() { return main().imgThumbnail(0).Visible() && !main().imgbox.Visible() && !isFullScreen(); }
    // Photographs by their position as the clips told them, "w" for the empty place before the first, "0" for a clip
    // cut off, "(" and ")" for the music.
    std::string heard()
    {
        std::string all;
        for (const std::string& told : std::exchange(media.told, {}))
            all += told == "sound 0"              ? "0"
                : told.starts_with("music open")  ? "("
                : told.starts_with("music close") ? ")"
                : told.starts_with("sound")       ? told.substr(told.rfind('\\') + 2, 1)
                                                  : "";
        return all;
    }

    bool refused = false;
    RecordedMedia media{desktop};
    FormSlot<frmSSP> form{desktop, [this] { return std::make_unique<frmSSP>(desktop, test.album(), main()); }};
};

TEST_F(SlideShowTest, AShowWalksTheGroupWithSoundAndMusicInEitherWindow)
{
    select({2});
    begin("0.03", "0");
    EXPECT_EQ(main().cmdSlideshow.Picture(), main().pctAlbumList(11).Picture());
    ASSERT_TRUE(robot.until([&] { return isOver(); }));
    EXPECT_TRUE(thumbnailsAreBack() && view().ViewMode == ViewThumbnails && !view().SlideShowRunning);
    EXPECT_TRUE(media.told.at(0).starts_with("music open \"" + test.paths().MidiPath + "Alps.mid\" type sequencer"));
    EXPECT_EQ(media.told.at(1), "music play " + media.told.at(0).substr(media.told.at(0).rfind(' ') + 1));
    // From the page of thumbnails the current photograph comes first, and the last one is heard again at the end.
    EXPECT_EQ(heard(), "(010203030)");

    display(2);
    begin("0.03", "3");
    ASSERT_TRUE(isFullScreen());
    ASSERT_TRUE(robot.until([&] { return isOver(); }));
    EXPECT_TRUE(thumbnailsAreBack());
    EXPECT_EQ(heard(), "03030)0)");

    // From the start: the empty place before the first photograph is asked for first.
    begin("0.03", "02");
    ASSERT_TRUE(robot.until([&] { return isOver(); }));
    EXPECT_EQ(heard(), "(0w010203030)");
}

TEST_F(SlideShowTest, EscapeInFullScreenLeavesTheTimerAndAClickEndsAll)
{
    display(1);
    begin("60", "");
    robot.key(fullScreen(), EscapeKey);
    EXPECT_FALSE(isFullScreen() || view().SlideShowRunning || isOver());
    EXPECT_EQ(heard(), "(020)");
    main().tmrSlideShow.Interval = 30; // and the pictures go on, unheard
    ASSERT_TRUE(robot.until([&] { return isOver(); }));
    EXPECT_EQ(view().CurrentIndex, 3);
    EXPECT_EQ(heard(), "0)");

    setShowTimer(true);
    pressRowNamed("Alps");
    EXPECT_TRUE(isOver() && !view().SlideShowRunning);
}

TEST_F(SlideShowTest, TheDelayIsALeadingNumberBelow61)
{
    const std::pair<std::string, int> cases[] = {{"5 or so", 5000}, {"0.5", 500}, {"60.9", 60900}, {" 2.0015", 2002},
        {"0", -1}, {"61", -1}, {"-3", -1}, {"five", -1}};
    for (const auto& [text, milliseconds] : cases) {
        if (milliseconds < 0)
            prompts.expectNotice("Invalid entry. Use a value between 1 and 60 seconds.");
        begin(text, "0");
        EXPECT_EQ(refused || isOver() ? -1 : main().tmrSlideShow.Interval(), milliseconds) << text;
        EXPECT_EQ(view().SlideShowRunning, !refused) << text;
        main().slideShow().StopSlideShow();
    }
}

TEST_F(SlideShowTest, AFailingDeviceIsLoggedAndEndsNothing)
{
    struct : SilentMedia {
        void sndPlaySound(std::string_view) override { throw Failure(FailureKind::DeviceUnavailable); }
        void mciSendString(std::string_view) override { throw Failure(FailureKind::DeviceUnavailable); }
    } failing;
    desktop.setMedia(&failing);
    display(1);
    main().audio().PlayMidi("a.mid");
    main().audio().PlayMidi("b.mid");
    main().audio().PlayWav("a.wav");
    main().slideShow().StopSlideShow();
    std::vector<std::string> expected;
    for (const char* procedure : {"PlayMidi", "StopMidi", "PlayMidi", "PlayWav", "StopWav", "StopMidi"})
        expected.push_back(logged(procedure, "Device unavailable"));
    EXPECT_EQ(logLines(), expected);
    desktop.setMedia(&media);
}

} // namespace trovarium
