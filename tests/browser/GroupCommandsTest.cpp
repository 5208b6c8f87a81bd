// SPDX-License-Identifier: GPL-3.0-or-later

#include "MainWindow.h"

namespace trovarium {

constexpr const char* AskName = "Enter name for new group.";

struct GroupCommandsTest : MainWindow {
    bool isThere(const std::string& name) { return test.isThere(test.paths().SlideGroupPath + name + ".lst"); }
    std::string music(const std::string& name) { return test.paths().MidiPath + name + ".mid"; }
    void chooseFor(int row, Menu& entry)
    {
        robot.whenMenuOpens([&] { robot.choose(entry); });
        pressRow(row, RightButton);
    }
    // Acts in the dialog of groups, when its list is filled.
    void chooseGroup(Menu& entry, const std::function<void()>& act)
    {
        robot.when([this] { return groups().isShown() && groups().lstGroups.ListIndex() >= 0; }, act);
        entry.Click.raise(); // also of a pop-up menu
        EXPECT_FALSE(groups().isShown());
    }
    void clickEntryAt(float y, int button = LeftButton) { robot.click(groups().lstGroups, button, NoKeys, At{20, y}); }
};

TEST_F(GroupCommandsTest, ANewGroupTakesAFreeNameAndEmptiesNoList)
{
    openGroup(2);
    prompts.expectInput(AskName, "x<1>/y.z");
    robot.choose(main().mnuFileCreate);
    EXPECT_EQ(rows(), (Names{"  All Photos  ", "Alps", "Rome", "x_1__y_z"}));
    putGroup("x_1__y_z", {"p1.jpg"});
    test.putGroup("X_2.LST", {"p1.jpg"}); // on none of the rows
    const auto before = test.allFiles();
    for (const char* taken : {"  ALL PHOTOS  ", "x<1>/y.z", "x:2", "tmpgroup"}) {
        prompts.expectInput(AskName, taken);
        prompts.expectNotice("Album group name already exists. Select a new name.");
    }
    prompts.expectInput(AskName, "");
    robot.choose(main().mnuFileCreate);
    EXPECT_EQ(test.allFiles(), before);
    EXPECT_EQ(prompts.asked().at(1).initial + "|" + prompts.asked().at(5).initial, "new group|x_1__y_z");
}

TEST_F(GroupCommandsTest, TheRowPressedLastIsDeletedWithItsMusic)
{
    openGroup(2);
    for (const char* name : {"Alps", "Rome"})
        test.put(music(name), "MThd");
    test.failAt(FileOperation::Delete, ".lst", FailureKind::PermissionDenied);
    for (const Answer answer : {Answer::No, Answer::Yes, Answer::Yes}) {
        EXPECT_TRUE(isThere("Rome"));
        prompts.expectQuestion("Are you sure you want to delete this group -> Rome", answer);
        chooseFor(2, main().mnuGroupRemove);
        if (!logLines().empty())
            desktop.files().setFaultHook({});
    }
    EXPECT_EQ(logLines(), Names{"CreateAlbumGroup: Permission denied"});
    EXPECT_FALSE(isThere("Rome") || test.isThere(music("Rome")));
    EXPECT_TRUE(isThere("Alps") && test.isThere(music("Alps")));
    EXPECT_EQ(cells(), names(2)) << "the group on show stays";
}

TEST_F(GroupCommandsTest, TheGroupOnShowIsRenamedWithItsMusic)
{
    putGroup("x_y", {});
    openGroup(3);
    test.put(music("Alps"), "MThd");
    putGroup("Unread", {"p1.jpg"});                                     // since the names were read
    for (const char* refused : {"x.y", "unread", "TmpGroup", "Free"}) { // the last one by the disk
        prompts.expectInput("Rename \"Alps\" group to ...", refused);
        prompts.expectNotice("Group name already in use. Try another", [&] {
            EXPECT_EQ(group().CurrentGroupName + rows().at(1) + main().lstSlideGroups.List(1), "AlpsAlpsAlps");
            if (prompts.asked().size() == 6)
                test.failAt(FileOperation::Rename, "Alps.lst", FailureKind::PermissionDenied);
            else
                desktop.files().setFaultHook({});
        });
    }
    prompts.expectInput("Rename \"Alps\" group to ...", "ro.me");
    chooseFor(3, main().mnuGroupRenameGroup); // pressed last, and not the one that is renamed
    EXPECT_FALSE(isThere("Alps") || test.isThere(music("Alps")));
    EXPECT_EQ(linesOf("ro_me"), names(3));
    EXPECT_TRUE(test.isThere(music("ro_me")));
    EXPECT_EQ(group().CurrentGroupName + rows().at(1) + main().lstSlideGroups.List(1), "ro_mero_mero_me");
    pressRow(0);
    main().groupCommands().RenameAlbumGroup(); // a question would fail the test: that of all has no other name
}

TEST_F(GroupCommandsTest, AReleaseOnAnEntryCopiesAndEnterMoves)
{
    putGroup("Bath", {});
    openGroup(4);
    select({1, 3});
    chooseGroup(main().mnuEditAdd, [&] {
        const ListBox& offered = groups().lstGroups;
        EXPECT_EQ(groups().Caption().substr(0, 4) + offered.List(0) + offered.List(1), "CopyBathRome");
        EXPECT_EQ(offered.ListCount(), 2) << "neither the one on show nor all photographs";
        clickEntryAt(180); // below the last one
        clickEntryAt(8, RightButton);
        EXPECT_TRUE(groups().isShown());
        clickEntryAt(24);
    });
    EXPECT_EQ(linesOf("Rome"), (Names{"old.jpg", "p1.jpg", "p3.jpg"}));
    chooseGroup(main().mnuEditMove, [&] { robot.key(groups(), EscapeKey); });
    test.failAt(FileOperation::Close, "Bath.lst", FailureKind::DiskFull);
    main().groupCommands().MoveToGroup("Bath.lst");
    desktop.files().setFaultHook({});
    EXPECT_EQ(cells(), names(4)) << "a copy, Escape and a full disk take nothing away";
    chooseGroup(main().mnuEditMove, [&] { robot.key(groups(), EnterKey); });
    EXPECT_EQ(linesOf("Bath"), (Names{"p1.jpg", "p3.jpg"}));
    EXPECT_EQ(cells(), (Names{"p2.jpg", "p4.jpg"}));
    select({1});
    for (Menu* entry : {&main().mnuThumbAdd, &main().mnuThumbMove}) {
        EXPECT_EQ(cells().size(), 2U);
        prompts.expectInput(AskName, entry->Name());
        chooseGroup(*entry, [&] { robot.click(groups().cmdNewGroup); });
        EXPECT_EQ(linesOf(entry->Name()), Names{"p2.jpg"});
    }
    EXPECT_EQ(cells(), Names{"p4.jpg"});
}

} // namespace trovarium
