#include "MainWindow.h"

#include "browser/GroupCommands.h"
#include "browser/GroupListPane.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "runtime/Failure.h"

namespace trovarium {

namespace {

constexpr const char* AskName = "Enter name for new group.";
constexpr const char* NameExists = "Album group name already exists. Select a new name.";
constexpr const char* AskRemoval = "Are you sure you want to remove the photograph(s) from this group?";

class GroupCommandsTest : public MainWindow {
protected:
    bool isThere(const std::string& name) { return test.isThere(test.paths().SlideGroupPath + name + ".lst"); }
    std::string music(const std::string& name) { return test.paths().MidiPath + name + ".mid"; }
};

} // namespace

TEST_F(GroupCommandsTest, ANewGroupTakesTheNameThatIsGiven)
{
    openGroup(2);
    prompts.expectInput(AskName, "Winter");
    robot.choose(main().mnuFileCreate);
    EXPECT_EQ(prompts.asked().back().title, "New Album Group");
    EXPECT_EQ(prompts.asked().back().initial, "new group");
    EXPECT_TRUE(isThere("Winter"));
    EXPECT_EQ(linesOf("Winter"), std::vector<std::string>{});
    EXPECT_EQ(rows(), (std::vector<std::string>{"  All Photos  ", "Alps", "Rome", "Winter"}));
    EXPECT_EQ(brightRow(), -1) << "it is not opened";
    EXPECT_EQ(group().CurrentGroupName, "Alps");
}

TEST_F(GroupCommandsTest, AnExistingNameIsRefusedAndOfferedAgain)
{
    openGroup(2);
    const auto before = test.allFiles();
    prompts.expectInput(AskName, "ROME");
    prompts.expectNotice(NameExists);
    prompts.expectInput(AskName, "  all photos  ");
    prompts.expectNotice(NameExists);
    prompts.expectInput(AskName, "");
    main().groupCommands().CreateAlbumGroup(CreateEmpty);
    EXPECT_EQ(prompts.asked().at(1).title, "Group Exists.");
    EXPECT_EQ(prompts.asked().at(2).initial, "ROME");
    EXPECT_EQ(test.allFiles(), before) << "and an empty name makes nothing";
}

TEST_F(GroupCommandsTest, ANameIsMendedWithoutAWordAlsoOntoAGroupThatIsThere)
{
    openGroup(2);
    putGroup("a_b", names(3));
    main().groupList().LoadGroupNames();
    prompts.expectInput(AskName, "x<1>/y.z");
    main().groupCommands().CreateAlbumGroup(CreateEmpty);
    EXPECT_TRUE(isThere("x_1__y_z"));
    prompts.expectInput(AskName, "a:b");
    main().groupCommands().CreateAlbumGroup(CreateEmpty);
    EXPECT_EQ(linesOf("a_b"), std::vector<std::string>{}) << "the output open empties it";
}

TEST_F(GroupCommandsTest, ANewGroupTakesTheSelectionAway)
{
    openGroup(4);
    select({2, 4});
    prompts.expectInput(AskName, "Winter");
    robot.whenMenuOpens([&] { robot.choose(main().mnuThumbMoveNewGroup); });
    robot.press(main().imgThumbnail(1), RightButton);
    EXPECT_EQ(linesOf("Winter"), (std::vector<std::string>{"p2.jpg", "p4.jpg"}));
    EXPECT_EQ(linesOf("Alps"), (std::vector<std::string>{"p1.jpg", "p3.jpg"}));
    EXPECT_EQ(cells(), linesOf("Alps"));
    EXPECT_EQ(selectedPositions(), std::vector<int>{});
}

TEST_F(GroupCommandsTest, TheRowPressedLastIsDeletedWithItsMusic)
{
    openGroup(2);
    test.put(music("Rome"), "MThd");
    test.put(music("Alps"), "MThd");
    const std::string question = "Are you sure you want to delete this group -> Rome";
    prompts.expectQuestion(question, Answer::No);
    prompts.expectQuestion(question, Answer::Yes);
    for (int i = 0; i < 2; ++i) {
        robot.whenMenuOpens([&] { robot.choose(main().mnuGroupRemove); });
        pressRow(2, RightButton);
        EXPECT_EQ(isThere("Rome"), i == 0);
        EXPECT_EQ(test.isThere(music("Rome")), i == 0);
    }
    EXPECT_EQ(prompts.asked().front().title, "");
    EXPECT_TRUE(test.isThere(music("Alps")));
    EXPECT_EQ(rows(), (std::vector<std::string>{"  All Photos  ", "Alps"}));
    EXPECT_EQ(cells(), names(2)) << "the group on show stays";
}

TEST_F(GroupCommandsTest, AGroupWithoutAListKeepsItsMusic)
{
    openGroup(2);
    main().groupList().SelectedGroupName = "gone";
    test.put(music("gone"), "MThd");
    prompts.expectQuestion("Are you sure you want to delete this group -> gone", Answer::Yes);
    main().groupCommands().DeleteAlbumGroup();
    EXPECT_TRUE(test.isThere(music("gone")));
}

TEST_F(GroupCommandsTest, TheGroupOnShowIsRenamedWithItsMusic)
{
    putGroup("x_y", {});
    openGroup(3);
    test.put(music("Alps"), "MThd");
    main().groupList().SelectedGroupName = "Rome"; // pressed last, and not the one that is renamed
    const std::string prompt = "Rename \"Alps\" group to ...";
    prompts.expectInput(prompt, "x.y"); // mended first
    prompts.expectNotice("Group name already in use. Try another");
    prompts.expectInput(prompt, "ro.me");
    main().groupCommands().RenameAlbumGroup();
    EXPECT_EQ(prompts.asked().at(0).initial, "");
    EXPECT_EQ(prompts.asked().at(2).initial, "x_y");
    EXPECT_EQ(prompts.asked().at(2).title, "Rename Group");
    EXPECT_FALSE(isThere("Alps"));
    EXPECT_EQ(linesOf("ro_me"), names(3));
    EXPECT_TRUE(test.isThere(music("ro_me")));
    EXPECT_FALSE(test.isThere(music("Alps")));
    EXPECT_EQ(group().CurrentGroupName, "ro_me");
    EXPECT_EQ(rows(), (std::vector<std::string>{"  All Photos  ", "ro_me", "Rome", "x_y"}));
    EXPECT_EQ(main().lstSlideGroups.List(1), "ro_me");
    EXPECT_EQ(main().lbCount.Caption(), "Group [Alps] Viewing 1 of 3") << "the old name until the next count";
}

TEST_F(GroupCommandsTest, WhatTheDiskRefusesIsLoggedUnderOneNameAndARenameNotAtAll)
{
    openGroup(3);
    FileOperation refused = FileOperation::Open;
    desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
        if (operation == refused && path.ends_with(".lst"))
            throw Failure(FailureKind::PermissionDenied);
    });
    std::vector<std::string> log{"An error has occurred in 'CreateAlbumGroup'. Error = Permission denied"};
    prompts.expectInput(AskName, "Winter");
    main().groupCommands().CreateAlbumGroup(CreateEmpty);
    EXPECT_FALSE(isThere("Winter"));
    EXPECT_EQ(logLines(), log);

    refused = FileOperation::Delete;
    main().groupList().SelectedGroupName = "Rome";
    prompts.expectQuestion("Are you sure you want to delete this group -> Rome", Answer::Yes);
    main().groupCommands().DeleteAlbumGroup();
    EXPECT_TRUE(isThere("Rome"));
    log.push_back(log.front());
    EXPECT_EQ(logLines(), log);

    refused = FileOperation::Rename;
    prompts.expectInput("Rename \"Alps\" group to ...", "Winter");
    main().groupCommands().RenameAlbumGroup();
    EXPECT_TRUE(isThere("Alps"));
    EXPECT_EQ(main().lbAlbumList(1).Caption(), "Winter") << "the caption changes all the same";
    EXPECT_EQ(logLines(), log);
}

