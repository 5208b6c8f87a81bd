#include "platform/Stage.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/toolkit/Image.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/PictureButton.h"
#include "platform/toolkit/ProgressBar.h"
#include "platform/toolkit/Shape.h"
#include "platform/toolkit/Timer.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>

namespace trovarium {

namespace {

class Keyboard : public Stage {
protected:
    Keyboard()
        : Stage({.Name = "Keyed", .Width = 6000, .Height = 3000})
    {
        note(first.Click, "first");
        note(second.Click, "second");
        note(onSecond.Click, "label");
        note(thumb.MouseDown, "thumb");
        note(thumb.DblClick, "open");
        note(form.KeyDown, "key");
    }

    PictureButton first{&form, {.Name = "first", .Width = 900, .Height = 450}};
    PictureButton second{&form, {.Name = "second", .Left = 1500, .Width = 900, .Height = 450}};
    Label onSecond{&form, {.Name = "onSecond", .Left = 1650, .Width = 600, .Height = 300, .Caption = "Second"}};
    Image thumb{&form, {.Name = "thumb", .Left = 3000, .Width = 600, .Height = 300, .ToolTipText = "A thumbnail"}};
    PictureBox box{&form, {.Name = "box", .Top = 1500, .Width = 1500, .Height = 600}};
};

class Timers : public Stage {
protected:
    Timers()
    {
        note(timer.Tick, "tick");
        clock.Tick.connect([this] { ++time; });
        other.load();
    }

    void passTime()
    {
        EXPECT_TRUE(robot.until([&, end = time + 5] { return time >= end; }));
    }

