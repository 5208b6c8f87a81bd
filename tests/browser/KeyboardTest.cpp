#include "MainWindow.h"

#include "browser/GroupListPane.h"
#include "browser/ThumbnailPages.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Keys.h"
#include "runtime/Failure.h"
#include "viewer/InfoBox.h"

#include <utility>

namespace trovarium {

namespace {

constexpr const char* AskRemoval = "Are you sure you want to remove the photograph(s) from this group?";

class KeyboardTest : public MainWindow {
protected:
    void key(int code, int shift = NoKeys) { robot.key(main(), code, shift); }
    void keys(const std::vector<int>& codes)
    {
        for (const int code : codes)
            key(code);
    }
    // The position of the thumbnail with the focus; 0 for none.
    int focus()
    {
        for (int cell = 0; cell < 16; ++cell) {
            if (main().imgThumbnail(cell).hasFocus())
                return main().pages().positionOf(cell);
        }
        return 0;
    }
};

} // namespace

TEST_F(KeyboardTest, ArrowsMoveAmongThumbnailsAndTurnPages)
{
    struct Case {
        const char* what;
        std::vector<int> keys;
        int focus;
    };
    const std::vector<Case> cases{
        {"right", {HomeKey, RightKey}, 2},
        {"left stops at the first", {HomeKey, LeftKey}, 1},
        {"down a row", {HomeKey, DownKey}, 5},
        {"up stops in the first row", {HomeKey, RightKey, UpKey}, 2},
        {"right turns the page", {HomeKey, DownKey, DownKey, DownKey, RightKey, RightKey, RightKey, RightKey}, 17},
        {"left turns it back", {EndKey, HomeKey, DownKey, DownKey, DownKey, DownKey, LeftKey}, 16},
        {"down turns the page", {HomeKey, RightKey, DownKey, DownKey, DownKey, DownKey}, 18},
        {"the end", {EndKey}, 38},
        {"right stops at the last", {EndKey, RightKey}, 38},
        {"down into a short row ends at the last", {EndKey, UpKey, RightKey, DownKey}, 38},
        {"down in the last row stops", {EndKey, LeftKey, DownKey}, 37},
    };
    openGroup(38);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        keys(c.keys);
        EXPECT_EQ(focus(), c.focus);
        EXPECT_EQ(main().lbStatusPage.Caption(), "Page " + std::to_string((c.focus - 1) / 16 + 1) + " of 3");
    }
    keys({HomeKey, PageDownKey});
    EXPECT_EQ(main().lbStatusPage.Caption(), "Page 2 of 3");
    key(PageUpKey);
    EXPECT_EQ(main().lbStatusPage.Caption(), "Page 1 of 3");
}

TEST_F(KeyboardTest, AHeldPageKeyTurnsNoPageWhileOneTurns)
{
    openGroup(38);
    key(HomeKey);
    int held = 0;
    robot.when([&] { return !main().VScroll1.Enabled(); },
        [&] {
            ++held;
            key(PageDownKey);
        });
    key(PageDownKey);
    EXPECT_EQ(held, 1);
    EXPECT_EQ(main().lbStatusPage.Caption(), "Page 2 of 3");
    EXPECT_EQ(main().VScroll1.Value(), 2);
    key(PageDownKey);
    EXPECT_EQ(main().lbStatusPage.Caption(), "Page 3 of 3");
}

TEST_F(KeyboardTest, AnEmptyCellThatKeptTheFocusDoesNothing)
{
    openGroup(18);
    main().imgThumbnail(9).SetFocus();
    robot.wheel(main().imgThumbnail(0), 1);
    ASSERT_FALSE(main().imgThumbnail(9).Visible());
    keys({SpaceKey, EnterKey});
    key(SpaceKey, ShiftKey);
    EXPECT_EQ(view().CurrentIndex, 1);
    EXPECT_EQ(view().ViewMode, ViewThumbnails);
    EXPECT_EQ(logLines(), std::vector<std::string>{});
    key(RightKey);
    EXPECT_EQ(focus(), 17);
}

