#include "ViewerWindow.h"

#include "platform/toolkit/Desktop.h"
#include "support/RecordedMedia.h"
#include "viewer/InfoBox.h"

#include <set>
#include <tuple>

namespace trovarium {

namespace {

constexpr float Down = 454; // pixels of the frame: 469 - 15
constexpr float Raised = 305;
constexpr Color ChosenRed{255, 0, 0};

class InfoBoxTest : public ViewerWindow {
protected:
    // Two photographs of different sizes; the first is on show.
    void openTwo()
    {
        putPhoto("p1.jpg", 100, 60,
            {"TITLE=First", "PHOTOGRAPHER=Ann", "year=1998", "PEOPLE=Ben", "PLACE=Rome", "EVENT=Walk", "KEYWORDS=a=b"});
        putPhoto("p2.jpg", 200, 80, {"TITLE=Second"});
        openAlbum({"p1.jpg", "p2.jpg"});
        display(1);
    }
    float top() { return main().framInfo.Top(); }
    void moveOverStrip() { robot.moveTo(main().lbPhotoInfo, At{20, 5}); }
    void edit() { robot.click(main().cmdEditPhotoInfo); }
    // A field by its key, its text box and its label.
    std::vector<std::tuple<std::string, TextBox*, Label*>> fields()
    {
        return {{"YEAR", &main().txtYear, &main().lbInfo(0)}, {"PLACE", &main().txtPlace, &main().lbInfo(1)},
            {"EVENT", &main().txtEvent, &main().lbInfo(2)}, {"PEOPLE", &main().txtPeople, &main().lbInfo(3)},
            {"PHOTOGRAPHER", &main().txtPhotographer, &main().lbInfo(4)},
            {"KEYWORDS", &main().txtkeywords, &main().lbInfo(5)}, {"TITLE", &main().txtTitle, &main().lbTitle}};
    }
    std::string texts()
    {
        std::string all;
        for (const auto& [key, text, label] : fields())
            all += text->Visible() ? text->Text() + "|" : "";
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
    // The bytes behind the key in the information file.
    std::string storedLine(const std::string& name, const std::string& key)
    {
        const std::string text = "\r\n" + test.bytes(test.paths().InfoPath + name + ".info");
        const std::size_t start = text.find("\r\n" + key + "=") + key.size() + 3;
        return start < key.size() + 3 ? "no line " + key : text.substr(start, text.find("\r\n", start) - start);
    }
};

const std::set<bool> AllTrue{true};
const std::set<bool> AllFalse{false};

} // namespace

TEST_F(InfoBoxTest, ThePanelSlidesPixelByPixelAndACallDuringASlideIsDropped)
{
    openTwo();
    std::set<float> seen{Down};
    robot.when([&] { return seen.insert(top()), top() == Raised; }, [] {});
    robot.when([this] { return top() == 420; }, [this] { main().infoBox().ShowInfoBox(Up::No, Edit::Yes); });
    // A tick on the way has switched the timer off, and the mouse switches it on at the top.
    robot.when([this] { return top() == 400; }, [this] { main().tmrInfoBox.Tick.raise(); });
    moveOverStrip();
    EXPECT_EQ(top(), Raised);
    EXPECT_EQ(seen.size(), 150U) << "149 steps";
    EXPECT_EQ(texts(), "");
    EXPECT_TRUE(main().tmrInfoBox.Enabled());
    main().tmrInfoBox.Tick.raise();
    EXPECT_EQ(top(), Down);
    EXPECT_FALSE(main().tmrInfoBox.Enabled()) << "one tick a rise";
}

TEST_F(InfoBoxTest, ThePositionDecidesWhatMovesTheBox)
{
    openTwo();
    EXPECT_TRUE(main().optInfoPosition(1).Value());
    using Case = std::tuple<std::function<void()>, int, float, float, float>;
    for (const auto& [choose, index, atOnce, afterMouse, afterTick] :
        {Case{[this] { robot.click(main().optInfoPosition(2)); }, 2, Raised, Raised, Raised},
            {[this] { robot.click(main().optInfoPosition(0)); }, 0, Down, Down, Down},
            {[this] { robot.click(main().optInfoPosition(1)); }, 1, Down, Raised, Down},
            {[this] { robot.choose(main().mnuSetInfoUp); }, 2, Raised, Raised, Raised},
            {[this] { robot.choose(main().mnuSetInfoNormal); }, 1, Raised, Raised, Down},
            {[this] { robot.choose(main().mnuSetInfoDown); }, 0, Down, Down, Down}}) {
        choose();
        const std::vector<Menu*> entries{&main().mnuSetInfoDown, &main().mnuSetInfoNormal, &main().mnuSetInfoUp};
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(main().optInfoPosition(i).Value(), i == index);
            EXPECT_EQ(main().optInfoPosition(i).BackColor(), i == index ? ChosenRed : PanelGrey);
            EXPECT_EQ(entries[static_cast<std::size_t>(i)]->Checked(), i == index);
        }
        EXPECT_EQ(top(), atOnce);
        moveOverStrip();
        EXPECT_EQ(top(), afterMouse);
        main().tmrInfoBox.Enabled = true;
        main().tmrInfoBox.Tick.raise();
        EXPECT_EQ(top(), afterTick);
        EXPECT_EQ(main().tmrInfoBox.Enabled(), index == 2) << "a tick without effect lets it run on";
        robot.click(view().CurrentIndex == 1 ? main().pctNext : main().pctPrev);
        EXPECT_EQ(top(), afterTick);
    }
}

TEST_F(InfoBoxTest, EditingClosesTheRestUntilTheSecondPress)
{
    openTwo();
    robot.choose(main().mnuEditInfo);
    EXPECT_EQ(top(), Raised);
    EXPECT_EQ(texts(), "1998|Rome|Walk|Ben|Ann|a=b|First|");
    EXPECT_EQ(restEnabled(), AllFalse);
    EXPECT_TRUE(main().pctNext.Enabled() && view().InfoEditing);
    EXPECT_EQ(main().MousePointer(), NoDropPointer);
    robot.click(main().lbButtonText(6));
    EXPECT_TRUE(frameShows(200, 120)) << "a label forwards also from a disabled button";
    robot.click(main().pctAlbumList(0));
    EXPECT_EQ(group().CurrentGroupName, "Alps");
    main().tmrInfoBox.Tick.raise();
    EXPECT_EQ(top(), Raised) << "no tick takes a form away";

    main().txtYear.Text = "";
    main().txtYear.SetFocus();
    robot.type(main(), "20017");
    edit();
    EXPECT_EQ(storedLine("p1.jpg", "YEAR"), "2001") << "no fifth character";
    EXPECT_EQ(storedLine("p1.jpg", "EVENT"), "Walk");
    EXPECT_EQ(top(), Raised) << "up for the moment";
    EXPECT_TRUE(main().tmrInfoBox.Enabled());
    EXPECT_EQ(texts(), "");
    EXPECT_EQ(restEnabled(), AllTrue);
    EXPECT_FALSE(view().InfoEditing);
    EXPECT_EQ(main().MousePointer(), DefaultPointer);
}

TEST_F(InfoBoxTest, EditedTextsComeBackAsTheyWere)
{
    const std::string kyotoAndSmile = "\xE4\xBA\xAC\xE9\x83\xBD\xF0\x9F\x98\x80";
    const std::string oneLine = "one two three four";
    const std::string x(10'000, 'x');
    openTwo();
    // In one byte each the third would read as another letter.
    for (const auto& [typed, bytes, shown] :
        {std::tuple<std::string, std::string, std::string>{"Z\xC3\xBCrich", "Z\xFCrich", "Z\xC3\xBCrich"},
            {"\xE2\x82\xAC\xE2\x80\x93\xC5\x93", "\x80\x96\x9C", "\xE2\x82\xAC\xE2\x80\x93\xC5\x93"},
            {"\xC3\x83\xC2\xBC", "\xC3\x83\xC2\xBC", "\xC3\x83\xC2\xBC"}, {kyotoAndSmile, kyotoAndSmile, kyotoAndSmile},
            {x + "\xC3\xA9", x + "\xE9", x + "\xC3\xA9"}, {" a=b PLACE=\t ", " a=b PLACE=\t ", " a=b PLACE=\t "},
            {"one\r\ntwo\nthree\rfour", oneLine, oneLine}, {"", "", ""}}) {
        SCOPED_TRACE(bytes.substr(0, 40));
        edit();
        for (const auto& [key, text, label] : fields())
            text->Text = key == "YEAR" ? "2002" : typed;
        edit();
        EXPECT_EQ(storedLine("p1.jpg", "ImageWidth"), "100");
        for (const int position : {2, 1}) {
            pressRowNamed("Alps");
            display(position);
        }
        for (const auto& [key, text, label] : fields()) {
            EXPECT_EQ(storedLine("p1.jpg", key), key == "YEAR" ? "2002" : bytes);
            EXPECT_EQ(label->Caption(), key == "YEAR" ? "2002" : shown) << key;
        }
    }
    EXPECT_EQ(storedLine("p1.jpg", "PhotoPath"), "\\Photos\\p1.jpg");
    EXPECT_EQ(storedLine("p2.jpg", "TITLE"), "Second");
}

TEST_F(InfoBoxTest, SteppingWhileEditingSavesThePhotographLeftBehind)
{
    for (const bool alwaysUp : {false, true}) {
        SCOPED_TRACE(alwaysUp);
        openTwo();
        robot.click(main().optInfoPosition(alwaysUp ? 2 : 1));
        edit();
        main().txtTitle.Text = "Changed";
        robot.click(main().pctNext);
        EXPECT_EQ(storedLine("p1.jpg", "TITLE"), "Changed");
        EXPECT_EQ(storedLine("p1.jpg", "ImageWidth"), "200") << "the size is that of the new picture";
        EXPECT_EQ(main().txtTitle.Text(), "Second");
        EXPECT_EQ(restEnabled(), AllFalse);
        EXPECT_EQ(texts(), alwaysUp ? "||||||Second|" : "");
        EXPECT_EQ(top(), alwaysUp ? Raised : Down);
        EXPECT_EQ(storedLine("p2.jpg", "ImageWidth"), alwaysUp ? "no line ImageWidth" : "200");
        EXPECT_EQ(storedLine("p2.jpg", "TITLE"), "Second");
        if (!alwaysUp)
            edit(); // enters again
        main().txtTitle.Text = "Second, changed";
        edit();
        EXPECT_EQ(storedLine("p2.jpg", "TITLE"), "Second, changed");
        EXPECT_EQ(restEnabled(), AllTrue);
        main().unload();
        desktop.DoEvents();
    }
}

TEST_F(InfoBoxTest, LookingAndAnEndWhileEditingWriteNothing)
{
    const std::string clip = test.paths().AudioPath + "p2.jpg.wav";
    openTwo();
    const std::string before = test.bytes(test.paths().InfoPath + "p1.jpg.info");
    moveOverStrip();
    main().tmrInfoBox.Tick.raise();
    EXPECT_FALSE(main().cmdPlayAudioClip(0).Enabled() || main().cmdPlayAudioClip(1).Enabled());
    test.put(clip, "");
    robot.click(main().pctNext);
    RecordedMedia media(desktop);
    robot.click(main().cmdPlayAudioClip(0));
    robot.click(main().cmdPlayAudioClip(1));
    EXPECT_EQ(media.told, (std::vector<std::string>{"sound " + clip, "sound 0"}));
    EXPECT_EQ(main().lbInfo(1).Caption(), "") << "a field that the file lacks is empty";
    robot.click(main().pctPrev);
    edit();
    main().txtTitle.Text = "Lost";
    media.told.clear();
    robot.close(main());
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(media.told, (std::vector<std::string>{"sound 0", "music close "}));
    EXPECT_EQ(test.bytes(test.paths().InfoPath + "p1.jpg.info"), before);
}

} // namespace trovarium
