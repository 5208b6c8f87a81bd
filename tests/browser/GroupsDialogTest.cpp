#include "MainWindow.h"

#include "browser/GroupListPane.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Keys.h"

namespace trovarium {

namespace {

class GroupsDialogTest : public MainWindow {
protected:
    void openGroup(int photos)
    {
        putGroup("Bath", {});
        MainWindow::openGroup(photos);
        select({1, 3});
    }
    std::vector<std::string> offered()
    {
        std::vector<std::string> entries;
        for (int i = 0; i < groups().lstGroups.ListCount(); ++i)
            entries.push_back(groups().lstGroups.List(i));
        return entries;
    }
    // When the dialog stands with its list filled.
    void whenOffered(const std::function<void()>& action)
    {
        robot.when([this] { return groups().isShown() && groups().lstGroups.ListCount() > 0; }, action);
    }
    // The row of an entry, in pixels of the list.
    void clickEntry(int entry)
    {
        groups().lstGroups.ListIndex = entry;
        robot.click(groups().lstGroups, LeftButton, NoKeys, At{20, 8 + 16 * static_cast<float>(entry)});
    }
};

} // namespace

TEST_F(GroupsDialogTest, AReleaseInTheListCopies)
{
    openGroup(4);
    whenOffered([&] {
        EXPECT_EQ(groups().Caption(), "Copy photo(s) to ...");
        EXPECT_EQ(offered(), (std::vector<std::string>{"Bath", "Rome"})) << "not the one on show, nor all photographs";
        EXPECT_EQ(groups().lstGroups.Text(), "Bath") << "the first is chosen";
        clickEntry(1);
    });
    robot.choose(main().mnuEditAdd);
    EXPECT_FALSE(groups().isShown());
    EXPECT_EQ(linesOf("Rome"), (std::vector<std::string>{"old.jpg", "p1.jpg", "p3.jpg"}));
    EXPECT_EQ(linesOf("Alps"), names(4));
    EXPECT_EQ(selectedPositions(), (std::vector<int>{1, 3}));
}

TEST_F(GroupsDialogTest, EnterInTheListMoves)
{
    openGroup(4);
    whenOffered([&] {
        EXPECT_EQ(groups().Caption(), "Move photo(s) to ...");
        groups().lstGroups.SetFocus();
        robot.key(groups(), AKey);
        EXPECT_TRUE(groups().isShown());
        robot.key(groups(), EnterKey);
    });
    robot.choose(main().mnuEditMove);
    EXPECT_EQ(linesOf("Bath"), (std::vector<std::string>{"p1.jpg", "p3.jpg"}));
    EXPECT_EQ(linesOf("Alps"), (std::vector<std::string>{"p2.jpg", "p4.jpg"}));
    EXPECT_EQ(cells(), linesOf("Alps"));
    EXPECT_EQ(selectedPositions(), std::vector<int>{});
}

TEST_F(GroupsDialogTest, ItIsFilledAtEveryShowing)
{
    openGroup(4);
    whenOffered([&] { clickEntry(0); });
    robot.choose(main().mnuEditAdd);
    putGroup("Cork", {});
    main().groupList().LoadGroupNames();
    pressRowNamed("Rome");
    whenOffered([&] {
        EXPECT_EQ(groups().Caption(), "Move photo(s) to ...");
        EXPECT_EQ(offered(), (std::vector<std::string>{"Alps", "Bath", "Cork"}));
        robot.close(groups());
    });
    const auto before = test.allFiles();
    robot.choose(main().mnuEditMove);
    EXPECT_EQ(test.allFiles(), before) << "the close box cancels";
}

TEST_F(GroupsDialogTest, ItsButtonMakesAGroupForWhatItWasOpenedFor)
{
    for (const bool move : {false, true}) {
        SCOPED_TRACE(move ? "move" : "copy");
        openGroup(4);
        const std::string name = move ? "moved" : "copied";
        prompts.expectInput("Enter name for new group.", name);
        whenOffered([&] { robot.click(groups().cmdNewGroup); });
        robot.choose(move ? main().mnuEditMove : main().mnuEditAdd);
        EXPECT_EQ(linesOf(name), (std::vector<std::string>{"p1.jpg", "p3.jpg"}));
        EXPECT_EQ(linesOf("Alps").size(), move ? 2U : 4U);
        main().unload();
        desktop.DoEvents();
    }
}

TEST_F(GroupsDialogTest, AnEmptyListTakesTheEmptyName)
{
    putGroup("  All Photos  ", {});
    putGroup("Alps", names(2));
    open();
    pressRowNamed("Alps");
    select({2});
    robot.whenShown("frmGroups", [&] {
        desktop.DoEvents();
        robot.click(groups().lstGroups);
    });
    robot.choose(main().mnuEditAdd);
    EXPECT_EQ(linesOf(""), std::vector<std::string>{"p2.jpg"});
    main().groupList().LoadGroupNames();
    EXPECT_EQ(rows(), (std::vector<std::string>{"", "  All Photos  ", "Alps"}));
}

} // namespace trovarium
