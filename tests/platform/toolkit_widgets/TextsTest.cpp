#include "platform/toolkit/ComboBox.h"
#include "platform/toolkit/TextBox.h"

#include "platform/Stage.h"

#include <QApplication>
#include <QClipboard>

namespace trovarium {

namespace {

class TextsTest : public Stage {
protected:
    TextsTest()
    {
        note(box.Change, "Change", [this] { return box.Text(); });
        note(box.KeyPress, "Key");
        note(combo.Change, "Change", [this] { return combo.Text(); });
        note(combo.Click, "Click", [this] { return combo.Text(); });
    }

    void show(Control& focused)
    {
        Stage::show();
        focused.SetFocus();
    }
    void paste(const char* text)
    {
        QApplication::clipboard()->setText(text);
        robot.key(form, 'V', CtrlKey);
    }

    TextBox box{&form, {.Name = "Text1", .Width = 3000, .Height = 285, .Caption = "Image"}};
    ComboBox combo{&form, {.Name = "cmbName", .Top = 600, .Width = 3000, .Height = 315}};
};

TEST_F(TextsTest, LineEndsBecomeBlanksAndAtTheLimitOfCharactersNothingGoesIn)
{
    for (const auto& [text, expected] : {std::pair{"a\rb", "a b"}, {"a\n\r\nb\n", "a  b "}, {"\n", " "}}) {
        box.Text = text;
        EXPECT_EQ(box.Text(), expected);
    }
    box.MaxLength = 1;
    box.Text = "Image";
    EXPECT_EQ(box.Text(), "I");
    box.MaxLength = 0;
    box.Text = "Image";
    box.MaxLength = 3;
    EXPECT_EQ(box.Text(), "Image") << "what is there stays";
    box.Text = "\xC3\xA4\xF0\x9F\x98\x80.d";
    EXPECT_EQ(box.Text(), "\xC3\xA4\xF0\x9F\x98\x80.") << "characters count";
    EXPECT_EQ(failureOf([&] { box.MaxLength = -1; }), "Invalid property value");
    box.MaxLength = 4;
    box.Text = "abc";
    show(box);
    keys({36}); // Home
    robot.type(form, "xy");
    EXPECT_EQ(box.Text(), "xabc");
    keys({36, 46});
    paste("12\r\n34");
    EXPECT_EQ(box.Text(), "1abc") << "a paste is cut to what fits";
    box.MaxLength = 0;
    paste("\r\n2");
    EXPECT_EQ(box.Text(), "1 2abc");
}

TEST_F(TextsTest, KeyPressComesBeforeTheTextChangesAndCodeChangesOnlyByANewText)
{
    box.Text = "Image"; // as it is
    box.Text = "";
    EXPECT_EQ(taken(), "Change: ");
    show(box);
    robot.type(form, "a");
    keys({13, 27, 8});
    EXPECT_EQ(taken(), "Key:97 Change:a Key:13 Key:27 Key:8 Change: ");
}

TEST_F(TextsTest, AHandlerMayMendTheTextOrUnloadTheFormWhileTheUserTypes)
{
    when["Change"] = [&] {
        std::string text = box.Text();
        std::replace(text.begin(), text.end(), '.', '_');
        box.Text = text;
    };
    box.Text = "";
    show(box);
    robot.type(form, "ab");
    keys({37}); // left
    robot.type(form, ".c");
    EXPECT_EQ(box.Text(), "a_cb") << "the cursor stays where the user types";
    when["Change"] = [&] { form.unload(); };
    robot.type(form, "x");
    EXPECT_FALSE(form.isLoaded());
    EXPECT_EQ(box.Text(), "a_cxb");
}

TEST_F(TextsTest, AComboHoldsATextAndChoices)
{
    for (const char* name : {"Rome", "Paris", "Paris in May"})
        combo.AddItem(name);
    combo.Text = "Paris";
    EXPECT_EQ(combo.ListIndex(), 1);
    combo.Text = "paris";
    EXPECT_EQ(combo.ListIndex(), -1);
    combo.ListIndex = 2;
    EXPECT_EQ(combo.List(0), "Rome");
    EXPECT_EQ(failureOf([&] { combo.ListIndex = 3; }), "Invalid property array index");
    EXPECT_EQ(failureOf([&] { (void)combo.List(-1); }), "Invalid property array index");
    combo.Text = "";
    EXPECT_EQ(taken(), "Change:Paris Change:paris Click:Paris in May Change: ");
    show(combo);
    robot.type(form, "par");
    keys({13});
    EXPECT_EQ(taken(), "Change:p Change:pa Change:par ") << "no choice is put in its place";
    EXPECT_EQ(combo.ListCount(), 3) << "nor is it added to the list";
    keys({40, 40, 40});
    EXPECT_EQ(taken(), "Click:Rome Click:Paris Click:Paris in May ");
    robot.wheel(combo, -1);
    EXPECT_EQ(combo.Text(), "Paris in May") << "the wheel on its way over chooses nothing";
    combo.Clear();
    EXPECT_EQ(combo.ListCount(), 0);
}

} // namespace

} // namespace trovarium
