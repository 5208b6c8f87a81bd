#include "MainWindow.h"

#include "browser/GroupCommands.h"
#include "browser/GroupListPane.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Keys.h"

namespace trovarium {

namespace {

constexpr const char* AskName = "Enter name for new group.";
constexpr const char* AskNewName = "Rename \"Alps\" group to ...";
constexpr const char* NameExists = "Album group name already exists. Select a new name.";
constexpr const char* AskRemoval = "Are you sure you want to remove the photograph(s) from this group?";

class GroupCommandsTest : public MainWindow {
protected:
    bool isThere(const std::string& name) { return test.isThere(test.paths().SlideGroupPath + name + ".lst"); }
    std::string music(const std::string& name) { return test.paths().MidiPath + name + ".mid"; }
    void chooseFor(int row, Menu& entry)
    {
        robot.whenMenuOpens([&] { robot.choose(entry); });
        pressRow(row, RightButton);
    }
    std::string askDeletion(const std::string& name) { return "Are you sure you want to delete this group -> " + name; }
};

class GroupsDialogTest : public MainWindow {
protected:
    GroupsDialogTest()
    {
        putGroup("Bath", {});
        openGroup(4);
        select({1, 3});
    }
    // Opens the dialog, and acts when it stands with its list filled.
    void choose(Menu& entry, const std::function<void()>& act)
    {
        robot.when([this] { return groups().isShown() && groups().lstGroups.ListCount() > 0; }, act);
        robot.choose(entry);
        EXPECT_FALSE(groups().isShown());
    }
    // "What it does: the groups that it offers, the chosen one in brackets."
    std::string offered()
    {
        std::string text = groups().Caption().substr(0, 4) + ":";
        for (int i = 0; i < groups().lstGroups.ListCount(); ++i) {
            const std::string name = groups().lstGroups.List(i);
            text += i == groups().lstGroups.ListIndex() ? " [" + name + "]" : " " + name;
        }
        return text;
    }
    // The row of an entry, in pixels of the list.
    void clickEntry(int entry)
    {
        robot.click(groups().lstGroups, LeftButton, NoKeys, At{20, 8 + 16 * static_cast<float>(entry)});
    }
};

} // namespace

TEST_F(GroupCommandsTest, ANewGroupTakesANameThatIsFreeAndIsMendedAfterThat)
{
    openGroup(2);
    const auto before = test.allFiles();
    prompts.expectInput(AskName, "ROME");
    prompts.expectNotice(NameExists);
    prompts.expectInput(AskName, "  all photos  ");
    prompts.expectNotice(NameExists);
    prompts.expectInput(AskName, "");
    robot.choose(main().mnuFileCreate);
    EXPECT_EQ(test.allFiles(), before) << "an empty name makes nothing";
    const auto& asked = prompts.asked();
    EXPECT_EQ(asked.at(0).title + "|" + asked.at(0).initial, "New Album Group|new group");
    EXPECT_EQ(asked.at(1).title + "|" + asked.at(2).initial, "Group Exists.|ROME");

    prompts.expectInput(AskName, "x<1>/y.z");
    robot.choose(main().mnuFileCreate);
    EXPECT_TRUE(isThere("x_1__y_z"));
    EXPECT_EQ(rows(), (Names{"  All Photos  ", "Alps", "Rome", "x_1__y_z"}));
    EXPECT_EQ(brightRows(), Positions{}) << "it is not opened";
    EXPECT_EQ(group().CurrentGroupName, "Alps");
    putGroup("a_b", names(3));
    prompts.expectInput(AskName, "a:b");
    robot.choose(main().mnuFileCreate);
    EXPECT_EQ(linesOf("a_b"), Names{}) << "the output open empties it";
}

TEST_F(GroupCommandsTest, ANewGroupTakesTheSelectionAway)
{
    openGroup(4);
    select({2, 4});
    prompts.expectInput(AskName, "Winter");
    robot.whenMenuOpens([&] { robot.choose(main().mnuThumbMoveNewGroup); });
    robot.press(main().imgThumbnail(1), RightButton);
    EXPECT_EQ(linesOf("Winter"), (Names{"p2.jpg", "p4.jpg"}));
    EXPECT_EQ(linesOf("Alps"), (Names{"p1.jpg", "p3.jpg"}));
    EXPECT_EQ(cells(), linesOf("Alps"));
    EXPECT_EQ(selectedPositions(), Positions{});
}

TEST_F(GroupCommandsTest, TheRowPressedLastIsDeletedWithItsMusic)
{
    openGroup(2);
    for (const char* name : {"Rome", "Alps", "gone"})
        test.put(music(name), "MThd");
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        prompts.expectQuestion(askDeletion("Rome"), answer);
        chooseFor(2, main().mnuGroupRemove);
        EXPECT_EQ(isThere("Rome"), answer == Answer::No);
        EXPECT_EQ(test.isThere(music("Rome")), answer == Answer::No);
    }
    EXPECT_TRUE(test.isThere(music("Alps")));
    EXPECT_EQ(rows(), (Names{"  All Photos  ", "Alps"}));
    EXPECT_EQ(cells(), names(2)) << "the group on show stays";
    main().groupList().SelectedGroupName = "gone";
    prompts.expectQuestion(askDeletion("gone"), Answer::Yes);
    robot.choose(main().mnuFileRemove);
    EXPECT_TRUE(test.isThere(music("gone"))) << "a group without a list keeps its music";
}

