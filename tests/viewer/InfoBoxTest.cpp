#include "ViewerWindow.h"

#include "platform/toolkit/Desktop.h"
#include "support/RecordedMedia.h"
#include "viewer/InfoBox.h"

#include <set>

namespace trovarium {

namespace {

constexpr float Down = 454; // pixels of the frame: 469 - 15
constexpr float Raised = 305;
constexpr Color ChosenRed{255, 0, 0};

const std::vector<std::string> Fields{"YEAR", "PLACE", "EVENT", "PEOPLE", "PHOTOGRAPHER", "KEYWORDS", "TITLE"};

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
    std::vector<TextBox*> texts()
    {
        return {&main().txtYear, &main().txtPlace, &main().txtEvent, &main().txtPeople, &main().txtPhotographer,
            &main().txtkeywords, &main().txtTitle};
    }
    std::vector<Label*> labels()
    {
        return {&main().lbInfo(0), &main().lbInfo(1), &main().lbInfo(2), &main().lbInfo(3), &main().lbInfo(4),
            &main().lbInfo(5), &main().lbTitle};
    }
    std::set<bool> textsVisible()
    {
        std::set<bool> visible;
        for (const TextBox* text : texts())
            visible.insert(text->Visible());
        return visible;
    }
    // What editing closes, as one value when all stand alike.
    std::set<bool> restEnabled()
    {
        return {main().cmdFullScreen.Enabled(), main().cmdZoomIn.Enabled(), main().mnuFile.Enabled(),
            main().mnuEdit.Enabled(), main().mnuHelp.Enabled(), main().pctAlbumList(7).Enabled(),
            main().optInfoPosition(2).Enabled()};
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

TEST_F(InfoBoxTest, ThePanelSlidesPixelByPixelWhileEventsRun)
{
    openTwo();
    ASSERT_EQ(top(), Down);
    std::set<float> seen{Down};
    robot.when([&] { return seen.insert(top()), top() == Raised; }, [] {});
    moveOverStrip();
    EXPECT_EQ(top(), Raised);
    EXPECT_EQ(seen.size(), 150U) << "149 steps";
    EXPECT_TRUE(main().tmrInfoBox.Enabled());
    main().tmrInfoBox.Tick.raise();
    EXPECT_EQ(top(), Down);
    EXPECT_FALSE(main().tmrInfoBox.Enabled()) << "one tick a rise";
}

TEST_F(InfoBoxTest, ACallDuringASlideIsDropped)
{
    openTwo();
    robot.when([this] { return top() == 420; }, [this] { main().infoBox().ShowInfoBox(Up::No, Edit::Yes); });
    // A tick on the way has switched the timer off, and the mouse switches it on at the top.
    robot.when([this] { return top() == 400; }, [this] { main().tmrInfoBox.Tick.raise(); });
    main().tmrInfoBox.Enabled = true;
    main().infoBox().ShowInfoBox(Up::Yes, Edit::No);
    EXPECT_EQ(top(), Raised);
    EXPECT_EQ(textsVisible(), AllFalse);
    EXPECT_FALSE(main().tmrInfoBox.Enabled());
    moveOverStrip();
    EXPECT_TRUE(main().tmrInfoBox.Enabled());
}

TEST_F(InfoBoxTest, ThePositionDecidesWhatMovesTheBox)
{
    openTwo();
    const struct {
        std::function<void()> choose;
        int index;
        float atOnce;
        float afterMouse;
        float afterTick;
    } cases[] = {
        {[this] { robot.click(main().optInfoPosition(2)); }, 2, Raised, Raised, Raised},
        {[this] { robot.click(main().optInfoPosition(0)); }, 0, Down, Down, Down},
        {[this] { robot.click(main().optInfoPosition(1)); }, 1, Down, Raised, Down},
        {[this] { robot.choose(main().mnuSetInfoUp); }, 2, Raised, Raised, Raised},
        {[this] { robot.choose(main().mnuSetInfoNormal); }, 1, Raised, Raised, Down},
        {[this] { robot.choose(main().mnuSetInfoDown); }, 0, Down, Down, Down},
    };
    EXPECT_TRUE(main().optInfoPosition(1).Value());
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        c.choose();
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(main().optInfoPosition(i).Value(), i == c.index);
            EXPECT_EQ(main().optInfoPosition(i).BackColor(), i == c.index ? ChosenRed : PanelGrey);
        }
        EXPECT_EQ(main().mnuSetInfoDown.Checked(), c.index == 0);
        EXPECT_EQ(main().mnuSetInfoNormal.Checked(), c.index == 1);
        EXPECT_EQ(main().mnuSetInfoUp.Checked(), c.index == 2);
        EXPECT_EQ(top(), c.atOnce);
        moveOverStrip();
        EXPECT_EQ(top(), c.afterMouse);
        main().tmrInfoBox.Enabled = true;
        main().tmrInfoBox.Tick.raise();
        EXPECT_EQ(top(), c.afterTick);
        EXPECT_EQ(main().tmrInfoBox.Enabled(), c.index == 2) << "a tick without effect lets it run on";
        robot.click(view().CurrentIndex == 1 ? main().pctNext : main().pctPrev);
        EXPECT_EQ(top(), c.afterTick);
    }
}

TEST_F(InfoBoxTest, EditingClosesTheRestUntilTheSecondPress)
{
    openTwo();
    edit();
    EXPECT_EQ(top(), Raised);
    EXPECT_EQ(textsVisible(), AllTrue);
    EXPECT_EQ(restEnabled(), AllFalse);
    EXPECT_TRUE(main().pctNext.Enabled());
    EXPECT_TRUE(view().InfoEditing);
    EXPECT_EQ(main().MousePointer(), NoDropPointer);
    robot.click(main().lbButtonText(6));
    EXPECT_TRUE(frameShows(200, 120)) << "a label forwards also from a disabled button";
    robot.click(main().pctAlbumList(0));
    EXPECT_EQ(group().CurrentGroupName, "Alps");
    main().tmrInfoBox.Enabled = true;
    main().tmrInfoBox.Tick.raise();
    EXPECT_EQ(top(), Raised) << "no tick takes a form away";
    main().tmrInfoBox.Enabled = false;

    main().txtYear.Text = "";
    main().txtYear.SetFocus();
    robot.type(main(), "19987");
    EXPECT_EQ(main().txtYear.Text(), "1998") << "no fifth character";
    edit();
    EXPECT_EQ(top(), Raised) << "up for the moment";
    EXPECT_TRUE(main().tmrInfoBox.Enabled());
    EXPECT_EQ(textsVisible(), AllFalse);
    EXPECT_EQ(restEnabled(), AllTrue);
    EXPECT_FALSE(view().InfoEditing);
    EXPECT_EQ(main().MousePointer(), DefaultPointer);
}

TEST_F(InfoBoxTest, EditedTextsComeBackAsTheyWere)
{
    struct Case {
        std::string text;
        std::string bytes;
        std::string comesBack = text;
    };
    const std::string kyotoAndSmile = "\xE4\xBA\xAC\xE9\x83\xBD\xF0\x9F\x98\x80";
    const std::vector<Case> cases{
        {"Z\xC3\xBCrich", "Z\xFCrich"},
        {"\xE2\x82\xAC\xE2\x80\x93\xC5\x93\xC5\xB8", "\x80\x96\x9C\x9F"},
        {"\xC3\x83\xC2\xBC", "\xC3\x83\xC2\xBC"}, // would read as another letter in one byte each
        {kyotoAndSmile, kyotoAndSmile},
        {std::string(10'000, 'x') + "\xC3\xA9", std::string(10'000, 'x') + "\xE9"},
        {" a=b PLACE=\t ", " a=b PLACE=\t "},
        {"one\r\ntwo\nthree\rfour", "one two three four", "one two three four"},
        {"", ""},
    };
    openTwo();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.bytes.substr(0, 40));
        edit();
        for (TextBox* text : texts())
            text->Text = text == &main().txtYear ? "1998" : c.text;
        edit();
        EXPECT_EQ(storedLine("p1.jpg", "ImageWidth"), "100");
        for (const int position : {2, 1}) {
            pressRowNamed("Alps");
            display(position);
        }
        for (std::size_t i = 0; i < Fields.size(); ++i) {
            EXPECT_EQ(storedLine("p1.jpg", Fields[i]), Fields[i] == "YEAR" ? "1998" : c.bytes) << Fields[i];
            EXPECT_EQ(labels()[i]->Caption(), Fields[i] == "YEAR" ? "1998" : c.comesBack) << Fields[i];
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
        EXPECT_TRUE(view().InfoEditing);
        EXPECT_EQ(restEnabled(), AllFalse);
        EXPECT_EQ(textsVisible(), alwaysUp ? AllTrue : AllFalse);
        EXPECT_EQ(top(), alwaysUp ? Raised : Down);
        EXPECT_EQ(storedLine("p2.jpg", "ImageWidth"), alwaysUp ? "no line ImageWidth" : "200");
        EXPECT_EQ(storedLine("p2.jpg", "TITLE"), "Second");
        if (!alwaysUp)
            edit(); // enters again
        EXPECT_EQ(textsVisible(), AllTrue);
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
    openTwo();
    const std::string before = test.bytes(test.paths().InfoPath + "p1.jpg.info");
    moveOverStrip();
    main().tmrInfoBox.Tick.raise();
    EXPECT_FALSE(main().cmdPlayAudioClip(1).Enabled());
    test.put(test.paths().AudioPath + "p2.jpg.wav", "");
    robot.click(main().pctNext);
    EXPECT_TRUE(main().cmdPlayAudioClip(1).Enabled());
    RecordedMedia media(desktop);
    robot.click(main().cmdPlayAudioClip(0));
    robot.click(main().cmdPlayAudioClip(1));
    EXPECT_EQ(media.told, (std::vector<std::string>{"sound " + test.paths().AudioPath + "p2.jpg.wav", "sound 0"}));
    EXPECT_EQ(main().lbInfo(1).Caption(), "") << "a field that the file lacks is empty";
    robot.click(main().pctPrev);
    EXPECT_EQ(test.bytes(test.paths().InfoPath + "p1.jpg.info"), before);
    edit();
    main().txtTitle.Text = "Lost";
    media.told.clear();
    robot.close(main());
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(media.told, (std::vector<std::string>{"sound 0", "music close "}));
    EXPECT_EQ(test.bytes(test.paths().InfoPath + "p1.jpg.info"), before) << "an end while editing saves nothing";
}

} // namespace trovarium