TEST_F(KeyboardTest, SpaceSelectsAsTheMouseDoes)
{
    openGroup(9);
    keys({HomeKey, RightKey, SpaceKey});
    EXPECT_EQ(selectedPositions(), std::vector<int>{2});
    EXPECT_EQ(main().lbStatusCount.Caption(), "Photo 2 of 9");
    keys({RightKey, RightKey});
    key(SpaceKey, ShiftKey);
    EXPECT_EQ(selectedPositions(), (std::vector<int>{2, 3, 4}));
    key(LeftKey);
    key(SpaceKey, CtrlKey);
    EXPECT_EQ(selectedPositions(), (std::vector<int>{2, 4}));
    key(SpaceKey);
    EXPECT_EQ(selectedPositions(), std::vector<int>{3});
    key(AKey, CtrlKey);
    EXPECT_EQ(group().SelectedCount, 9);
    EXPECT_EQ(selectedPositions().size(), 9U);
    robot.whenMenuOpens([&] { robot.dismissMenu(); });
    key(MenuKey);
    EXPECT_EQ(group().SelectedCount, 10) << "the menu's press adds the one with the focus";
    EXPECT_EQ(linesOf("Alps"), names(9));

    putGroup("Alps", {});
    pressRowNamed("Alps");
    select({});
    key(AKey, CtrlKey);
    EXPECT_EQ(selectedPositions(), std::vector<int>{}) << "nothing in an empty group";
}

TEST_F(KeyboardTest, CtrlShiftWithAnArrowMovesTheSelectedAsADragDoes)
{
    struct Case {
        const char* what;
        std::vector<int> selected;
        std::vector<int> keys;
        std::vector<int> order; // of the first six
        std::vector<int> after;
        int focus;
    };
    const std::vector<Case> cases{
        {"to the front", {3}, {LeftKey}, {1, 3, 2, 4, 5, 6}, {2}, 2},
        {"to the back, and on", {1}, {RightKey, RightKey}, {2, 3, 1, 4, 5, 6}, {3}, 3},
        {"two, one row down", {1, 2}, {DownKey}, {3, 4, 5, 6, 1, 2}, {5, 6}, 6},
        {"two, one row up", {5, 6}, {UpKey}, {5, 6, 1, 2, 3, 4}, {1, 2}, 1},
        {"down into a short row", {3}, {DownKey}, {1, 2, 4, 5, 6, 3}, {6}, 6},
        {"apart, together before the next", {2, 4}, {RightKey}, {1, 3, 5, 2, 4, 6}, {4, 5}, 5},
        {"apart, together before the one in front", {2, 4}, {LeftKey}, {2, 4, 1, 3, 5, 6}, {1, 2}, 1},
        {"not beyond the front", {1, 3}, {LeftKey}, {1, 2, 3, 4, 5, 6}, {1, 3}, 1},
        {"not beyond the back", {6}, {RightKey}, {1, 2, 3, 4, 5, 6}, {6}, 1},
        {"none", {}, {RightKey}, {1, 2, 3, 4, 5, 6}, {}, 1},
    };
    openGroup(6);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        putGroup("Alps", names(6));
        pressRowNamed("Alps");
        select(c.selected);
        key(HomeKey);
        for (const int arrow : c.keys)
            key(arrow, ShiftKey | CtrlKey);
        std::vector<std::string> expected;
        for (const int number : c.order)
            expected.push_back("p" + std::to_string(number) + ".jpg");
        EXPECT_EQ(linesOf("Alps"), expected);
        EXPECT_EQ(cells(), expected);
        EXPECT_EQ(selectedPositions(), c.after);
        EXPECT_EQ(group().SelectedCount, static_cast<int>(c.after.size()));
        EXPECT_EQ(focus(), c.focus);
        if (expected != names(6)) {
            EXPECT_EQ(main().lbInfo(6).Caption(), expected.at(static_cast<std::size_t>(c.focus) - 1));
        }
    }

    putGroup("Alps", names(18));
    pressRowNamed("Alps");
    select({16});
    key(RightKey, ShiftKey | CtrlKey);
    EXPECT_EQ(focus(), 17);
    EXPECT_EQ(selectedPositions(), std::vector<int>{17});
    EXPECT_EQ(main().lbStatusPage.Caption(), "Page 2 of 2");

    bool refused = false;
    desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
        if (operation == FileOperation::Open && path.ends_with("Alps.lst") && !std::exchange(refused, true))
            throw Failure(FailureKind::PathFileAccess);
    });
    key(LeftKey, ShiftKey | CtrlKey);
    EXPECT_TRUE(refused);
    EXPECT_EQ(selectedPositions(), std::vector<int>{}) << "no other photograph than those that were";
}

