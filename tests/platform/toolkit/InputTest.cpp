#include "platform/Stage.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/toolkit/Image.h"
#include "platform/toolkit/Line.h"
#include "platform/toolkit/Menu.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/PictureButton.h"
#include "platform/toolkit/ProgressBar.h"
#include "platform/toolkit/Shape.h"
#include "support/ScriptedPrompts.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <gtest/gtest-spi.h>

namespace trovarium {

namespace {

// A pixel-scaled box of 200 by 160 pixels on a twip-scaled form, with two images that overlap in it and a
// shape and a line over both, and beside it two buttons.
class Input : public Stage {
protected:
    Input()
        : Stage({.Name = "Input", .Width = 6000, .Height = 3000})
    {
        for (Image* image : {&low, &high}) {
            note(image->MouseDown, image->Name() + ".down");
            note(image->MouseMove, image->Name() + ".move");
            note(image->MouseUp, image->Name() + ".up");
            note(image->Click, image->Name() + ".click");
        }
        note(low.DblClick, "low.double");
        note(box.MouseDown, "box.down");
        note(first.Click, "first");
        note(second.Click, "second");
        note(entry.Click, "entry");
        note(form.MouseDown, "form.down");
        note(form.KeyDown, "key");
        note(form.KeyPress, "char");
    }
    void SetUp() override { show(); }

