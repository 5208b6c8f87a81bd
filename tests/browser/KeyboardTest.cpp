// SPDX-License-Identifier: GPL-3.0-or-later

#include "MainWindow.h"

namespace trovarium {

using Keys = std::vector<int>;

struct KeyboardTest : MainWindow {
    void key(int code, int shift = NoKeys) { robot.key(main(), code, shift); }
    void keys(const Keys& codes, int shift = NoKeys)
    {
        for (const int code : codes)
            key(code, shift);
    }
    // The photograph on show and its zoom, or the page, the position with the focus and what is selected.
    std::string state()
    {
        if (view().ViewMode == ViewPhoto)
            return std::to_string(view().CurrentIndex) + " x" + std::to_string(view().ZoomLevel);
        std::string text = page().substr(5, 2);
        for (int cell = 0; cell < 16; ++cell)
            if (main().imgThumbnail(cell).hasFocus())
                text += std::to_string(main().pages().positionOf(cell)) + ":";
        for (const int position : selectedPositions())
            text += " " + std::to_string(position);
        return text;
    }
};

TEST_F(KeyboardTest, KeysMoveTheFocusSelectAndShowPhotographs)
{
    struct Case {
        Keys way;
        int last, shift;
        std::string shown;
    };
    const auto run = [this](const std::vector<Case>& cases) {
        for (const auto& [way, last, shift, shown] : cases) {
            keys(way);
            key(last, shift);
            EXPECT_EQ(state(), shown);
        }
    };
    openGroup(34);
    run({{.way = {HomeKey}, .last = RightKey, .shift = NoKeys, .shown = "1 2:"}, {{HomeKey}, LeftKey, NoKeys, "1 1:"},
        {{HomeKey}, UpKey, NoKeys, "1 1:"}, {{HomeKey, DownKey, DownKey, DownKey}, DownKey, NoKeys, "2 17:"},
        {{EndKey}, RightKey, NoKeys, "3 34:"}, {{EndKey, LeftKey}, DownKey, NoKeys, "3 33:"},
        {{HomeKey, RightKey}, PageDownKey, NoKeys, "2 18:"}, {{EndKey}, PageUpKey, NoKeys, "2 18:"},
        {{HomeKey}, SpaceKey, NoKeys, "1 1: 1"}, {{RightKey, RightKey, RightKey}, SpaceKey, ShiftKey, "1 4: 1 2 3 4"},
        {{LeftKey}, SpaceKey, CtrlKey, "1 3: 1 2 4"}, {{}, SpaceKey, NoKeys, "1 3: 3"}, {{}, AKey, NoKeys, "1 3: 3"}});
    key(AKey, CtrlKey);
    robot.whenMenuOpens([&] { robot.dismissMenu(); });
    key(MenuKey);
    EXPECT_EQ(group().SelectedCount, 35) << "the menu's press adds the one with the focus to all";
    // A held key waits for the page.
    robot.when([&] { return !main().VScroll1.Enabled(); }, [&] { key(EndKey); });
    keys({HomeKey, PageDownKey});
    EXPECT_EQ(state().substr(0, 5), "2 17:");
    run({{{EndKey, EnterKey}, LeftKey, NoKeys, "33 x-1"}, {{}, RightKey, NoKeys, "34 x-1"},
        {{}, HomeKey, NoKeys, "34 x-1"}, {{}, LeftKey, ShiftKey, "34 x-1"}, {{}, PlusKey, ShiftKey, "34 x2"},
        {{}, PlusKey, CtrlKey, "34 x2"}, {{}, MinusKey, ShiftKey, "34 x1"}});
    main().mnuViewPrevious.Enabled = false;
    keys({LeftKey, EscapeKey, F11Key});
    key(FKey, CtrlKey);
    main().mnuEditSearchAppend.Enabled = false;
    key(FKey, CtrlKey);
    EXPECT_EQ(state() + opened, "3 34:full search ");
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
        key(FKey, CtrlKey);
        EXPECT_EQ(opened + state(), "3 34:");
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
    EXPECT_EQ(state(), "2 17: 17");
    test.failAt(FileOperation::Print, "Alps.lst", FailureKind::DiskFull);
    key(RightKey, ShiftKey | CtrlKey);
    EXPECT_EQ(selectedPositions(), Positions{}) << "a list that couldn't be written";
    EXPECT_EQ(cells(), (Names{"p16.jpg", "p18.jpg"}));
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

} // namespace trovarium
