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

TEST_F(KeyboardTest, ArrowsMoveAmongThumbnailsAndTurnPagesEnterOpensAndEscapeGoesBack)
{
    openGroup(34);
    for (const auto& [what, pressed, there] : {std::tuple<const char*, Keys, int>{"right", {HomeKey, RightKey}, 2},
             {"left stops at the first", {HomeKey, LeftKey}, 1}, {"down a row", {HomeKey, DownKey}, 5},
             {"up stops in the first row", {HomeKey, RightKey, UpKey}, 2},
             {"down turns the page", {HomeKey, DownKey, DownKey, DownKey, DownKey}, 17}, {"the end", {EndKey}, 34},
             {"right stops at the last", {EndKey, RightKey}, 34},
             {"down in the last row stops", {EndKey, LeftKey, DownKey}, 33},
             {"a page on", {HomeKey, RightKey, PageDownKey}, 18}, {"and back", {EndKey, PageUpKey}, 18}}) {
        SCOPED_TRACE(what);
        keys(pressed);
        EXPECT_EQ(focus(), there);
        EXPECT_EQ(page(), "Page " + std::to_string((there - 1) / 16 + 1) + " of 3");
    }
    key(HomeKey);
    const auto turning = [&] { return !main().VScroll1.Enabled(); };
    robot.when(turning, [&] { key(EndKey); });
    robot.when(turning, [&] { main().VScroll1.Value = 3; });
    key(PageDownKey);
    EXPECT_EQ(page() + " " + std::to_string(focus()), "Page 2 of 3 17") << "a held key waits for the page";

    // A cell that kept the focus on a page where it is empty leaves the keys to the current photograph, if that is
    // there.
    const auto pressSpaceOnEmptyCell = [&](int current) {
        keys({EndKey, HomeKey});
        main().imgThumbnail(9).SetFocus();
        robot.wheel(main().imgThumbnail(0), 2);
        EXPECT_FALSE(main().imgThumbnail(9).Visible());
        view().CurrentIndex = current;
        key(SpaceKey);
        EXPECT_EQ(selectedPositions(), current == 33 ? Positions{33} : Positions{});
    };
    pressSpaceOnEmptyCell(1);
    keys({EnterKey, RightKey});
    EXPECT_EQ(focus(), 33);
    pressSpaceOnEmptyCell(33);
    EXPECT_TRUE(!main().thumbnailDrag().MouseIsDown && focus() == 33);
    keys({EnterKey, RightKey});
    for (const auto& [pressed, shift, index, zoom] :
        {std::tuple{LeftKey, 0, 33, -1}, {RightKey, 0, 34, -1}, {HomeKey, 0, 34, -1}, {LeftKey, 0, 33, -1},
            {RightKey, 1, 33, -1}, {PlusKey, 1, 33, 2}, {PlusKey, 2, 33, 2}, {MinusKey, 1, 33, 1}}) {
        key(pressed, shift);
        EXPECT_EQ(view().CurrentIndex, index);
        EXPECT_EQ(view().ZoomLevel, zoom);
    }
    main().mnuViewNext.Enabled = false;
    keys({RightKey, EscapeKey});
    EXPECT_EQ(view().ViewMode, ViewThumbnails);
    EXPECT_TRUE(main().VScroll1.Enabled());
    for (const bool isField : {true, false}) {
        main().txtYear.Visible = isField;
        view().InfoEditing = !isField;
        keys({F2Key, F11Key, HomeKey, DeleteKey});
        key(AKey, CtrlKey);
        EXPECT_EQ(opened + page() + std::to_string(focus()), "Page 3 of 333") << "no key acts while a text is edited";
    }
    view().InfoEditing = false;
    key(F11Key);
    EXPECT_EQ(opened, "full ");
}

