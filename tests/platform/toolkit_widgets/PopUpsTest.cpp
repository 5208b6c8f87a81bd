// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/Menu.h"

#include "platform/FormFixture.h"
#include "platform/toolkit/Buttons.h"
#include "platform/toolkit/FormWindow.h"
#include "platform/toolkit/Label.h"

#include <QApplication>

namespace trovarium {

// The menus that open over a form.
struct PopUpsTest : FormFixture {
    PopUpsTest()
    {
        for (Menu* menu : {&file, &fileExit, &group, &sort, &sortYear, &sortPlace})
            note(menu->Click, menu->Name());
        note(row.MouseDown, "row");
        when["row"] = [this] {
            form.PopupMenu(group);
            diary += "back ";
        };
        show();
    }

    // What a press on the row tells that opens the menu, where the act is done.
    std::string popUp(std::function<void()> act)
    {
        robot.whenMenuOpens(std::move(act));
        robot.press(row, RightButton);
        return taken().substr(std::string("row:2:0:750:300 ").size());
    }

    Menu file{&form, {.Name = "File", .Caption = "&File"}};
    Menu fileExit{&file, {.Name = "FileExit", .Caption = "E&xit"}};
    Menu group{&form, {.Name = "Group", .Caption = "GroupMenu", .Visible = false}};
    Menu sort{&group, {.Name = "Sort", .Caption = "Sort"}};
    Menu sortYear{&sort, {.Name = "SortYear", .Caption = "Year"}};
    Menu sortPlace{&sort, {.Name = "SortPlace", .Caption = "Place"}};
    Button find{&form, {.Name = "find", .Top = 900, .Width = 900, .Height = 300, .Caption = "&Find"}};
    Label row{&form, {.Name = "row", .Width = 1500, .Height = 600, .Caption = "row"}};
};

TEST_F(PopUpsTest, APopUpMenuReturnsBehindItsEntryOrWithoutAWindowAndTheProgramMayEndInIt)
{
    when["Sort"] = [&] { sortYear.Enabled = false; };
    EXPECT_EQ(popUp([&] { robot.choose(sortYear); }), "Group Sort back ") << "the rule has disabled it";
    EXPECT_EQ(popUp([&] { robot.choose(sortPlace); }), "Group Sort SortPlace back ") << "behind the handler";
    const auto close = [&] {
        form.unload();
        QApplication::activePopupWidget()->close();
    };
    EXPECT_EQ(popUp(close), "Group back ");
    EXPECT_FALSE(form.isLoaded());
    form.PopupMenu(group);
    EXPECT_EQ(taken(), "") << "nothing opens without a window";
    show();
    robot.whenMenuOpens([&] { robot.choose(fileExit); });
    form.PopupMenu(file);
    robot.key(form, 'F', AltKey); // still opens from the bar, where a button wants the same key
    EXPECT_NE(QApplication::activePopupWidget(), nullptr);
    robot.choose(fileExit);
    EXPECT_EQ(taken(), "File FileExit File FileExit ");
    when["SortPlace"] = [] { testDesktop().endProgram(3); };
    robot.whenMenuOpens([&] { robot.choose(sortPlace); });
    EXPECT_THROW(form.PopupMenu(group), ProgramEnd);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

} // namespace trovarium