TEST_F(GroupCommandsTest, InAScrolledListTheEntryOfTheRowNumberIsReplaced)
{
    openGroup(1, 8);
    robot.click(main().pctArrows(2));
    prompts.expectInput("Rename \"Alps\" group to ...", "Winter");
    main().groupCommands().RenameAlbumGroup();
    EXPECT_TRUE(isThere("Winter"));
    EXPECT_EQ(main().lbAlbumList(1).Caption(), "Winter");
    EXPECT_EQ(main().lstSlideGroups.List(1), "Winter");
    EXPECT_EQ(main().lstSlideGroups.List(2), "h1") << "the entry that the row showed";
}

TEST_F(GroupCommandsTest, PhotographsLeaveAGroupAfterAYes)
{
    openGroup(4);
    select({1, 3});
    prompts.expectQuestion(AskRemoval, Answer::No);
    prompts.expectQuestion(AskRemoval, Answer::Yes);
    robot.choose(main().mnuEditRemoveFromGroup);
    EXPECT_EQ(linesOf("Alps"), names(4));
    robot.choose(main().mnuEditRemoveFromGroup);
    EXPECT_EQ(linesOf("Alps"), (std::vector<std::string>{"p2.jpg", "p4.jpg"}));
    EXPECT_EQ(cells(), linesOf("Alps"));
    EXPECT_EQ(linesOf("  All Photos  "), names(4)) << "they stay in other groups";
    EXPECT_EQ(main().lbStatusSelected.Caption(), "Selected 0");
}

} // namespace trovarium