    const At both{50, 50}; // of the lower one; the upper one covers it there
    PictureBox box{&form, {.Name = "box", .Left = 300, .Top = 300, .Width = 3000, .Height = 2400}, ScaleMode::Pixels};
    Image low{&box, {.Name = "low", .Left = 150, .Top = 150, .Width = 900, .Height = 900}};
    Image high{&box, {.Name = "high", .Left = 600, .Top = 600, .Width = 900, .Height = 900}};
    Shape bar{&box, {.Name = "bar", .Width = 2000, .Height = 2000}};
    Line line{&box, {.Name = "line", .Width = 2000, .Height = 2000}};
    PictureButton first{&form, {.Name = "first", .Left = 3600, .Width = 900, .Height = 450}};
    PictureButton second{&form, {.Name = "second", .Left = 4800, .Width = 900, .Height = 450}};
    Menu menu{&form, {.Name = "menu", .Caption = "Pop", .Visible = false}};
    Menu entry{&menu, {.Name = "entry", .Caption = "Entry"}};
};

} // namespace

TEST_F(Input, APressGoesToTheTopmostVisibleItemInItsOwnScaleAndADisabledOneSwallowsIt)
{
    robot.click(low, LeftButton, CtrlKey | ShiftKey, At{10, 20});
    robot.click(low, RightButton, AltKey, both);
    EXPECT_EQ(taken(), "low.down:1:3:150:300 low.up:1:3:150:300 low.click high.down:2:4:300:300 high.up:2:4:300:300 ");
    low.ZOrder();
    robot.click(low, RightButton, NoKeys, both);
    low.Visible = false;
    high.Visible = false;
    robot.click(low, RightButton, NoKeys, both);
    robot.click(form, At{2, 3}, RightButton);
    EXPECT_EQ(taken(), "low.down:2:0:750:750 low.up:2:0:750:750 box.down:2:0:60:60 form.down:2:0:30:45 ");
    high.Visible = true;
    high.Enabled = false;
    robot.click(high);
    high.Enabled = true;
    box.Enabled = false;
    robot.click(high);
    robot.click(box, LeftButton, NoKeys, At{190, 150});
    EXPECT_EQ(taken(), "");
}

TEST_F(Input, APressedItemKeepsTheMouseEvenOutsideTheWindowAndHidden)
{
    robot.press(low, LeftButton, NoKeys, At{20, 20});
    robot.moveTo(low, At{-500, 20});
    low.Visible = false;
    robot.moveTo(high, At{50, 50});
    robot.release();
    EXPECT_EQ(taken(), "low.down:1:0:300:300 low.move:1:0:-7500:300 low.move:1:0:1200:1200 low.up:1:0:1200:1200 ")
        << "and no click, since it was let go elsewhere";
}

TEST_F(Input, TheSecondPressOfADoubleClickIsADoubleClickWhereItIsKnown)
{
    robot.doubleClick(high, NoKeys, both);
    EXPECT_EQ(taken(),
        "high.down:1:0:750:750 high.up:1:0:750:750 high.click high.down:1:0:750:750 high.up:1:0:750:750 high.click ");
    note(high.DblClick, "high.double");
    robot.doubleClick(low, NoKeys, At{10, 10});
    EXPECT_EQ(taken(), "low.down:1:0:150:150 low.up:1:0:150:150 low.click low.double low.up:1:0:150:150 ");
    low.ZOrder();
    when["low.click"] = [this] { low.Visible = false; }; // as a page that turns
    robot.doubleClick(low, NoKeys, both);
    EXPECT_EQ(taken(),
        "low.down:1:0:750:750 low.up:1:0:750:750 low.click high.down:1:0:300:300 high.up:1:0:300:300 high.click ")
        << "two quick presses on two items";
}

TEST_F(Input, APressThatOpensAMenuShowsAModalFormOrAsksGetsNoRelease)
{
    ScriptedPrompts prompts(desktop);
    Form other(desktop, {.Name = "Other", .Width = 1500, .Height = 1500});
    prompts.expectNotice("asked");
    robot.whenMenuOpens([&] { robot.choose(entry); });
    robot.whenShown("Other", [&] { other.hide(); });
    const std::function<void()> acts[] = {[&] { form.PopupMenu(menu); }, [&] { other.showModal(); },
        [&] { desktop.prompts().messageBox("asked", Buttons::Ok, {}); }, {}};
    for (const auto& act : acts) {
        when["low.down"] = act;
        robot.click(low, RightButton, NoKeys, At{10, 10});
    }
    EXPECT_EQ(taken(),
        "low.down:2:0:150:150 entry low.down:2:0:150:150 low.down:2:0:150:150 low.down:2:0:150:150 low.up:2:0:150:150 ")
        << "the next press is whole again";
    EXPECT_NONFATAL_FAILURE(desktop.prompts().messageBox("unforeseen", Buttons::Ok, {}), "was not expected");
}

TEST_F(Input, TabWalksOverWhatCanBeClickedAndKeysActOnIt)
{
    keys({32}); // the first one has the focus from the start
    robot.tab(form);
    keys({13});
    robot.tab(form);
    robot.tab(form);
    EXPECT_EQ(taken(), "first second ");
    keys({32, 13, 93}); // the menu key presses with the right button
    const std::string click = "low.down:1:0:450:450 low.up:1:0:450:450 low.click ";
    EXPECT_EQ(taken(), click + click + "low.double low.up:1:0:450:450 low.down:2:0:450:450 low.up:2:0:450:450 ");
    robot.tab(form, true);
    keys({32});
    first.SetFocus();
    first.Enabled = false;
    keys({32});
    EXPECT_EQ(taken(), "key:16:1 box.down:1:0:100:80 key:32:0 char:32 ") << "a disabled button does nothing";
}

TEST_F(Input, ScreenReadersPressWhatIsDrawnAndReadABoxAsAProgressBar)
{
    const QAccessibleInterface* surface = QAccessible::queryAccessibleInterface(&form.view()->client());
    first.AccessibleName = "First thing";
    EXPECT_EQ(surface->child(1)->text(QAccessible::Name), "First thing");
    surface->child(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(taken(), "first ");
    for (const auto& [width, percent] : {std::pair{0.0F, 0}, {100.0F, 50}, {300.0F, 100}}) {
        fillBar(box, bar, width);
        EXPECT_EQ(surface->child(0)->valueInterface()->currentValue().toInt(), percent);
    }
    EXPECT_EQ(surface->child(0)->role(), QAccessible::ProgressBar);
}

} // namespace trovarium
