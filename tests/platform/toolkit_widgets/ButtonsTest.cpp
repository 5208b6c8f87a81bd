#include "platform/toolkit/Button.h"
#include "platform/toolkit/CheckBox.h"
#include "platform/toolkit/ComboBox.h"
#include "platform/toolkit/DriveList.h"
#include "platform/toolkit/FileList.h"
#include "platform/toolkit/ListBox.h"
#include "platform/toolkit/OptionButton.h"

#include "platform/toolkit/ControlArray.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Frame.h"
#include "platform/toolkit/TextBox.h"
#include "support/FailureOf.h"
#include "support/Robot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>

namespace trovarium {

namespace {

class ButtonForm : public Form {
public:
    ButtonForm()
        : Form(testDesktop(), {.Name = "ButtonForm", .Width = 4500, .Height = 4500})
    {
        cmdOK.Click.connect([this] {
            log += "OK ";
            if (onOK)
                onOK();
        });
        cmdCancel.Click.connect([this] { log += "Cancel "; });
        chkOption.Click.connect([this] { log += "chk" + std::to_string(chkOption.Value()) + " "; });
        optPosition.forEach([this](int index, OptionButton& option) {
            option.Click.connect([this, index] { log += "opt" + std::to_string(index) + chosen() + " "; });
        });
        optOther.Click.connect([this] { log += "other "; });
    }

    // The option buttons of the first group that are set.
    std::string chosen() const
    {
        std::string set = "(";
        optPosition.forEach([&](int index, const OptionButton& option) {
            if (option.Value())
                set += std::to_string(index);
        });
        return set + ")";
    }
    std::string taken() { return std::exchange(log, {}); }

    TextBox txtName{this, {.Name = "txtName", .Width = 1500, .Height = 300}};
    Button cmdOK{this, {.Name = "cmdOK", .Top = 400, .Width = 1500, .Height = 400, .Caption = "&OK"}};
    Button cmdCancel{this, {.Name = "cmdCancel", .Top = 900, .Width = 1500, .Height = 400, .Caption = "Cancel"}};
    CheckBox chkOption{this, {.Name = "chkOption", .Top = 1400, .Width = 1500, .Height = 300, .Caption = "Option"}};
    ControlArray<OptionButton> optPosition{
        this, "optPosition", 0, 2, [](int index) {
            return Plan{.Top = 1800.0F + 300.0F * static_cast<float>(index), .Width = 1500, .Height = 300};
        }};
    Frame fraOther{this, {.Name = "fraOther", .Left = 2000, .Width = 1500, .Height = 1500}};
    OptionButton optOther{&fraOther, {.Name = "optOther", .Width = 1200, .Height = 300}};
    std::function<void()> onOK;
    std::string log;
};

class ButtonsTest : public testing::Test {
protected:
    ~ButtonsTest() override { form.unload(); }

    void show()
    {
        form.show();
        testDesktop().DoEvents();
    }

