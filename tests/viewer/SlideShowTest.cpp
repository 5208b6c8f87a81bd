// SPDX-License-Identifier: GPL-3.0-or-later

#include "ViewerWindow.h"

#include "support/RecordedMedia.h"
#include "viewer/SlideShow.h"
#include "viewer/frmSSP.h"

namespace trovarium {

// A group of two photographs and a film, and the dialog of the show. Shows tick every 30 ms, and are waited for.
struct SlideShowTest : ViewerWindow {
    SlideShowTest()
    {
        main().dialogs().showSlideShow = [this] { form().showModal(); };
        openAlbum({{"p1.jpg"}, {"p2.jpg"}, {"p3.avi"}});
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
        });
        robot.click(main().lbButtonText(7));
    }
    bool isOver() { return !main().tmrSlideShow.Enabled(); }
    void expectItsEnd()
    {
        ASSERT_TRUE(robot.until([&] { return isOver(); }));
        EXPECT_FALSE(isFullScreen() || view().SlideShowRunning || main().imgbox.Visible());
        EXPECT_TRUE(cells().size() == 3 && main().imgThumbnail(2).hasFocus());
        EXPECT_TRUE(!main().picVideoWindow.Visible() && media.film->told.ends_with("Stop At0 "));
    }
    // Photographs by their position as the clips told them, "0" for a clip cut off; the music: "op" when it begins, "c"
    // when it is closed.
    std::string heard()
    {
        std::string all;
        for (const std::string& told : std::exchange(media.told, {}))
            all += told[told == "sound 0" || told.starts_with("music") ? 6 : told.rfind('\\') + 2];
        return all;
    }

    RecordedMedia media{desktop};
    FormHolder<frmSSP> form = held<frmSSP>(main());
};

TEST_F(SlideShowTest, AShowWalksTheGroupWithSoundAndMusicInEitherWindow)
{
    select({2});
    begin("0.03", "0");
    expectItsEnd();
    EXPECT_EQ(view().ViewMode, ViewThumbnails);
    EXPECT_TRUE(media.told.at(0).starts_with("music open \"" + test.paths().MidiPath + "Alps.mid\" type sequencer"));
    EXPECT_EQ(media.told.at(1), "music play " + media.told.at(0).substr(media.told.at(0).rfind(' ') + 1));
    // From the page of thumbnails the current photograph comes first, and the last one is heard again at the end.
    EXPECT_EQ(heard(), "op010203030c");
    // At the start of the group the empty place before the first photograph is asked for first, and has no clip.
    begin("0.03", "02");
    expectItsEnd();
    EXPECT_EQ(heard(), "op0010203030c");
    display(2);
    begin("0.03", "3");
    ASSERT_TRUE(isFullScreen());
    expectItsEnd();
    EXPECT_EQ(heard(), "03030c0c");
}

TEST_F(SlideShowTest, NoShowRunsUnderAnEdit)
{
    display(1);
    begin("60", "03");
    for (const std::string end : {"0c", "", ""}) { // a clip that somebody listens to plays on
        heard();
        robot.click(main().cmdEditPhotoInfo);
        EXPECT_EQ(heard(), end);
        EXPECT_TRUE(isOver());
    }
    setShowTimer(true); // by a step that was on its way
    main().tmrSlideShow.Tick.raise();
    EXPECT_TRUE(isOver() && view().CurrentIndex == 2);
    main().txtTitle.Text = "Saved";
    begin("60", "0");
    EXPECT_FALSE(view().InfoEditing || isOver());
    EXPECT_NE(test.bytes(test.paths().InfoPath + "p2.jpg.info").find("TITLE=Saved"), std::string::npos);
    pressRowNamed("Alps");
    EXPECT_TRUE(isOver() && !view().SlideShowRunning) << "a click ends it";
}

} // namespace trovarium
