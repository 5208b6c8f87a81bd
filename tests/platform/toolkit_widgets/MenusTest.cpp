#include "platform/toolkit/Menu.h"

#include "platform/qt/toolkit/FormView.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Label.h"
#include "support/Robot.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>

#include <gtest/gtest.h>

#include <functional>

namespace trovarium {

namespace {

class MenuForm : public Form {
public:
    MenuForm()
        : Form(testDesktop(), {.Name = "MenuForm", .Caption = "Menus", .Width = 6000, .Height = 3000})
    {
        mnuFile.Click.connect([this] {
            log += "File ";
            if (onFile)
                onFile();
        });
        mnuFileRemove.Click.connect([this] { log += "Remove "; });
        mnuFileExit.Click.connect([this] {
            log += "Exit ";
            if (onExit)
                onExit();
        });
        mnuSetInfo.Click.connect([this] { log += "Info "; });
        mnuSetInfoUp.Click.connect([this] { log += "Up "; });
        mnuGroupSort.Click.connect([this] {
            log += "Sort ";
            mnuGroupSortYear.Enabled = false;
        });
        mnuGroupRemove.Click.connect([this] {
            log += "GroupRemove ";
            if (onGroupRemove)
                onGroupRemove();
        });
        mnuGroupSortYear.Click.connect([this] { log += "Year "; });
        mnuGroupSortPlace.Click.connect([this] { log += "Place "; });
        lbRow.MouseDown.connect([this](int button, int, float, float) {
            if (button != RightButton)
                return;
            PopupMenu(mnuGroup);
            log += "back ";
        });
    }

    std::string taken() { return std::exchange(log, {}); }

    Menu mnuFile{this, {.Name = "mnuFile", .Caption = "&File"}};
    Menu mnuFileRemove{&mnuFile, {.Name = "mnuFileRemove", .Caption = "&Remove Group"}};
    Menu mnuFileDash{&mnuFile, {.Name = "mnuFileDash", .Caption = "-"}};
    Menu mnuFileExit{&mnuFile, {.Name = "mnuFileExit", .Caption = "E&xit"}};
    Menu mnuSet{this, {.Name = "mnuSet", .Caption = "&Settings"}};
    Menu mnuSetInfo{&mnuSet, {.Name = "mnuSetInfo", .Caption = "&Information Box"}};
    Menu mnuSetInfoUp{&mnuSetInfo, {.Name = "mnuSetInfoUp", .Caption = "Always &Up", .Checked = true}};
    Menu mnuGroup{this, {.Name = "mnuGroup", .Caption = "GroupMenu", .Visible = false}};
    Menu mnuGroupSort{&mnuGroup, {.Name = "mnuGroupSort", .Caption = "Sort"}};
    Menu mnuGroupSortYear{&mnuGroupSort, {.Name = "mnuGroupSortYear", .Caption = "Year"}};
    Menu mnuGroupSortPlace{&mnuGroupSort, {.Name = "mnuGroupSortPlace", .Caption = "Place"}};
    Menu mnuGroupRemove{&mnuGroup, {.Name = "mnuGroupRemove", .Caption = "&Remove Group"}};
    Label lbRow{this, {.Name = "lbRow", .Width = 1500, .Height = 600, .Caption = "row"}};
    std::function<void()> onFile;
    std::function<void()> onExit;
    std::function<void()> onGroupRemove;
    std::string log;
};

class MenusTest : public testing::Test {
protected:
    MenusTest()
    {
        form.show();
        testDesktop().DoEvents();
    }
    ~MenusTest() override { form.unload(); }

    QAction* actionOf(const Menu& menu) const
    {
        for (QWidget* widget : form.view()->window().findChildren<QWidget*>())
            for (QAction* action : widget->actions())
                if (action->objectName().toStdString() == menu.Name())
                    return action;
        return nullptr;
    }