TEST_F(GroupCommandsTest, TheGroupOnShowIsRenamedWithItsMusic)
{
    putGroup("x_y", {});
    openGroup(3, 8);
    test.put(music("Alps"), "MThd");
    prompts.expectInput(AskNewName, "x.y"); // mended first
    prompts.expectNotice("Group name already in use. Try another");
    prompts.expectInput(AskNewName, "ro.me");
    chooseFor(3, main().mnuGroupRenameGroup); // pressed last, and not the one that is renamed
    const auto& asked = prompts.asked();
    EXPECT_EQ(asked.at(0).initial + "|" + asked.at(2).initial + "|" + asked.at(2).title, "|x_y|Rename Group");
    EXPECT_FALSE(isThere("Alps") || test.isThere(music("Alps")));
    EXPECT_EQ(linesOf("ro_me"), names(3));
    EXPECT_TRUE(test.isThere(music("ro_me")));
    EXPECT_EQ(group().CurrentGroupName, "ro_me");
    EXPECT_EQ(main().lbAlbumList(1).Caption(), "ro_me");
    EXPECT_EQ(main().lbCount.Caption(), "Group [Alps] Viewing 1 of 3") << "the old name until the next count";

    robot.click(main().pctArrows(2));
    prompts.expectInput("Rename \"ro_me\" group to ...", "Winter");
    robot.choose(main().mnuFileRenameGroup);
    EXPECT_TRUE(isThere("Winter"));
    EXPECT_EQ(main().lbAlbumList(1).Caption() + main().lstSlideGroups.List(1), "WinterWinter");
    EXPECT_EQ(main().lstSlideGroups.List(2), "h1") << "the entry that the row showed";
}

TEST_F(GroupCommandsTest, WhatTheDiskRefusesIsLoggedUnderOneNameAndARenameNotAtAll)
{
    openGroup(3);
    test.failAt(FileOperation::Open, ".lst", FailureKind::PermissionDenied);
    prompts.expectInput(AskName, "Winter");
    main().groupCommands().CreateAlbumGroup(CreateEmpty);
    test.failAt(FileOperation::Delete, ".lst", FailureKind::PermissionDenied);
    main().groupList().SelectedGroupName = "Rome";
    prompts.expectQuestion(askDeletion("Rome"), Answer::Yes);
    main().groupCommands().DeleteAlbumGroup();
    test.failAt(FileOperation::Rename, ".lst", FailureKind::PermissionDenied);
    prompts.expectInput(AskNewName, "Winter");
    main().groupCommands().RenameAlbumGroup();
    EXPECT_TRUE(isThere("Alps") && isThere("Rome") && !isThere("Winter"));
    EXPECT_EQ(main().lbAlbumList(1).Caption(), "Winter") << "the caption changes all the same";
    EXPECT_EQ(logLines(), Names(2, "An error has occurred in 'CreateAlbumGroup'. Error = Permission denied"));
}

