#include "platform/toolkit/Menu.h"

#include "platform/Stage.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/toolkit/Label.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>

namespace trovarium {

namespace {

class MenusTest : public Stage {
protected:
    MenusTest()
    {
        for (Menu* menu :
            {&file, &fileRemove, &fileExit, &set, &info, &infoUp, &group, &groupRemove, &sort, &sortYear, &sortPlace})
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
        for (QWidget* widget : form.view()->window().findChildren<QWidget*>())
            for (QAction* action : widget->actions())
                if (action->objectName().toStdString() == menu.Name())
                    return action;
        return nullptr;
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
    Menu fileDash{&file, {.Name = "FileDash", .Caption = "-"}};
    Menu fileExit{&file, {.Name = "FileExit", .Caption = "E&xit"}};
    Menu set{&form, {.Name = "Set", .Caption = "&Settings"}};
    Menu info{&set, {.Name = "Info", .Caption = "&Information Box"}};
    Menu infoUp{&info, {.Name = "InfoUp", .Caption = "Always &Up", .Checked = true}};
    Menu group{&form, {.Name = "Group", .Caption = "GroupMenu", .Visible = false}};
    Menu sort{&group, {.Name = "Sort", .Caption = "Sort"}};
    Menu sortYear{&sort, {.Name = "SortYear", .Caption = "Year"}};
    Menu sortPlace{&sort, {.Name = "SortPlace", .Caption = "Place"}};
    Menu groupRemove{&group, {.Name = "GroupRemove", .Caption = "&Remove Group"}};
    Label row{&form, {.Name = "row", .Width = 1500, .Height = 600, .Caption = "row"}};
};

TEST_F(MenusTest, TheBarHoldsTheVisibleTopMenusAsCodeSays)
{
    std::string bar;
    for (const QAction* action : form.view()->window().findChild<QMenuBar*>()->actions())
        bar += action->text().toStdString() + " ";
    EXPECT_EQ(bar, "&File &Settings ");
    EXPECT_TRUE(actionOf(fileDash)->isSeparator());
    fileExit.Caption = "&Quit";
    fileRemove.Visible = false;
    EXPECT_EQ(actionOf(fileExit)->text(), "&Quit");
    EXPECT_FALSE(actionOf(fileRemove)->isVisible());
}

TEST_F(MenusTest, OpeningRunsItsRuleBeforeTheEntriesShowAndTheUserTurnsNoCheckMark)
{
    when["File"] = [&] {
        fileRemove.Enabled = !fileRemove.Enabled();
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << "not on show yet";
    };
    robot.choose(fileRemove);
    EXPECT_EQ(taken(), "File ") << "the entry is disabled";
    robot.choose(fileRemove);
    robot.choose(infoUp);
    EXPECT_EQ(taken(), "File FileRemove Set Info InfoUp ");
    EXPECT_TRUE(actionOf(infoUp)->isChecked());
    infoUp.Checked = false;
    robot.choose(infoUp);
    EXPECT_FALSE(actionOf(infoUp)->isChecked());
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

TEST_F(MenusTest, AFormMayBeUnloadedByAnEntryAndUnderItsOpenMenu)
{
    when["FileExit"] = [&] { form.unload(); };
    robot.choose(fileExit);
    EXPECT_FALSE(form.isLoaded());
    fileExit.Enabled = false; // has no view any more
    show();
    EXPECT_FALSE(actionOf(fileExit)->isEnabled());
    taken();
    EXPECT_EQ(popUp([&] {
        form.unload();
        QApplication::activePopupWidget()->close();
    }),
        "Group back ");
    form.PopupMenu(group);
    EXPECT_FALSE(form.isLoaded()) << "nothing opens without a window";
}

TEST_F(MenusTest, TheProgramMayEndInAnEntryAndUnderAnOpenMenu)
{
    const auto end = [] { testDesktop().endProgram(3); };
    when["GroupRemove"] = end;
    robot.whenMenuOpens([&] { robot.choose(groupRemove); });
    EXPECT_THROW(form.PopupMenu(group), ProgramEnd);
    robot.whenMenuOpens(end);
    EXPECT_THROW(form.PopupMenu(group), ProgramEnd);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

} // namespace

} // namespace trovarium
