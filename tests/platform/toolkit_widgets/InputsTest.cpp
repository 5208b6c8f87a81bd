#include "platform/toolkit/Button.h"
#include "platform/toolkit/CheckBox.h"
#include "platform/toolkit/ComboBox.h"
#include "platform/toolkit/OptionButton.h"
#include "platform/toolkit/TextBox.h"

#include "platform/Stage.h"
#include "platform/toolkit/Frame.h"

#include <QApplication>
#include <QClipboard>

namespace trovarium {

namespace {

class InputsTest : public Stage {
protected:
    InputsTest()
    {
        note(ok.Click, "OK");
        note(cancel.Click, "Cancel");
        note(check.Click, "check", [this] { return std::to_string(check.Value()); });
        note(upper.Click, "upper", [this] { return lower.Value() ? "both" : "alone"; });
        note(lower.Click, "lower", [this] { return upper.Value() ? "both" : "alone"; });
        note(box.Change, "Change", [this] { return box.Text(); });
        note(box.KeyPress, "Key");
        note(combo.Change, "Change", [this] { return combo.Text(); });
        note(combo.Click, "Click", [this] { return combo.Text(); });
    }

    void click(Control& control) { robot.click(control, LeftButton, NoKeys, At{8, 10}); }

    TextBox box{&form, {.Name = "box", .Width = 3000, .Height = 285, .Caption = "Image"}};
    Button ok{&form, {.Name = "ok", .Top = 400, .Width = 1500, .Height = 400, .Caption = "&OK"}};
    Button cancel{&form, {.Name = "cancel", .Top = 900, .Width = 1500, .Height = 400, .Caption = "Cancel"}};
    CheckBox check{&form, {.Name = "check", .Top = 1400, .Width = 1500, .Height = 300, .Caption = "Option"}};
    OptionButton upper{&form, {.Name = "upper", .Top = 1800, .Width = 1500, .Height = 300}};
    OptionButton lower{&form, {.Name = "lower", .Top = 2100, .Width = 1500, .Height = 300}};
    Frame frame{&form, {.Name = "frame", .Top = 2500, .Width = 1500, .Height = 1000}};
    OptionButton other{&frame, {.Name = "other", .Width = 1200, .Height = 300}};
    ComboBox combo{&form, {.Name = "combo", .Top = 3600, .Width = 3000, .Height = 315}};
};

TEST_F(InputsTest, EnterAndEscapePressDefaultAndCancelFromAnotherControl)
{
    ok.Default = true;
    cancel.Cancel = true;
    show();
    click(ok);
    check.SetFocus();
    keys({13, 27});
    EXPECT_EQ(taken(), "OK OK Cancel ");
    cancel.SetFocus();
    keys({13});
    EXPECT_EQ(taken(), "Cancel ") << "a button with the focus goes before the default one";
    check.SetFocus();
    ok.Enabled = false;
    cancel.Visible = false;
    keys({13, 27});
    click(ok);
    EXPECT_EQ(taken(), "");
}

TEST_F(InputsTest, BoxesAndOptionsClickForTheUserAndForCodeAndShowThemselves)
{
    check.preset();
    for (const int value : {0, 1, 1})
        check.Value = value;
    for (const int value : {2, -1})
        EXPECT_EQ(failureOf([&] { check.Value = value; }), "Invalid property value") << value;
    upper.preset();
    other.Value = true;
    lower.Value = true;
    lower.Value = true;
    EXPECT_EQ(taken(), "check:0 check:1 lower:alone ") << "the other is out when the handler runs";
    EXPECT_TRUE(other.Value()) << "of another parent";
    lower.Value = false;
    show();
    click(check);
    click(upper);
    click(upper);
    upper.SetFocus();
    keys({40});
    EXPECT_EQ(taken(), "check:0 upper:alone lower:alone ");
    lower.Value = false;
    click(lower);
    EXPECT_EQ(taken(), "lower:alone ") << "what code cleared may be chosen again";
    check.Enabled = false;
    const Shot disabled = robot.shot(form);
    check.Caption = "";
    EXPECT_FALSE(robot.shot(form) == disabled) << "a disabled caption shows";
    upper.BackColor = Color{10, 20, 30};
    EXPECT_GT(robot.shot(form).count({10, 20, 30}), 500);
}

TEST_F(InputsTest, LineEndsBecomeBlanksAndAtTheLimitOfCharactersNothingGoesIn)
{
    for (const auto& [limit, text, expected] : {std::tuple{0, "a\n\r\nb\r", "a  b "}, {1, "Image", "I"},
             {3, "\xC3\xA4\xF0\x9F\x98\x80.d", "\xC3\xA4\xF0\x9F\x98\x80."}, {4, "abc", "abc"}}) {
        box.MaxLength = limit;
        box.Text = text;
        EXPECT_EQ(box.Text(), expected);
    }
    EXPECT_EQ(failureOf([&] { box.MaxLength = -1; }), "Invalid property value");
    show();
    keys({36}); // Home
    robot.type(form, "xy");
    box.MaxLength = 3;
    EXPECT_EQ(box.Text(), "xabc") << "what is there stays";
    box.MaxLength = 5;
    keys({36, 46});
    QApplication::clipboard()->setText("1\r\n23");
    robot.key(form, 'V', CtrlKey);
    EXPECT_EQ(box.Text(), "1 abc") << "a paste is cut to what fits";
}

TEST_F(InputsTest, KeyPressComesBeforeTheTextChangesAndAHandlerMayMendItOrUnloadTheForm)
{
    box.Text = "Image"; // as it is
    box.Text = "";
    show();
    robot.type(form, "a");
    keys({13, 27, 8});
    EXPECT_EQ(taken(), "Change: Key:97 Change:a Key:13 Key:27 Key:8 Change: ");
    when["Change"] = [&] {
        std::string text = box.Text();
        std::replace(text.begin(), text.end(), '.', '_');
        box.Text = text;
    };
    robot.type(form, "ab");
    keys({37}); // left
    robot.type(form, ".c");
    EXPECT_EQ(box.Text(), "a_cb") << "the cursor stays where the user types";
    when["Change"] = [&] { form.unload(); };
    robot.type(form, "x");
    EXPECT_FALSE(form.isLoaded());
    EXPECT_EQ(box.Text(), "a_cxb");
}

TEST_F(InputsTest, AComboHoldsATextAndChoices)
{
    for (const char* name : {"Rome", "Paris", "Paris in May"})
        combo.AddItem(name);
    for (const auto& [text, index] : {std::pair{"Paris", 1}, {"paris", -1}, {"Paris\nin May", 2}}) {
        combo.Text = text;
        EXPECT_EQ(combo.ListIndex(), index) << text;
    }
    combo.ListIndex = 2;
    combo.ListIndex = 0;
    for (const int index : {-2, 3}) {
        EXPECT_EQ(failureOf([&] { combo.ListIndex = index; }), "Invalid property array index");
        EXPECT_EQ(failureOf([&] { (void)combo.List(index); }), "Invalid property array index");
    }
    EXPECT_EQ(combo.List(0), "Rome");
    combo.Text = "";
    EXPECT_EQ(taken(), "Change:Paris Change:paris Change:Paris in May Click:Rome Change: ");
    show();
    combo.SetFocus();
    robot.type(form, "par");
    keys({13});
    EXPECT_EQ(taken(), "Change:p Change:pa Change:par ") << "no choice is put in its place";
    keys({40, 40, 40, 40});
    EXPECT_EQ(taken(), "Click:Rome Click:Paris Click:Paris in May ") << "nor is it added to the list";
    robot.wheel(combo, -1);
    EXPECT_EQ(combo.Text(), "Paris in May") << "the wheel on its way over chooses nothing";
    combo.Clear();
    EXPECT_EQ(combo.ListCount(), 0);
}

} // namespace

} // namespace trovarium