TEST_F(KeyboardTest, SpaceSelectsAsTheMouseDoesAndCtrlShiftWithAnArrowMovesTheSelectedAsADragDoes)
{
    openGroup(18);
    for (const auto& [what, selected, arrows, order, after, there] :
        {std::tuple<const char*, Positions, Keys, std::string, Positions, int>{
             "to the front", {3}, {LeftKey}, "132456", {2}, 2},
            {"to the back, and on", {1}, {RightKey, RightKey}, "231456", {3}, 3},
            {"two, one row down", {1, 2}, {DownKey}, "345612", {5, 6}, 6},
            {"down into a short row", {3}, {DownKey}, "124563", {6}, 6},
            {"apart, together before the next", {2, 4}, {RightKey}, "135246", {4, 5}, 5},
            {"not beyond the front", {1, 3}, {LeftKey}, "123456", {1, 3}, 1},
            {"not beyond the back", {6}, {RightKey, LeftKey}, "123465", {5}, 5},
            {"none", {}, {RightKey}, "123456", {}, 1}}) {
        SCOPED_TRACE(what);
        putGroup("Alps", names(6));
        pressRowNamed("Alps");
        select(selected);
        key(HomeKey);
        keys(arrows, ShiftKey | CtrlKey);
        EXPECT_EQ(numbersOf("Alps"), order);
        EXPECT_EQ(selectedPositions(), after);
        EXPECT_EQ(focus(), there);
    }
    for (const auto& [way, pressed, shift, selected] :
        {std::tuple<Keys, int, int, Positions>{{HomeKey}, SpaceKey, NoKeys, {1}}, {{RightKey}, SpaceKey, NoKeys, {2}},
            {{RightKey, RightKey}, SpaceKey, ShiftKey, {2, 3, 4}}, {{LeftKey}, SpaceKey, CtrlKey, {2, 4}},
            {{}, SpaceKey, NoKeys, {3}}, {{}, AKey, NoKeys, {3}}, {{}, RightKey, CtrlKey, {3}},
            {{}, AKey, CtrlKey, {1, 2, 3, 4, 5, 6}}}) {
        keys(way);
        key(pressed, shift);
        EXPECT_EQ(selectedPositions(), selected);
    }
    EXPECT_EQ(main().lbStatusCount.Caption(), "Photo 3 of 6");
    robot.whenMenuOpens([&] { robot.dismissMenu(); });
    key(MenuKey);
    EXPECT_EQ(group().SelectedCount, 7) << "the menu's press adds the one with the focus";
    pressRowNamed("Rome");
    key(AKey, CtrlKey);
    EXPECT_EQ(selectedPositions(), Positions{1});

    putGroup("Alps", names(18));
    pressRowNamed("Alps");
    select({16});
    key(RightKey, ShiftKey | CtrlKey);
    EXPECT_EQ(selectedPositions(), Positions{17});
    EXPECT_EQ(page() + " " + std::to_string(focus()), "Page 2 of 2 17");
    test.failAt(FileOperation::Print, "Alps.lst", FailureKind::DiskFull);
    key(RightKey, ShiftKey | CtrlKey);
    EXPECT_EQ(selectedPositions(), Positions{}) << "a list that couldn't be written";
    EXPECT_EQ(cells(), (Names{"p16.jpg", "p18.jpg"}));
    EXPECT_EQ(logLines(), Names{});
}

TEST_F(KeyboardTest, EachKeyActsOnWhatWasPressedLastAndOnWhatIsOnShow)
{
    openGroup(18);
    const auto pressCell = [this](int cell) { robot.click(main().imgThumbnail(cell)); };
    const auto pressNext = [this] { robot.click(main().lbButtonText(0)); };
    view().CurrentIndex = 0;
    const std::tuple<const char*, std::function<void()>, Keys, int> acts[] = {
        {"nothing to open", pressNext, {RightKey, RightKey}, 2}, {"a thumbnail", [&] { pressCell(4); }, {EnterKey}, 5},
        {"a photograph", [&] { robot.click(main().imgbox); }, {EnterKey, EscapeKey, RightKey}, 6},
        {"a thumbnail again", [&] { pressCell(15); }, {EnterKey}, 16}, {"a button", pressNext, {SpaceKey}, 18},
        {"the page of the photograph", [] {}, {LeftKey, EscapeKey}, 17},
        {"a row", [&] { pressRowNamed("Alps"); }, {SpaceKey, UpKey}, 0},
        {"beside it", [&] { pressCell(1); }, {MenuKey, LeftKey, SpaceKey}, 17}};
    for (const auto& [what, act, pressed, there] : acts) {
        SCOPED_TRACE(what);
        act();
        if (pressed.front() == MenuKey)
            robot.whenMenuOpens([&] { robot.dismissMenu(); });
        keys(pressed);
        EXPECT_EQ(main().imgbox.Visible() ? view().CurrentIndex : focus(), there);
    }
    EXPECT_EQ(selectedPositions(), Positions{17});
}

TEST_F(KeyboardTest, DeleteAndRenameFollowTheRulesOfTheirEntriesAndRowsTakeArrows)
{
    openGroup(4, 7);
    keys({HomeKey, SpaceKey});
    main().groupList().ScrollGroupNames(2); // to where its row is another's
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        EXPECT_EQ(numbersOf("Alps"), "1234");
        prompts.expectQuestion("Are you sure you want to remove the photograph(s) from this group?", answer);
        answer == Answer::No ? key(DeleteKey) : robot.choose(main().mnuEditRemoveFromGroup);
    }
    EXPECT_EQ(linesOf("Alps"), (Names{"p2.jpg", "p3.jpg", "p4.jpg"}));
    EXPECT_EQ(cells(), linesOf("Alps"));
    prompts.expectInput("Rename \"Alps\" group to ...", "Winter");
    key(F2Key);
    EXPECT_EQ(group().CurrentGroupName, "Winter");
    main().groupList().ScrollGroupNames(0);
    pressRow(0);
    EXPECT_EQ(selectedPositions(), Positions{});
    keys({F2Key, DeleteKey}); // a question would fail the test
    select({1});
    main().mnuEdit.Enabled = false;
    key(DeleteKey);
    EXPECT_EQ(numbersOf("  All Photos  "), "1234") << "what was removed stays in other groups";

    pressRow(7, MiddleButton);
    keys({DownKey, DownKey, UpKey, EnterKey});
    EXPECT_EQ(group().CurrentGroupName + " " + rows().at(6), "h7 h7") << "beyond the last row the list scrolls";
    main().pctAlbumList(1).SetFocus();
    keys({UpKey, UpKey, UpKey});
    EXPECT_EQ(rows().front(), "  All Photos  ");
    EXPECT_TRUE(main().pctAlbumList(0).hasFocus());
}

} // namespace trovarium