    MenuForm form;
    Robot robot{testDesktop()};
};

TEST_F(MenusTest, TheBarHoldsTheVisibleTopMenusAsCodeSays)
{
    std::string bar;
    for (const QWidget* widget : QApplication::topLevelWidgets())
        if (const auto* menus = widget->findChild<QMenuBar*>(); menus != nullptr && widget->windowTitle() == "Menus")
            for (const QAction* action : menus->actions())
                bar += action->text().toStdString() + " ";
    EXPECT_EQ(bar, "&File &Settings ");
    EXPECT_TRUE(actionOf(form.mnuFileDash)->isSeparator());
    form.mnuFileExit.Caption = "&Quit";
    form.mnuFileRemove.Visible = false;
    EXPECT_EQ(actionOf(form.mnuFileExit)->text(), "&Quit");
    EXPECT_FALSE(actionOf(form.mnuFileRemove)->isVisible());
}

TEST_F(MenusTest, OpeningRunsItsRuleBeforeTheEntriesShow)
{
    form.onFile = [&] {
        form.mnuFileRemove.Enabled = false;
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << "not on show yet";
    };
    robot.choose(form.mnuFileRemove);
    EXPECT_EQ(form.taken(), "File ") << "the entry is disabled";
    form.onFile = [&] { form.mnuFileRemove.Enabled = true; };
    robot.choose(form.mnuFileRemove);
    EXPECT_EQ(form.taken(), "File Remove ");
}

TEST_F(MenusTest, TheUserTurnsNoCheckMark)
{
    robot.choose(form.mnuSetInfoUp);
    EXPECT_EQ(form.taken(), "Info Up ");
    EXPECT_TRUE(actionOf(form.mnuSetInfoUp)->isChecked());
    form.mnuSetInfoUp.Checked = false;
    robot.choose(form.mnuSetInfoUp);
    EXPECT_FALSE(actionOf(form.mnuSetInfoUp)->isChecked());
}

TEST_F(MenusTest, APopUpMenuReturnsBehindItsEntryAndItsSubmenuRunsItsRuleOnOpening)
{
    robot.whenMenuOpens([&] { robot.choose(form.mnuGroupSortYear); });
    robot.press(form.lbRow, RightButton);
    EXPECT_EQ(form.taken(), "Sort back ") << "the rule has disabled it";
    robot.whenMenuOpens([&] { robot.choose(form.mnuGroupSortPlace); });
    robot.press(form.lbRow, RightButton);
    EXPECT_EQ(form.taken(), "Sort Place back ") << "behind the handler";
    robot.whenMenuOpens([&] { QApplication::activePopupWidget()->close(); });
    robot.press(form.lbRow, RightButton);
    EXPECT_EQ(form.taken(), "back ") << "nothing chosen";
    robot.whenMenuOpens([&] { robot.choose(form.mnuFileExit); });
    form.PopupMenu(form.mnuFile);
    robot.choose(form.mnuFileExit); // still opens from the bar
    EXPECT_EQ(form.taken(), "File Exit File Exit ");
}

TEST_F(MenusTest, AnEntryMayUnloadTheForm)
{
    form.onExit = [&] { form.unload(); };
    robot.choose(form.mnuFileExit);
    EXPECT_FALSE(form.isLoaded());
    form.mnuFileExit.Enabled = false; // has no view any more
    form.show();
    testDesktop().DoEvents();
    EXPECT_FALSE(actionOf(form.mnuFileExit)->isEnabled());
}

TEST_F(MenusTest, AFormThatIsUnloadedUnderItsOpenMenuEndsIt)
{
    robot.whenMenuOpens([&] {
        form.unload();
        QApplication::activePopupWidget()->close();
    });
    form.PopupMenu(form.mnuGroup);
    EXPECT_EQ(form.taken(), "");
    form.PopupMenu(form.mnuGroup);
    EXPECT_FALSE(form.isLoaded()) << "nothing opens without a window";
}

TEST_F(MenusTest, TheProgramMayEndInAnEntryAndUnderAnOpenMenu)
{
    const auto end = [] { testDesktop().endProgram(3); };
    form.onGroupRemove = end;
    robot.whenMenuOpens([&] { robot.choose(form.mnuGroupRemove); });
    EXPECT_THROW(form.PopupMenu(form.mnuGroup), ProgramEnd);

    robot.whenMenuOpens(end);
    EXPECT_THROW(form.PopupMenu(form.mnuGroup), ProgramEnd);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

} // namespace

} // namespace trovarium
