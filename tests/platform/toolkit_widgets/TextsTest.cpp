#include "platform/toolkit/ComboBox.h"
#include "platform/toolkit/TextBox.h"

#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Form.h"
#include "support/FailureOf.h"
#include "support/Robot.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QKeyEvent>

#include <gtest/gtest.h>

#include <functional>

namespace trovarium {

namespace {

class TextForm : public Form {
public:
    TextForm()
        : Form(testDesktop(), {.Name = "TextForm", .Width = 4500, .Height = 3000})
    {
        Text1.Change.connect([this] {
            log += "Change:" + Text1.Text() + " ";
            if (onChange)
                onChange();
        });
        Text1.KeyPress.connect([this](int ascii) { log += std::to_string(ascii) + " "; });
        cmbName.Change.connect([this] { log += "Change:" + cmbName.Text() + " "; });
        cmbName.Click.connect([this] { log += "Click:" + cmbName.Text() + " "; });
    }

    std::string taken() { return std::exchange(log, {}); }

    TextBox Text1{this, {.Name = "Text1", .Width = 3000, .Height = 285, .Caption = "Image"}};
    ComboBox cmbName{this, {.Name = "cmbName", .Top = 600, .Width = 3000, .Height = 315}};
    std::function<void()> onChange;
    std::string log;
};

class TextsTest : public testing::Test {
protected:
    ~TextsTest() override { form.unload(); }

    void show(Control& focused)
    {
        form.show();
        testDesktop().DoEvents();
        focused.SetFocus();
    }
    void paste(std::string_view text)
    {
        QApplication::clipboard()->setText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
        robot.key(form, 'V', CtrlKey);
    }

    TextForm form;
    TextBox& box = form.Text1;
    ComboBox& combo = form.cmbName;
    Robot robot{testDesktop()};
};

TEST_F(TextsTest, LineEndsBecomeBlanks)
{
    const std::vector<std::pair<std::string, std::string>> cases{{"a\rb", "a b"}, {"a\n\r\nb\n", "a  b "}, {"\n", " "}};
    for (const auto& [text, expected] : cases) {
        box.Text = text;
        EXPECT_EQ(box.Text(), expected);
    }
    box.Text = "";
    show(box);
    paste("Rome\r\n1998");
    EXPECT_EQ(box.Text(), "Rome 1998");
}

TEST_F(TextsTest, AtTheLimitOfCharactersNothingGoesIn)
{
    box.MaxLength = 3;
    EXPECT_EQ(box.Text(), "Image") << "what is there stays";
    box.Text = "\xC3\xA4\xF0\x9F\x98\x80.d";
    EXPECT_EQ(box.Text(), "\xC3\xA4\xF0\x9F\x98\x80.") << "characters count";
    EXPECT_EQ(failureOf([&] { box.MaxLength = -1; }), "Invalid property value");
    box.MaxLength = 0;
    box.Text = "abc";
    EXPECT_EQ(box.Text(), "abc");
    box.MaxLength = 4;
    show(box);
    robot.key(form, 36); // Home
    robot.type(form, "xy");
    EXPECT_EQ(box.Text(), "xabc");
    robot.type(form, "z");
    EXPECT_EQ(box.Text(), "xabc");
    robot.key(form, 36);
    robot.key(form, 46);
    paste("12345");
    EXPECT_EQ(box.Text(), "1abc") << "a paste is cut to what fits";
}

TEST_F(TextsTest, KeyPressComesBeforeTheTextChangesAndCodeChangesOnlyByANewText)
{
    box.Text = "Image"; // as it is
    box.Text = "";
    EXPECT_EQ(form.taken(), "Change: ");
    show(box);
    robot.type(form, "a");
    robot.key(form, 13);
    robot.key(form, 27);
    robot.key(form, 8);
    EXPECT_EQ(form.taken(), "97 Change:a 13 27 8 Change: ");
}

TEST_F(TextsTest, AHandlerMayMendTheTextOrUnloadTheFormWhileTheUserTypes)
{
    form.onChange = [&] {
        std::string text = box.Text();
        for (char& character : text)
            if (character == '.')
                character = '_';
        box.Text = text;
    };
    box.Text = "";
    show(box);
    robot.type(form, "ab");
    robot.key(form, 37); // left
    robot.type(form, ".c");
    EXPECT_EQ(box.Text(), "a_cb") << "the cursor stays where the user types";
    form.onChange = [&] { form.unload(); };
    robot.type(form, "x");
    EXPECT_FALSE(form.isLoaded());
    EXPECT_EQ(box.Text(), "a_cxb");
}

TEST_F(TextsTest, AComboHoldsATextAndChoices)
{
    for (const char* name : {"Rome", "Paris", "Oslo"})
        combo.AddItem(name);
    combo.Text = "Paris";
    EXPECT_EQ(combo.ListIndex(), 1);
    combo.Text = "paris";
    EXPECT_EQ(combo.ListIndex(), -1);
    combo.ListIndex = 2;
    EXPECT_EQ(form.taken(), "Change:Paris Change:paris Click:Oslo ");
    EXPECT_EQ(combo.List(0), "Rome");
    EXPECT_EQ(failureOf([&] { combo.ListIndex = 3; }), "Invalid property array index");
    EXPECT_EQ(failureOf([&] { (void)combo.List(-1); }), "Invalid property array index");
    combo.Clear();
    EXPECT_EQ(combo.ListCount(), 0);
}

TEST_F(TextsTest, AComboTakesTheTextAsTypedOrAsChosen)
{
    combo.AddItem("Paris");
    combo.AddItem("Paris in May");
    combo.Text = "";
    form.taken();
    show(combo);
    robot.type(form, "par");
    robot.key(form, 13);
    EXPECT_EQ(combo.Text(), "par") << "no choice is put in its place";
    EXPECT_EQ(form.taken(), "Change:p Change:pa Change:par ");
    EXPECT_EQ(combo.ListCount(), 2) << "nor is it added to the list";
    robot.key(form, 40);
    robot.key(form, 40);
    EXPECT_EQ(form.taken(), "Click:Paris Click:Paris in May ");
    robot.wheel(combo, -1);
    EXPECT_EQ(combo.Text(), "Paris in May") << "the wheel on its way over chooses nothing";
}

} // namespace

} // namespace trovarium
