// SPDX-License-Identifier: GPL-3.0-or-later

#include "ViewerWindow.h"

#include "viewer/InfoBox.h"

#include <set>

namespace trovarium {

constexpr float Down = 454; // pixels of the frame: 469 - 15
constexpr float Raised = 305;

struct InfoBoxTest : ViewerWindow {
    InfoBoxTest()
    {
        openAlbum({{"p1.jpg", 100, 60}, {"p2.jpg", 200, 80, {"TITLE=Second"}}});
        test.put(test.paths().InfoPath + "p1.jpg.info", file(1, first, "100x60"));
        display(1);
    }
    static std::string file(int number, const Names& texts, const std::string& size)
    {
        return joinedLines(
            {"PhotoPath=\\Photos\\" + names(number).back(), "TITLE=" + texts[0], "PHOTOGRAPHER=" + texts[1],
                "YEAR=" + texts[2], "PEOPLE=" + texts[3], "PLACE=" + texts[4], "EVENT=" + texts[5],
                "KEYWORDS=" + texts[6], "ImageWidth=" + size.substr(0, 3), "ImageHeight=" + size.substr(4)});
    }
    std::string stored(int number) { return test.bytes(test.paths().InfoPath + names(number).back() + ".info"); }
    // The seven texts, in boxes or in labels.
    Names seen(bool edited)
    {
        Names all;
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            EXPECT_EQ(boxes[i]->Visible(), edited) << i;
            all.push_back(edited ? boxes[i]->Text() : labels[i]->Caption());
        }
        return all;
    }
    // What editing closes, as one value when all stand alike.
    std::set<bool> restEnabled()
    {
        std::set<bool> enabled{main().cmdFullScreen.Enabled(), main().cmdSlideshow.Enabled(),
            main().cmdZoomIn.Enabled(), main().cmdZoomOut.Enabled(), main().mnuFile.Enabled(), main().mnuEdit.Enabled(),
            main().mnuView.Enabled(), main().mnuSet.Enabled(), main().mnuHelp.Enabled()};
        for (int i = 0; i < 8; ++i)
            enabled.insert({main().pctAlbumList(i).Enabled(), main().optInfoPosition(i % 3).Enabled()});
        return enabled;
    }
    float top() { return main().framInfo.Top(); }
    std::string name() { return main().lbInfo(6).Caption(); }
    void edit() { robot.click(main().cmdEditPhotoInfo); }

    const Names first{"First", "Ann", "1998", "Ben", "Rome", "Walk", "a=b"};
    const std::vector<TextBox*> boxes{&main().txtTitle, &main().txtPhotographer, &main().txtYear, &main().txtPeople,
        &main().txtPlace, &main().txtEvent, &main().txtkeywords};
    const std::vector<Label*> labels{&main().lbTitle, &main().lbInfo(4), &main().lbInfo(0), &main().lbInfo(3),
        &main().lbInfo(1), &main().lbInfo(2), &main().lbInfo(5)};
};

TEST_F(InfoBoxTest, EditingClosesTheRestUntilTheSecondPressAndTextsComeBackAsTheyWere)
{
    robot.choose(main().mnuEditInfo);
    EXPECT_EQ(top(), Raised);
    EXPECT_EQ(seen(true), first);
    EXPECT_EQ(restEnabled(), std::set{false});
    EXPECT_TRUE(main().pctNext.Enabled() && view().InfoEditing && main().MousePointer() == NoDropPointer);
    main().tmrInfoBox.Tick.raise();
    EXPECT_EQ(top(), Raised) << "no tick takes a form away";

    // As they are typed, kept, and written: in one byte each the last would read as another letter.
    const Names typed{"Zürich €", "京都😀", "", "one\r\ntwo\nthree\rfour", " a=b PLACE=\t ", "", "Ã¼"};
    for (std::size_t i = 0; i < boxes.size(); ++i)
        boxes[i]->Text = typed[i];
    main().txtYear.SetFocus();
    robot.type(main(), "20017");
    edit();
    const Names kept{typed[0], typed[1], "2001", "one two three four", typed[4], "", typed[6]};
    EXPECT_EQ(seen(false), kept) << "the year takes no fifth character";
    EXPECT_EQ(stored(1), file(1, {"Z\xFCrich \x80", kept[1], kept[2], kept[3], kept[4], "", kept[6]}, "100x60"));
    EXPECT_EQ(top(), Raised) << "up for the moment";
    EXPECT_TRUE(main().tmrInfoBox.Enabled());
    EXPECT_EQ(restEnabled(), std::set{true});
    EXPECT_TRUE(!view().InfoEditing && main().MousePointer() == DefaultPointer);
    robot.click(main().pctNext);
    robot.click(main().pctPrev);
    EXPECT_EQ(seen(false), kept);
}

