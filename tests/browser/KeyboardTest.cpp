#include "MainWindow.h"

namespace trovarium {

namespace {

using Keys = std::vector<int>;

class KeyboardTest : public MainWindow {
protected:
    void key(int code, int shift = NoKeys) { robot.key(main(), code, shift); }
    void keys(const Keys& codes, int shift = NoKeys)
    {
        for (const int code : codes)
            key(code, shift);
    }
    // The position of the thumbnail with the focus; 0 for none.
    int focus()
    {
        for (int cell = 0; cell < 16; ++cell)
            if (main().imgThumbnail(cell).hasFocus())
                return main().pages().positionOf(cell);
        return 0;
    }
};

} // namespace

TEST_F(KeyboardTest, ArrowsMoveAmongThumbnailsAndTurnPages)
{
    struct Case {
        const char* what;
        Keys pressed;
        int there;
    };
    openGroup(34);
    for (const auto& [what, pressed, there] : {Case{.what = "right", .pressed = {HomeKey, RightKey}, .there = 2},
             {"left stops at the first", {HomeKey, LeftKey}, 1}, {"up stops in the first row", {HomeKey, UpKey}, 1},
             {"down turns the page", {HomeKey, DownKey, DownKey, DownKey, DownKey}, 17},
             {"right stops at the last", {EndKey, RightKey}, 34},
             {"down in the last row stops", {EndKey, LeftKey, DownKey}, 33},
             {"a page on", {HomeKey, RightKey, PageDownKey}, 18}, {"and back", {EndKey, PageUpKey}, 18}}) {
        keys(pressed);
        EXPECT_EQ(focus(), there) << what;
        EXPECT_EQ(page(), "Page " + std::to_string((there - 1) / 16 + 1) + " of 3") << what;
    }
}

TEST_F(KeyboardTest, AHeldKeyWaitsForThePage)
{
    openGroup(34);
    robot.when([&] { return !main().VScroll1.Enabled(); }, [&] { key(EndKey); });
    keys({HomeKey, PageDownKey});
    EXPECT_EQ(page() + " " + std::to_string(focus()), "Page 2 of 3 17");
}

TEST_F(KeyboardTest, EnterOpensArrowsStepSignsZoomAndEscapeGoesBack)
{
    openGroup(34);
    keys({EndKey, EnterKey});
    struct Case {
        int pressed, shift, index, zoom;
    };
    for (const auto& [pressed, shift, index, zoom] :
        {Case{.pressed = LeftKey, .shift = NoKeys, .index = 33, .zoom = -1}, {RightKey, NoKeys, 34, -1},
            {HomeKey, NoKeys, 34, -1}, {LeftKey, ShiftKey, 34, -1}, {PlusKey, ShiftKey, 34, 2},
            {PlusKey, CtrlKey, 34, 2}, {MinusKey, ShiftKey, 34, 1}}) {
        key(pressed, shift);
        EXPECT_EQ(std::pair(view().CurrentIndex, int(view().ZoomLevel)), std::pair(index, zoom));
    }
    main().mnuViewPrevious.Enabled = false;
    keys({LeftKey, EscapeKey});
    EXPECT_EQ(view().ViewMode, ViewThumbnails);
    EXPECT_EQ(focus(), 34);
    key(F11Key);
    EXPECT_EQ(opened, "full ");
}

TEST_F(KeyboardTest, NoKeyActsWhileATextIsEdited)
{
    openGroup(34);
    key(EndKey);
    for (const bool isField : {true, false}) {
        main().txtYear.Visible = isField;
        view().InfoEditing = !isField;
        keys({F2Key, F11Key, HomeKey, DeleteKey});
        key(AKey, CtrlKey);
        EXPECT_EQ(opened + page() + std::to_string(focus()), "Page 3 of 334");
    }
}

TEST_F(KeyboardTest, CtrlShiftWithAnArrowMovesTheSelectedAsOneBlock)
{
    struct Case {
        Positions selected;
        Keys arrows;
        std::string order;
        Positions after;
    };
    openGroup(18);
    for (const auto& [selected, arrows, order, after] :
        {Case{.selected = {3}, .arrows = {LeftKey}, .order = "132456", .after = {2}},
            {{1}, {RightKey, RightKey}, "231456", {3}},                              // and on
            {{1, 2}, {DownKey}, "345612", {5, 6}}, {{3}, {DownKey}, "124563", {6}},  // into a short row
            {{2, 4}, {RightKey}, "135246", {4, 5}},                                  // apart, then together
            {{1, 3}, {LeftKey}, "123456", {1, 3}}, {{6}, {RightKey}, "123456", {6}}, // not beyond the ends
            {{}, {RightKey}, "123456", {}}}) {
        putGroup("Alps", names(6));
        pressRowNamed("Alps");
        select(selected);
        keys(arrows, ShiftKey | CtrlKey);
        EXPECT_EQ(numbersOf("Alps"), order);
        EXPECT_EQ(selectedPositions(), after) << order;
    }
    putGroup("Alps", names(18));
    pressRowNamed("Alps");
    select({16});
    key(RightKey, ShiftKey | CtrlKey);
    EXPECT_EQ(page() + " " + std::to_string(focus()), "Page 2 of 2 17");
    test.failAt(FileOperation::Print, "Alps.lst", FailureKind::DiskFull);
    key(RightKey, ShiftKey | CtrlKey);
    EXPECT_EQ(selectedPositions(), Positions{}) << "a list that couldn't be written";
    EXPECT_EQ(cells(), (Names{"p16.jpg", "p18.jpg"}));
}

TEST_F(KeyboardTest, SpaceSelectsAsTheMouseDoesAndCtrlASelectsAll)
{
    struct Case {
        Keys way;
        int pressed, shift;
        Positions selected;
    };
    openGroup(6);
    for (const auto& [way, pressed, shift, selected] :
        {Case{.way = {HomeKey}, .pressed = SpaceKey, .shift = NoKeys, .selected = {1}},
            {{RightKey, RightKey, RightKey}, SpaceKey, ShiftKey, {1, 2, 3, 4}},
            {{LeftKey}, SpaceKey, CtrlKey, {1, 2, 4}}, {{}, SpaceKey, NoKeys, {3}}, {{}, AKey, NoKeys, {3}},
            {{}, AKey, CtrlKey, {1, 2, 3, 4, 5, 6}}}) {
        keys(way);
        key(pressed, shift);
        EXPECT_EQ(selectedPositions(), selected);
    }
    robot.whenMenuOpens([&] { robot.dismissMenu(); });
    key(MenuKey);
    EXPECT_EQ(group().SelectedCount, 7) << "the menu's press adds the one with the focus";
}

TEST_F(KeyboardTest, DeleteAndF2FollowTheRulesOfTheirEntries)
{
    openGroup(4, 7);
    keys({HomeKey, SpaceKey});
    main().groupList().ScrollGroupNames(2); // to where its row is another's
    prompts.expectQuestion("Are you sure you want to remove the photograph(s) from this group?", Answer::Yes);
    key(DeleteKey);
    EXPECT_EQ(cells(), (Names{"p2.jpg", "p3.jpg", "p4.jpg"}));
    EXPECT_EQ(linesOf("Alps"), cells());
    prompts.expectInput("Rename \"Alps\" group to ...", "Winter");
    key(F2Key);
    EXPECT_EQ(group().CurrentGroupName, "Winter");
    main().groupList().ScrollGroupNames(0);
    pressRow(0);
    keys({F2Key, DeleteKey}); // nothing is selected, and a question would fail the test
    select({1});
    main().mnuEdit.Enabled = false;
    key(DeleteKey);
    EXPECT_EQ(numbersOf("  All Photos  "), "1234");
}

TEST_F(KeyboardTest, ArrowsMoveAmongRowsAndScrollTheList)
{
    openGroup(1, 7);
    pressRow(7, MiddleButton);
    keys({DownKey, DownKey, UpKey, EnterKey});
    EXPECT_EQ(group().CurrentGroupName + " " + rows().at(6), "h7 h7");
    main().pctAlbumList(1).SetFocus();
    keys({UpKey, UpKey, UpKey});
    EXPECT_EQ(rows().front(), "  All Photos  ");
    EXPECT_TRUE(main().pctAlbumList(0).hasFocus());
}

} // namespace trovarium
