#include "platform/toolkit/Button.h"
#include "platform/toolkit/CheckBox.h"
#include "platform/toolkit/ComboBox.h"
#include "platform/toolkit/DriveList.h"
#include "platform/toolkit/FileList.h"
#include "platform/toolkit/ListBox.h"
#include "platform/toolkit/OptionButton.h"

#include "platform/Stage.h"
#include "platform/toolkit/ControlArray.h"
#include "platform/toolkit/Frame.h"
#include "platform/toolkit/TextBox.h"

#include <algorithm>
#include <cstdlib>

namespace trovarium {

namespace {

class ButtonsTest : public Stage {
protected:
    ButtonsTest()
    {
        note(cmdOK.Click, "OK");
        note(cmdCancel.Click, "Cancel");
        note(chkOption.Click, "chk", [this] { return std::to_string(chkOption.Value()); });
        optPosition.forEach([this](int index, OptionButton& option) {
            note(option.Click, "opt" + std::to_string(index), [this] { return chosen(); });
        });
        note(optOther.Click, "other");
    }

    // The option buttons of the first group that are set.
    std::string chosen() const
    {
        std::string set;
        optPosition.forEach([&](int index, const OptionButton& option) {
            if (option.Value())
                set += std::to_string(index);
        });
        return set;
    }
    void click(Control& control) { robot.click(control, LeftButton, NoKeys, At{8, 10}); }

    TextBox txtName{&form, {.Name = "txtName", .Width = 1500, .Height = 300}};
    Button cmdOK{&form, {.Name = "cmdOK", .Top = 400, .Width = 1500, .Height = 400, .Caption = "&OK"}};
    Button cmdCancel{&form, {.Name = "cmdCancel", .Top = 900, .Width = 1500, .Height = 400, .Caption = "Cancel"}};
    CheckBox chkOption{&form, {.Name = "chkOption", .Top = 1400, .Width = 1500, .Height = 300, .Caption = "Option"}};
    ControlArray<OptionButton> optPosition{
        &form, "optPosition", 1, 3, [](int index) {
            return Plan{.Top = 1500.0F + 300.0F * static_cast<float>(index), .Width = 1500, .Height = 300};
        }};
    Frame fraOther{&form, {.Name = "fraOther", .Left = 2000, .Width = 1500, .Height = 1500}};
    OptionButton optOther{&fraOther, {.Name = "optOther", .Width = 1200, .Height = 300}};
};

TEST_F(ButtonsTest, AreKeyedAndEnterAndEscapePressDefaultAndCancelFromAnotherControl)
{
    cmdOK.Default = true;
    cmdCancel.Cancel = true;
    show();
    click(cmdOK);
    cmdOK.SetFocus();
    keys({32, 13});
    EXPECT_EQ(taken(), "OK OK OK ");
    txtName.SetFocus();
    keys({13, 27});
    EXPECT_EQ(taken(), "OK Cancel ");
    cmdCancel.SetFocus();
    keys({13});
    EXPECT_EQ(taken(), "Cancel ") << "a button with the focus goes before the default one";
    txtName.SetFocus();
    cmdOK.Enabled = false;
    cmdCancel.Visible = false;
    keys({13, 27});
    click(cmdOK);
    EXPECT_EQ(taken(), "");
}

TEST_F(ButtonsTest, EnterAmongRowsPressesNoDefaultButton)
{
    ComboBox combo{&form, {.Name = "combo", .Width = 1500, .Height = 300}};
    DriveList drives{&form, {.Name = "drives", .Width = 1500, .Height = 300}};
    FileList files{&form, {.Name = "files", .Width = 1500, .Height = 900}};
    ListBox list{&form, {.Name = "list", .Width = 1500, .Height = 900}};
    list.AddItem("row");
    form.cmdOK.Default = true;
    show();
    for (Control* rows : std::initializer_list<Control*>{&combo, &drives, &files, &list}) {
        rows->SetFocus();
        EXPECT_TRUE(rows->hasFocus());
        robot.key(form, 13);
        EXPECT_EQ(form.taken(), "") << rows->Name();
    }
}

TEST_F(ButtonsTest, AHandlerMayLetItsButtonBePressedAgainAndUnloadTheForm)
{
    show();
    when["OK"] = [&] {
        when["OK"] = [&] { form.unload(); };
        robot.click(cmdOK);
        diary += "end ";
    };
    robot.click(cmdOK);
    EXPECT_EQ(taken(), "OK OK end ");
    EXPECT_FALSE(form.isLoaded());
}

TEST_F(ButtonsTest, ACheckBoxClicksForTheUserAndForCode)
{
    chkOption.preset();
    EXPECT_EQ(chkOption.Value(), 1);
    for (const int value : {0, 1, 1})
        chkOption.Value = value;
    EXPECT_EQ(taken(), "chk:0 chk:1 ");
    for (const int value : {2, -1})
        EXPECT_EQ(failureOf([&] { chkOption.Value = value; }), "Invalid property value") << value;
    show();
    click(chkOption);
    chkOption.Value = 1;
    click(chkOption);
    EXPECT_EQ(taken(), "chk:0 chk:1 chk:0 ");
}

TEST_F(ButtonsTest, OptionButtonsOfOneParentAreAGroup)
{
    EXPECT_EQ(optPosition(3).Name(), "optPosition(3)");
    for (const int index : {0, 4})
        EXPECT_EQ(failureOf([&] { optPosition(index); }), "Control array element does not exist");
    optPosition(2).preset();
    optOther.Value = true;
    optPosition(3).Value = true;
    optPosition(3).Value = true;
    EXPECT_EQ(taken(), "other opt3:3 ") << "the others are out when the handler runs";
    EXPECT_TRUE(optOther.Value());
    optPosition(3).Value = false;
    EXPECT_EQ(taken() + chosen(), "");
    show();
    click(optPosition(1));
    click(optPosition(1));
    optPosition(1).SetFocus();
    keys({40});
    EXPECT_EQ(taken(), "opt1:1 opt2:2 ");
    optPosition(2).Value = false;
    click(optPosition(2));
    EXPECT_EQ(taken(), "opt2:2 ") << "what code cleared may be chosen again";
}

TEST_F(ButtonsTest, CaptionsAndColoursShowAlsoWhenDisabled)
{
    show();
    const Shot plain = robot.shot(form);
    chkOption.BackColor = Color{10, 20, 30};
    EXPECT_GT(robot.shot(form).count({10, 20, 30}), 500);
    chkOption.BackColor = std::optional<Color>();
    EXPECT_TRUE(robot.shot(form) == plain);
    cmdOK.Caption = "Other";
    EXPECT_FALSE(robot.shot(form) == plain);
    chkOption.Enabled = false;
    const Shot disabled = robot.shot(form);
    chkOption.Caption = "";
    const Shot blank = robot.shot(form);
    int strongest = 0;
    for (int y = 93; y < 113; ++y)
        for (int x = 20; x < 100; ++x)
            strongest = std::max(strongest, std::abs(disabled.at(x, y).red - blank.at(x, y).red));
    EXPECT_GT(strongest, 60) << "a disabled caption can be told from the form";
}

} // namespace

} // namespace trovarium
