#include "platform/toolkit/TextBox.h"

#include "platform/FormFixture.h"

#include <QApplication>
#include <QClipboard>

namespace trovarium {

struct InputsTest : FormFixture {
    InputsTest()
    {
        note(box.Change, "Change", [this] { return box.Text(); });
        note(box.KeyPress, "Key");
    }

    TextBox box{&form, {.Name = "box", .Width = 3000, .Height = 285, .Caption = "Image"}};
};

TEST_F(InputsTest, ATextHasOneLineAndALimitAndKeyPressComesBeforeAChangeWhoseHandlerMayMendIt)
{
    box.Text = "Image"; // as it is
    for (const auto& [limit, text] :
        {std::pair{0, "a\n\r\nb\r"}, {1, "Image"}, {3, "\xC3\xA4\xF0\x9F\x98\x80.d"}, {4, "abc"}}) {
        box.MaxLength = limit;
        box.Text = text;
    }
    EXPECT_EQ(failureOf([&] { box.MaxLength = -1; }), "Invalid property value");
    EXPECT_EQ(taken(), "Change:a  b  Change:I Change:\xC3\xA4\xF0\x9F\x98\x80. Change:abc ");
    box.MaxLength = 2;
    EXPECT_EQ(box.Text(), "abc") << "what is there stays";
    show();
    box.MaxLength = 5;
    keys({36}); // Home
    QApplication::clipboard()->setText("1\r\n23");
    robot.key(form, 'V', CtrlKey);
    EXPECT_EQ(box.Text(), "1 abc") << "a paste is cut to what fits";
    box.Text = "";
    taken();
    robot.type(form, "a");
    keys({13, 27, 8});
    EXPECT_EQ(taken(), "Key:97 Change:a Key:13 Key:27 Key:8 Change: ");
    when["Change"] = [&] {
        std::string text = box.Text();
        std::replace(text.begin(), text.end(), '.', '_');
        box.Text = text;
    };
    robot.type(form, "ab");
    keys({37}); // left
    robot.type(form, ".c");
    when["Change"] = [&] { form.unload(); };
    robot.type(form, "x");
    EXPECT_FALSE(form.isLoaded());
    EXPECT_EQ(box.Text(), "a_cxb") << "the cursor stays where the user types";
}

} // namespace trovarium