TEST_F(InfoBoxTest, SteppingWhileEditingSavesThePhotographLeftBehind)
{
    for (const std::string year : {"2000", "2001"}) {
        const bool alwaysUp = year == "2001";
        robot.click(main().optInfoPosition(alwaysUp ? 2 : 1));
        edit();
        robot.type(main(), "T" + year); // in place of the title
        robot.tab(main());
        robot.type(main(), year.substr(0, 2));
        const auto pressBack = [this] { robot.click(main().lbButtonText(1)); };
        robot.click(main().imgbox);
        robot.type(main(), year.substr(2, 1));
        pressBack(); // to nowhere, and the caret stays
        robot.type(main(), year.substr(3));
        robot.when([this] { return view().CurrentIndex == 2; }, [&] { robot.key(main(), PageUpKey), pressBack(); });
        robot.key(main(), PageDownKey);
        EXPECT_EQ(view().CurrentIndex, 2) << "no step within a step";
        EXPECT_EQ(stored(1), file(1, {"T" + year, "Ann", year, "Ben", "Rome", "Walk", "a=b"}, "200x80"))
            << "the new size";
        EXPECT_EQ(seen(alwaysUp), (Names{alwaysUp ? "S2000" : "Second", "", alwaysUp ? "2000" : "", "", "", "", ""}));
        EXPECT_EQ(stored(2), file(2, seen(alwaysUp), "200x80")) << "the slide down saves";
        EXPECT_EQ(top(), alwaysUp ? Raised : Down);
        EXPECT_EQ(restEnabled(), std::set{false});
        if (!alwaysUp)
            robot.key(main(), SpaceKey); // on the button, where the keys are: enters again
        robot.type(main(), "S" + year);
        main().txtYear.Text = year;
        edit();
        EXPECT_EQ(stored(2), file(2, {"S" + year, "", year, "", "", "", ""}, "200x80"));
        robot.click(main().pctPrev);
    }
}

TEST_F(InfoBoxTest, TheEndOfASessionSavesAnEditInTheMiddleOfASlide)
{
    edit();
    const auto logOut = [this] {
        main().txtTitle.Text = "Logout";
        main().EndOfSession.raise();
        EXPECT_EQ(stored(2), file(2, {"Logout", "", "", "", "", "", ""}, "200x80"));
    };
    robot.when([this] { return top() == 400; }, logOut);
    robot.click(main().pctNext);
}

TEST_F(InfoBoxTest, AnEditIsOfThePhotographThatIsCurrentWhenItBeginsAsItsFileStandsThen)
{
    // By a second computer, without a link and with a size that no picture has.
    const std::string own = test.paths().InfoPath + "p2.jpg.info";
    test.put(own, "ImageWidth=40000\r\nYEAR=about 1900\r\nPLACE=Oslo\r\nTITLE=" + own + "\r\n");
    pressRowNamed("Alps");
    robot.click(main().imgThumbnail(1));
    EXPECT_EQ(test.album().info.PhotoLink, "\\Photos\\p1.jpg") << "the last one stays until an edit begins";
    edit();
    EXPECT_EQ(seen(true), (Names{toNativePath(own), "", "abou", "", "Oslo", "", ""}));
    edit();
    EXPECT_EQ(stored(2), file(2, {own, "", "about 1900", "", "Oslo", "", ""}, "100x60"));
    edit();
    robot.whenMenuOpens([this] { robot.dismissMenu(); });
    robot.click(main().imgThumbnail(0), RightButton);
    main().txtTitle.Text = "Fog";
    int what = 0;
    test.files().setFaultHook([&](FileOperation operation, std::string_view path) {
        if ((operation == FileOperation::Print && path.ends_with("p2.jpg.info"))
            || (operation == FileOperation::LineInput && what == 1 && path.ends_with("p1.jpg.info")))
            throw Failure(FailureKind::DeviceIo);
    });
    edit();
    EXPECT_EQ(name(), "p2.jpg");
    robot.click(main().imgThumbnail(0));
    EXPECT_EQ(seen(false), first);
    robot.whenMenuOpens([this] { robot.dismissMenu(); });
    robot.click(main().imgThumbnail(1), RightButton);
    edit();
    EXPECT_EQ(seen(true).front(), "Fog") << "what the disk doesn't take is kept";
    edit();
    while (++what < 4) {
        if (what == 2)
            test.files().remove(test.paths().InfoPath + "p1.jpg.info");
        view().CurrentIndex = what == 3 ? 9 : 1;
        edit();
        EXPECT_EQ(seen(true), Names(7)) << what;
        EXPECT_FALSE(main().txtTitle.Enabled()) << "nobody types what goes nowhere";
        edit();
        EXPECT_EQ(name() + stored(1), what == 1 ? file(1, first, "100x60") : "") << what;
    }
    test.files().setFaultHook({});
    robot.close(main());
    EXPECT_EQ(stored(2), file(2, {"Fog", "", "about 1900", "", "Oslo", "", ""}, "100x60")) << "and tried again";
}

} // namespace trovarium