TEST_F(KeyboardTest, EnterOpensAndEscapeGoesBackToThePage)
{
    openGroup(20);
    keys({EndKey, EnterKey});
    EXPECT_TRUE(main().imgbox.Visible());
    EXPECT_EQ(view().ViewMode, ViewPhoto);
    EXPECT_EQ(view().CurrentIndex, 20);
    key(LeftKey);
    EXPECT_EQ(view().CurrentIndex, 19);
    key(PlusKey, ShiftKey);
    EXPECT_EQ(view().ZoomLevel, 2);
    key(MinusKey);
    EXPECT_EQ(view().ZoomLevel, 1);
    key(EscapeKey);
    EXPECT_EQ(view().ViewMode, ViewThumbnails);
    EXPECT_FALSE(main().imgbox.Visible());
    EXPECT_EQ(cells().size(), 4U);
    EXPECT_TRUE(main().VScroll1.Enabled());
    EXPECT_EQ(focus(), 19) << "on the photograph that was on show";
    key(F11Key);
    EXPECT_EQ(opened, "full ");
}

TEST_F(KeyboardTest, DeleteAndRenameFollowTheRulesOfTheirEntries)
{
    openGroup(4);
    keys({HomeKey, SpaceKey});
    prompts.expectQuestion(AskRemoval, Answer::Yes);
    key(DeleteKey);
    EXPECT_EQ(linesOf("Alps"), (std::vector<std::string>{"p2.jpg", "p3.jpg", "p4.jpg"}));
    prompts.expectInput("Rename \"Alps\" group to ...", "Winter");
    key(F2Key);
    EXPECT_EQ(group().CurrentGroupName, "Winter");

    pressRow(0);
    key(F2Key); // a question would fail the test
    main().mnuEdit.Enabled = false;
    key(DeleteKey);
    EXPECT_EQ(linesOf("  All Photos  "), names(4));
}

TEST_F(KeyboardTest, ArrowsMoveAmongTheRowsAndScrollThem)
{
    openGroup(2, 7);
    main().pctAlbumList(7).SetFocus();
    keys({DownKey, DownKey, DownKey});
    EXPECT_EQ(main().groupList().FirstGroupRow, 2);
    EXPECT_TRUE(main().pctAlbumList(7).hasFocus());
    key(EnterKey);
    EXPECT_EQ(group().CurrentGroupName, "Rome");
    key(UpKey);
    key(SpaceKey);
    EXPECT_EQ(group().CurrentGroupName, "h7");
}

TEST_F(KeyboardTest, NoKeyActsWhileATextIsEdited)
{
    openGroup(20);
    keys({HomeKey, SpaceKey});
    main().infoBox().cmdEditPhotoInfo_Click();
    for (const bool inText : {true, false}) {
        if (inText)
            main().txtEvent.SetFocus();
        else
            main().imgThumbnail(1).SetFocus();
        keys({F2Key, F11Key, EscapeKey, RightKey, PlusKey, PageDownKey});
        key(AKey, CtrlKey);
        if (!inText)
            key(DeleteKey);
    }
    EXPECT_EQ(opened, "");
    EXPECT_EQ(main().lbStatusPage.Caption(), "Page 1 of 2");
    EXPECT_EQ(selectedPositions(), std::vector<int>{1});
    EXPECT_TRUE(prompts.asked().empty());
    main().infoBox().cmdEditPhotoInfo_Click();
}

TEST_F(KeyboardTest, TabGoesFromTheGroupOnShowToTheThumbnailsToTheButtons)
{
    openGroup(3);
    EXPECT_TRUE(main().pctAlbumList(0).hasFocus());
    key(EnterKey);
    EXPECT_EQ(group().CurrentGroupName, "  All Photos  ");
    std::vector<std::string> way;
    for (int i = 0; i < 40 && !main().pctNext.hasFocus(); ++i) {
        robot.tab(main());
        for (Control* control : std::initializer_list<Control*>{&main().pctAlbumList(1), &main().imgThumbnail(0),
                 &main().imgThumbnail(2), &main().cmdFullScreen, &main().pctPrev}) {
            if (control->hasFocus())
                way.push_back(control->Name());
        }
    }
    EXPECT_EQ(way,
        (std::vector<std::string>{
            "pctAlbumList(1)", "imgThumbnail(0)", "imgThumbnail(2)", "cmdFullScreen", "pctPrev"}));
    EXPECT_TRUE(main().pctNext.hasFocus());
}

} // namespace trovarium