    ButtonForm form;
    Robot robot{testDesktop()};
};

TEST_F(ButtonsTest, AClickSpaceOrEnterPressesAButton)
{
    show();
    robot.click(form.cmdOK);
    form.cmdOK.SetFocus();
    robot.key(form, 32);
    robot.key(form, 13);
    EXPECT_EQ(form.taken(), "OK OK OK ");
    form.cmdOK.Enabled = false;
    robot.click(form.cmdOK);
    EXPECT_EQ(form.taken(), "");
}

TEST_F(ButtonsTest, EnterAndEscapePressDefaultAndCancelFromAnotherControl)
{
    form.cmdOK.Default = true;
    form.cmdCancel.Cancel = true;
    show();
    form.txtName.SetFocus();
    robot.key(form, 13);
    robot.key(form, 27);
    EXPECT_EQ(form.taken(), "OK Cancel ");
    form.cmdCancel.SetFocus();
    robot.key(form, 13);
    EXPECT_EQ(form.taken(), "Cancel ") << "a button with the focus goes before the default one";
    form.txtName.SetFocus();
    form.cmdOK.Enabled = false;
    form.cmdCancel.Visible = false;
    robot.key(form, 13);
    robot.key(form, 27);
    EXPECT_EQ(form.taken(), "");
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
    form.onOK = [&] {
        form.onOK = [&] { form.unload(); };
        robot.click(form.cmdOK);
        form.log += "end ";
    };
    robot.click(form.cmdOK);
    EXPECT_EQ(form.taken(), "OK OK end ");
    EXPECT_FALSE(form.isLoaded());
}

TEST_F(ButtonsTest, ACheckBoxClicksForTheUserAndForCode)
{
    form.chkOption.preset();
    EXPECT_EQ(form.chkOption.Value(), 1);
    EXPECT_EQ(form.taken(), "");
    form.chkOption.Value = 0;
    form.chkOption.Value = 1;
    form.chkOption.Value = 1;
    EXPECT_EQ(form.taken(), "chk0 chk1 ");
    for (const int value : {2, -1})
        EXPECT_EQ(failureOf([&] { form.chkOption.Value = value; }), "Invalid property value") << value;
    show();
    robot.click(form.chkOption, LeftButton, NoKeys, At{8, 10});
    form.chkOption.Value = 1;
    robot.click(form.chkOption, LeftButton, NoKeys, At{8, 10});
    EXPECT_EQ(form.taken(), "chk0 chk1 chk0 ");
}

TEST_F(ButtonsTest, OptionButtonsOfOneParentAreAGroup)
{
    form.optPosition(1).preset();
    form.optOther.Value = true;
    form.optPosition(2).Value = true;
    form.optPosition(2).Value = true;
    EXPECT_EQ(form.taken(), "other opt2(2) ") << "the others are out when the handler runs";
    EXPECT_TRUE(form.optOther.Value());
    form.optPosition(2).Value = false;
    EXPECT_EQ(form.chosen(), "()");
    EXPECT_EQ(form.taken(), "");
}

TEST_F(ButtonsTest, TheUserChoosesAnOptionByMouseAndArrow)
{
    form.optPosition(1).preset();
    show();
    robot.click(form.optPosition(0), LeftButton, NoKeys, At{8, 10});
    robot.click(form.optPosition(0), LeftButton, NoKeys, At{8, 10});
    EXPECT_EQ(form.taken(), "opt0(0) ");
    form.optPosition(0).SetFocus();
    robot.key(form, 40);
    EXPECT_EQ(form.taken(), "opt1(1) ");
    form.optPosition(1).Value = false;
    robot.click(form.optPosition(1), LeftButton, NoKeys, At{8, 10});
    EXPECT_EQ(form.taken(), "opt1(1) ") << "what code cleared may be chosen again";
}

TEST_F(ButtonsTest, ADisabledCaptionCanBeToldFromTheForm)
{
    show();
    form.chkOption.Enabled = false;
    const Shot disabled = robot.shot(form);
    form.chkOption.Caption = "";
    const Shot blank = robot.shot(form);
    int strongest = 0;
    for (int y = 93; y < 113; ++y)
        for (int x = 20; x < 100; ++x)
            strongest = std::max(strongest, std::abs(disabled.at(x, y).red - blank.at(x, y).red));
    EXPECT_GT(strongest, 60);
}

TEST_F(ButtonsTest, CaptionsAndColoursShow)
{
    show();
    const Shot plain = robot.shot(form);
    form.chkOption.BackColor = Color{10, 20, 30};
    EXPECT_GT(robot.shot(form).count({10, 20, 30}), 500);
    form.chkOption.BackColor = std::optional<Color>();
    EXPECT_TRUE(robot.shot(form) == plain);
    form.cmdOK.Caption = "Other";
    EXPECT_FALSE(robot.shot(form) == plain);
}

} // namespace

} // namespace trovarium
