// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/ScrollBar.h"
#include "platform/toolkit/TextBox.h"

#include "platform/FormFixture.h"
#include "platform/toolkit/DrawnWidget.h"
#include "platform/toolkit/PictureBox.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QScrollBar>

namespace trovarium {

struct InputsTest : FormFixture {
    InputsTest()
    {
        note(box.Change, "Change", [this] { return box.Text(); });
        bar.Min = 1;
        bar.Max = 10;
        note(bar.Change, "C", [this] { return std::to_string(bar.Value()); });
        note(bar.Scroll, "S", [this] { return std::to_string(bar.Value()); });
    }

    void click(Control& control, At at = {8, 10}) { robot.click(control, LeftButton, NoKeys, at); }

    TextBox box{&form, {.Name = "box", .Width = 3000, .Height = 285, .Caption = "Image"}};
    PictureBox window{&form, {.Name = "window", .Left = 3200, .Width = 1200, .Height = 4500}};
    VScroll bar{&window, {.Name = "bar", .Left = 900, .Width = 255, .Height = 4500}};
};

TEST_F(InputsTest, ATextHasOneLineAndALimitAndTheHandlerOfAChangeMayMendIt)
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
    EXPECT_EQ(taken(), "Change:a Change: ");
    QAccessible::queryAccessibleInterface(box.widget())->setText(QAccessible::Value, "told");
    EXPECT_EQ(taken(), "Change:told ") << "an assistive technology doesn't type";
    box.Text = "";
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

TEST_F(InputsTest, AScrollBarRaisesScrollBehindChangeForTheUserAndForAPageAndChangeAloneForCode)
{
    show();
    click(bar, At{8, 296}); // the arrow
    bar.SetFocus();
    keys({34, 38});
    robot.wheel(bar, 1);
    robot.wheel(window, 1);
    EXPECT_EQ(taken(), "C:2 S:2 C:3 S:3 C:2 S:2 C:3 S:3 C:4 S:4 ");
    const Shot before = robot.shot(form);
    bar.Value = 10;
    desktop.DoEvents();
    EXPECT_FALSE(robot.shot(form).pixels == before.pixels) << "the thumb stands elsewhere";
    auto* widget = static_cast<QScrollBar*>(bar.widget());
    const auto state = [&] { return QAccessible::queryAccessibleInterface(widget)->state(); };
    EXPECT_TRUE(!state().disabled && widget->focusPolicy() == Qt::StrongFocus);
    bar.Enabled = false;
    EXPECT_TRUE(state().disabled && widget->focusPolicy() == Qt::NoFocus);
    click(bar, At{8, 296});
    keys({38});
    robot.wheel(bar, -1);
    robot.wheel(window, -1);
    bar.Enabled = true;
    keys({38});
    EXPECT_EQ(taken(), "C:10 C:9 S:9 ") << "deaf while disabled, but it keeps the focus";

    bar.Value = 5;
    bar.Value = 5;
    bar.Max = 3;
    bar.Max = 10;
    bar.Min = 4;
    EXPECT_EQ(taken(), "C:5 C:3 C:4 ");
    for (const int value : {3, 11})
        EXPECT_EQ(failureOf([&] { bar.Value = value; }), "Invalid property value") << value;
    for (const bool isSeen : {true, false}) {
        window.Visible = isSeen;
        bar.page(isSeen ? 9 : -1);
        EXPECT_EQ(taken(), isSeen ? "C:10 S:10 " : "");
    }
}

TEST_F(InputsTest, AnAssistiveProgramTogglesWithoutOpening)
{
    note(window.MouseDown, "Down");
    note(window.DblClick, "Open");
    window.AccessibleSelected = false;
    show();
    QAccessible::queryAccessibleInterface(window.widget())
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(taken(), "Down:1:2:600:2250 ");
}

} // namespace trovarium