    Timer timer{&form, {.Name = "timer", .Interval = 3, .Enabled = true}};
    Form other{desktop, {.Name = "Other", .Width = 1500, .Height = 1500}};
    Timer clock{&other, {.Name = "clock", .Interval = 3, .Enabled = true}};
    int time = 0;
};

} // namespace

TEST_F(Keyboard, TabWalksOverWhatCanBeClickedAndKeysActOnIt)
{
    show();
    keys({32}); // the first one has the focus from the start
    robot.tab(form);
    keys({13});
    robot.tab(form);
    keys({32, 13, 93}); // the menu key presses with the right button
    robot.tab(form, true);
    keys({32});
    EXPECT_EQ(taken(), "first second thumb:1:0:300:150 thumb:1:0:300:150 open thumb:2:0:300:150 key:16:1 second ");
    second.Enabled = false;
    keys({32});
    EXPECT_EQ(taken(), "key:32:0 ") << "a disabled button does nothing";
}

TEST_F(Keyboard, AFormGetsTheKeysThatNothingElseTakesByTheirPlaceWhereTheSymbolHasNoCode)
{
    note(form.KeyPress, "char");
    show();
    keys({65});
    robot.key(form, 46, CtrlKey);
    EXPECT_EQ(taken(), "key:65:0 char:97 key:17:2 key:46:2 ");
    const std::tuple<int, quint32, std::string> cases[] = {{0x424, 38, "key:65:0 "}, {Qt::Key_Q, 38, "key:81:0 "},
        {Qt::Key_Ampersand, 10, "key:49:0 "}, {Qt::Key_Comma, 58, "key:0:0 "}, {0x416, 47, "key:0:0 "},
        {Qt::Key_MediaPlay, 172, "key:0:0 "}};
    for (const auto& [symbol, place, heard] : cases) {
        QKeyEvent event(QEvent::KeyPress, symbol, Qt::NoModifier, place, 0, 0);
        QApplication::sendEvent(&form.view()->window(), &event);
        EXPECT_EQ(taken(), heard) << symbol;
    }
}

TEST_F(Keyboard, AFormWithPreviewTakesKeysFirst)
{
    Form keen(desktop, {.Name = "Keen", .Width = 3000, .Height = 1500, .KeyPreview = true});
    PictureBox inner(&keen, {.Name = "inner", .Width = 1500, .Height = 600});
    note(keen.KeyDown, "key");
    note(inner.KeyDown, "inner");
    keen.show();
    inner.SetFocus();
    std::string expected;
    for (const int code : {13, 27, 32, 33, 34, 35, 36, 37, 38, 39, 40, 46, 48, 57, 65, 90, 93, 107, 109, 113, 122}) {
        robot.key(keen, code);
        expected += "key:" + std::to_string(code) + ":0 ";
    }
    EXPECT_EQ(taken(), expected);
}

TEST_F(Keyboard, ScreenReadersKnowWhatIsDrawnByNameRoleActionAndValue)
{
    Shape bar(&box, {.Name = "bar", .Height = 450});
    first.AccessibleName = "First thing";
    show();
    QAccessibleInterface* surface = QAccessible::queryAccessibleInterface(&form.view()->client());
    static_assert(QAccessible::Button == 43 && QAccessible::StaticText == 41 && QAccessible::ProgressBar == 48);
    std::string items;
    for (int i = 1; i <= 4; ++i) // behind the box
        items += surface->child(i)->text(QAccessible::Name).toStdString() + ":"
            + std::to_string(surface->child(i)->role()) + " ";
    EXPECT_EQ(items, "First thing:43 Second:43 Second:41 A thumbnail:43 ");
    surface->child(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(taken(), "first ");
    first.Visible = false;
    EXPECT_TRUE(surface->child(1)->state().invisible);
    EXPECT_EQ(surface->child(0)->valueInterface(), nullptr);
    for (const auto& [width, percent] : {std::pair{0.0F, 0}, {755.0F, 50}, {1530.0F, 100}}) {
        fillBar(box, bar, width);
        EXPECT_EQ(bar.Width(), width);
        EXPECT_EQ(surface->child(0)->valueInterface()->currentValue().toInt(), percent);
    }
}

TEST_F(Timers, TickOnlyWhileTheFormIsLoadedAndTheyAreOn)
{
    const auto ticks = [this] {
        taken();
        passTime();
        return !taken().empty();
    };
    EXPECT_FALSE(ticks()) << "not loaded";
    form.load();
    EXPECT_TRUE(ticks());
    timer.Interval = 0;
    EXPECT_FALSE(ticks()) << "no interval";
    timer.Interval = 3;
    EXPECT_TRUE(ticks());
    form.unload();
    EXPECT_FALSE(ticks()) << "unloaded";
    EXPECT_EQ(failureOf([&] { timer.Interval = -1; }), "Invalid property value");
}

TEST_F(Timers, ATickThatFallsDueInALongHandlerComesOnceAndNotInsideIt)
{
    when["tick"] = [this] {
        diary += "( ";
        passTime();
        timer.Enabled = diary == "tick ( "; // after the second no more
        diary += ") ";
    };
    form.load();
    ASSERT_TRUE(robot.until([&] { return !timer.Enabled(); }));
    passTime();
    EXPECT_EQ(taken(), "tick ( ) tick ( ) ");
}

// Due at 200 and 400 ms, but nothing runs before 270.
TEST_F(Timers, KeepTheirBeatAfterALateTick)
{
    Timer late{&form, {.Name = "late", .Interval = 460, .Enabled = true}};
    note(late.Tick, "late");
    timer.Interval = 200;
    form.load();
    const auto start = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - start < std::chrono::milliseconds(270)) { }
    ASSERT_TRUE(robot.until([&] { return diary.ends_with("late "); }));
    EXPECT_EQ(taken(), "tick tick late ");
    form.unload();
}

TEST_F(Timers, RunWhileAFormIsModalAndMayUnloadTheirOwn)
{
    when["tick"] = [this] {
        form.unload();
        other.hide();
    };
    form.load();
    other.showModal();
    EXPECT_EQ(taken(), "tick ");
    EXPECT_FALSE(form.isLoaded());
}

} // namespace trovarium
