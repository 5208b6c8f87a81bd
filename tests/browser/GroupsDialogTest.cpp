#include "MainWindow.h"

#include "browser/GroupListPane.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Keys.h"

namespace trovarium {

namespace {

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
        prompts.expectInput("Enter name for new group.", entry->Name());
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