TEST_F(GroupCommandsTest, PhotographsLeaveAGroupAfterAYes)
{
    openGroup(4);
    select({1, 3});
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        prompts.expectQuestion(AskRemoval, answer);
        robot.choose(main().mnuEditRemoveFromGroup);
        EXPECT_EQ(linesOf("Alps"), answer == Answer::No ? names(4) : (Names{"p2.jpg", "p4.jpg"}));
    }
    EXPECT_EQ(cells(), linesOf("Alps"));
    EXPECT_EQ(linesOf("  All Photos  "), names(4)) << "they stay in other groups";
    EXPECT_EQ(main().lbStatusSelected.Caption(), "Selected 0");
}

TEST_F(GroupsDialogTest, AReleaseInTheListCopiesAndItIsFilledAtEveryShowing)
{
    choose(main().mnuEditAdd, [&] {
        EXPECT_EQ(offered(), "Copy: [Bath] Rome") << "not the one on show, nor all photographs";
        groups().lstGroups.ListIndex = 1;
        clickEntry(1);
    });
    EXPECT_EQ(linesOf("Rome"), (Names{"old.jpg", "p1.jpg", "p3.jpg"}));
    EXPECT_EQ(linesOf("Alps"), names(4));
    EXPECT_EQ(selectedPositions(), (Positions{1, 3}));

    putGroup("Cork", {});
    main().groupList().LoadGroupNames();
    pressRowNamed("Rome");
    const auto before = test.allFiles();
    choose(main().mnuEditMove, [&] {
        EXPECT_EQ(offered(), "Move: [Alps] Bath Cork");
        robot.close(groups());
    });
    EXPECT_EQ(test.allFiles(), before) << "the close box cancels";
}

TEST_F(GroupsDialogTest, EnterInTheListMoves)
{
    choose(main().mnuEditMove, [&] {
        groups().lstGroups.SetFocus();
        robot.key(groups(), AKey);
        EXPECT_TRUE(groups().isShown());
        robot.key(groups(), EnterKey);
    });
    EXPECT_EQ(linesOf("Bath"), (Names{"p1.jpg", "p3.jpg"}));
    EXPECT_EQ(linesOf("Alps"), (Names{"p2.jpg", "p4.jpg"}));
    EXPECT_EQ(cells(), linesOf("Alps"));
    EXPECT_EQ(selectedPositions(), Positions{});
}

TEST_F(GroupsDialogTest, ItsButtonMakesAGroupForWhatItWasOpenedForAndAnEmptyListTakesTheEmptyName)
{
    for (Menu* entry : {&main().mnuEditAdd, &main().mnuEditMove}) {
        prompts.expectInput(AskName, entry->Name());
        choose(*entry, [&] { robot.click(groups().cmdNewGroup); });
        EXPECT_EQ(linesOf(entry->Name()), (Names{"p1.jpg", "p3.jpg"}));
        EXPECT_EQ(linesOf("Alps").size(), entry == &main().mnuEditMove ? 2U : 4U);
    }
    for (const char* name : {"Bath", "Rome", "mnuEditAdd", "mnuEditMove"})
        test.files().remove(test.paths().SlideGroupPath + name + ".lst");
    main().groupList().LoadGroupNames();
    pressRowNamed("Alps");
    select({2});
    robot.whenShown("frmGroups", [&] {
        desktop.DoEvents();
        clickEntry(0);
    });
    robot.choose(main().mnuEditAdd);
    EXPECT_EQ(linesOf(""), Names{"p4.jpg"});
}

} // namespace trovarium
