#include "platform/toolkit/Menu.h"

#include "platform/Stage.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/toolkit/Label.h"

#include <QAction>
#include <QApplication>
#include <QMenuBar>

namespace trovarium {

namespace {

class MenusTest : public Stage {
protected:
    MenusTest()
    {
        for (Menu* menu : {&file, &fileRemove, &fileExit, &set, &infoUp, &group, &sort, &sortYear, &sortPlace})
            note(menu->Click, menu->Name());
        note(row.MouseDown, "row");
        when["row"] = [this] {
            form.PopupMenu(group);
            diary += "back ";
        };
    }
    void SetUp() override { show(); }

    QAction* actionOf(const Menu& menu) const
    {
        return form.view()->window().findChild<QAction*>(QString::fromStdString(menu.Name()));
    }
    // What a press on the row tells that opens the menu, where the act is done.
    std::string popUp(std::function<void()> act)
    {
        robot.whenMenuOpens(std::move(act));
        robot.press(row, RightButton);
        return taken().substr(std::string("row:2:0:750:300 ").size());
    }

    Menu file{&form, {.Name = "File", .Caption = "&File"}};
    Menu fileRemove{&file, {.Name = "FileRemove", .Caption = "&Remove Group"}};
    Menu fileExit{&file, {.Name = "FileExit", .Caption = "E&xit"}};
    Menu set{&form, {.Name = "Set", .Caption = "&Settings"}};
    Menu infoUp{&set, {.Name = "InfoUp", .Caption = "Always &Up", .Checked = true}};
    Menu group{&form, {.Name = "Group", .Caption = "GroupMenu", .Visible = false}};
    Menu sort{&group, {.Name = "Sort", .Caption = "Sort"}};
    Menu sortYear{&sort, {.Name = "SortYear", .Caption = "Year"}};
    Menu sortPlace{&sort, {.Name = "SortPlace", .Caption = "Place"}};
    Label row{&form, {.Name = "row", .Width = 1500, .Height = 600, .Caption = "row"}};
};

TEST_F(MenusTest, TheBarShowsWhatCodeSaysAndOpeningRunsItsRuleBeforeTheEntriesShow)
{
    EXPECT_EQ(form.view()->window().findChild<QMenuBar*>()->actions().size(), 2) << "the visible ones";
    when["File"] = [&] {
        fileRemove.Enabled = !fileRemove.Enabled();
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << "not on show yet";
    };
    robot.choose(fileRemove);
    EXPECT_EQ(taken(), "File ") << "the entry is disabled";
    robot.choose(fileRemove);
    robot.choose(infoUp);
    EXPECT_EQ(taken(), "File FileRemove Set InfoUp ");
    EXPECT_TRUE(actionOf(infoUp)->isChecked()) << "the user turns no check mark";
    infoUp.Checked = false;
    EXPECT_FALSE(actionOf(infoUp)->isChecked());
    fileExit.Caption = "&Quit";
    fileRemove.Visible = false;
    EXPECT_EQ(actionOf(fileExit)->text(), "&Quit");
    EXPECT_FALSE(actionOf(fileRemove)->isVisible());
}

TEST_F(MenusTest, APopUpMenuReturnsBehindItsEntryAndItsSubmenuRunsItsRuleOnOpening)
{
    when["Sort"] = [&] { sortYear.Enabled = false; };
    EXPECT_EQ(popUp([&] { robot.choose(sortYear); }), "Group Sort back ") << "the rule has disabled it";
    EXPECT_EQ(popUp([&] { robot.choose(sortPlace); }), "Group Sort SortPlace back ") << "behind the handler";
    EXPECT_EQ(popUp([&] { robot.dismissMenu(); }), "Group back ") << "nothing chosen";
    robot.whenMenuOpens([&] { robot.choose(fileExit); });
    form.PopupMenu(file);
    robot.choose(fileExit); // still opens from the bar
    EXPECT_EQ(taken(), "File FileExit File FileExit ");
}

TEST_F(MenusTest, AFormMayBeUnloadedAndTheProgramEndByAnEntryAndUnderAnOpenMenu)
{
    when["FileExit"] = [&] { form.unload(); };
    robot.choose(fileExit);
    EXPECT_FALSE(form.isLoaded());
    fileExit.Enabled = false; // has no view any more
    show();
    EXPECT_FALSE(actionOf(fileExit)->isEnabled());
    taken();
    const auto close = [&] {
        form.unload();
        QApplication::activePopupWidget()->close();
    };
    EXPECT_EQ(popUp(close), "Group back ");
    form.PopupMenu(group);
    EXPECT_FALSE(form.isLoaded()) << "nothing opens without a window";
    show();
    when["SortPlace"] = [] { testDesktop().endProgram(3); };
    robot.whenMenuOpens([&] { robot.choose(sortPlace); });
    EXPECT_THROW(form.PopupMenu(group), ProgramEnd);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

} // namespace

} // namespace trovarium
