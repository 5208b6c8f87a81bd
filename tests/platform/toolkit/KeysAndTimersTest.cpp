#include "platform/Stage.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/toolkit/ComboBox.h"
#include "platform/toolkit/FormSlot.h"
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
    explicit Keyboard(bool preview = false)
        : Stage({.Name = "Keyed", .Width = 6000, .Height = 3000, .KeyPreview = preview})
    {
        note(first.Click, "first");
        note(second.Click, "second");
        note(onSecond.Click, "label");
        note(thumb.MouseDown, "thumb");
        note(thumb.DblClick, "open");
        note(form.KeyDown, "key");
    }

    static QAccessibleInterface* seen(QObject* object) { return QAccessible::queryAccessibleInterface(object); }
    static std::string nameOf(const QAccessibleInterface* item) { return item->text(QAccessible::Name).toStdString(); }

    PictureButton first{&form, {.Name = "first", .Width = 900, .Height = 450}};
    PictureButton second{&form, {.Name = "second", .Left = 1500, .Width = 900, .Height = 450}};
    Label onSecond{&form, {.Name = "onSecond", .Left = 1650, .Width = 600, .Height = 300, .Caption = "Second"}};
    Image thumb{&form, {.Name = "thumb", .Left = 3000, .Width = 600, .Height = 300, .ToolTipText = "A thumbnail"}};
    Image plain{&form, {.Name = "plain", .Left = 4500, .Width = 600, .Height = 300}};
    PictureBox box{&form, {.Name = "box", .Top = 1500, .Width = 1500, .Height = 600}};
};

class PreviewedKeyboard : public Keyboard {
protected:
    PreviewedKeyboard()
        : Keyboard(true)
    {
    }
};

using ScreenReaders = Keyboard;

class Timers : public Stage {
protected:
    Timers()
    {
        timer.Tick.connect([this] {
            ++ticks;
            if (meanwhile)
                meanwhile();
        });
        clock.Tick.connect([this] { ++time; });
        clock.Enabled = true;
        other.load();
    }

    void passTime()
    {
        EXPECT_TRUE(robot.until([&, end = time + 5] { return time >= end; }));
    }

    Timer timer{&form, {.Name = "timer", .Interval = 3}};
    Form other{desktop, {.Name = "Other", .Width = 1500, .Height = 1500}};
    Timer clock{&other, {.Name = "clock", .Interval = 3}};
    std::function<void()> meanwhile;
    int ticks = 0;
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

TEST_F(Keyboard, AFormGetsTheKeysThatNothingElseTakes)
{
    note(form.KeyPress, "char");
    show();
    keys({65});
    robot.key(form, 46, CtrlKey);
    keys({113});
    first.SetFocus();
    keys({32});
    EXPECT_EQ(taken(), "key:65:0 char:97 key:17:2 key:46:2 key:113:0 first ");
    const struct {
        int symbol;
        quint32 place;
        std::string heard;
    } cases[] = {{0x424, 38, "key:65:0 "}, {Qt::Key_Q, 38, "key:81:0 "}, {Qt::Key_Ampersand, 10, "key:49:0 "},
        {Qt::Key_Comma, 58, "key:0:0 "}, {0x416, 47, "key:0:0 "}, {Qt::Key_MediaPlay, 172, "key:0:0 "}};
    for (const auto& c : cases) {
        QKeyEvent press(QEvent::KeyPress, c.symbol, Qt::NoModifier, c.place, 0, 0);
        QApplication::sendEvent(&form.view()->window(), &press);
        EXPECT_EQ(taken(), c.heard) << c.symbol;
    }
}

TEST_F(PreviewedKeyboard, TakesKeysFirst)
{
    note(box.KeyDown, "box");
    show();
    first.SetFocus();
    std::string expected;
    for (const int code : {13, 27, 32, 33, 34, 35, 36, 37, 38, 39, 40, 46, 48, 57, 65, 90, 93, 107, 109, 113, 122}) {
        robot.key(form, code);
        expected += "key:" + std::to_string(code) + ":0 ";
    }
    box.SetFocus();
    keys({39});
    EXPECT_EQ(taken(), expected + "key:39:0 ");
}

TEST_F(ScreenReaders, DrawnItemsHaveNameRoleAndAction)
{
    box.Visible = false;
    first.AccessibleName = "First thing";
    form.load();
    QAccessibleInterface* surface = seen(&form.view()->client());
    EXPECT_EQ(surface->parent()->role(), QAccessible::Window);
    show();
    std::string items;
    for (int i = 1; i <= 5; ++i) { // behind the box
        const QAccessibleInterface* child = surface->child(i);
        EXPECT_EQ(surface->indexOfChild(child), i);
        EXPECT_EQ(child->parent(), surface);
        items += nameOf(child) + ":" + std::to_string(child->role()) + " ";
    }
    static_assert(QAccessible::Button == 43 && QAccessible::StaticText == 41 && QAccessible::Graphic == 40);
    EXPECT_EQ(items, "First thing:43 Second:43 Second:41 A thumbnail:43 :40 ");
    surface->child(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(taken(), "first ");
    first.Visible = false;
    EXPECT_TRUE(surface->child(1)->state().invisible);
}

TEST_F(ScreenReaders, ABoxIsCalledAsItsTextAndIsAButtonOrAProgressBar)
{
    Label caption(&box, {.Name = "caption", .Width = 1500, .Height = 450, .Caption = "Ann & Ben"});
    Shape bar(&box, {.Name = "bar", .Height = 450});
    note(box.MouseDown, "box");
    show();
    QAccessibleInterface* item = seen(box.surface());
    EXPECT_EQ(item->role(), QAccessible::Button);
    EXPECT_EQ(nameOf(item), "Ann & Ben");
    caption.UseMnemonic = true;
    caption.Caption = "&All && more";
    EXPECT_EQ(nameOf(item), "All & more");
    item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(taken().substr(0, 6), "box:1:");
    EXPECT_EQ(item->valueInterface(), nullptr);
    for (const auto& [width, percent] : {std::pair{0.0F, 0}, {755.0F, 50}, {1530.0F, 100}}) {
        fillBar(box, bar, width);
        EXPECT_EQ(bar.Width(), width);
        EXPECT_EQ(item->role(), QAccessible::ProgressBar);
        EXPECT_EQ(item->valueInterface()->currentValue().toInt(), percent);
    }
    Form choices(desktop, {.Name = "Choices", .Width = 3000, .Height = 1500});
    ComboBox combo(&choices, {.Name = "combo", .Width = 1500, .Height = 450});
    combo.AccessibleName = "Group name";
    combo.Text = "Alps";
    choices.show();
    desktop.DoEvents();
    item = seen(&choices.view()->client())->child(0);
    EXPECT_EQ(nameOf(item) + ": " + item->text(QAccessible::Value).toStdString(), "Group name: Alps");
    EXPECT_EQ(item->indexOfChild(item->child(1)), 1) << "the text field";
}

TEST_F(Timers, TickOnlyWhileTheFormIsLoadedAndTheyAreOn)
{
    const auto ticksOn = [this] {
        ticks = 0;
        passTime();
        return ticks > 0;
    };
    timer.Enabled = true;
    EXPECT_FALSE(ticksOn()) << "not loaded";
    form.load();
    EXPECT_TRUE(ticksOn());
    timer.Interval = 0;
    EXPECT_FALSE(ticksOn()) << "no interval";
    timer.Interval = 3;
    EXPECT_TRUE(ticksOn());
    form.unload();
    EXPECT_FALSE(ticksOn()) << "unloaded";
    EXPECT_EQ(failureOf([&] { timer.Interval = -1; }), "Invalid property value");
}

TEST_F(Timers, ATickThatFallsDueInALongHandlerComesOnceAndNotInsideIt)
{
    int inside = 0;
    int deepest = 0;
    meanwhile = [&] {
        deepest = std::max(deepest, ++inside);
        passTime();
        timer.Enabled = ticks < 2;
        --inside;
    };
    timer.Enabled = true;
    form.load();
    ASSERT_TRUE(robot.until([&] { return ticks == 2; }));
    passTime();
    EXPECT_EQ(ticks, 2);
    EXPECT_EQ(deepest, 1);
}

// Due at 200 and 400 ms, but nothing runs before 270.
TEST_F(Timers, KeepTheirBeatAfterALateTick)
{
    Timer late{&form, {.Name = "late", .Interval = 460, .Enabled = true}};
    std::string order;
    late.Tick.connect([&] { order += "late "; });
    meanwhile = [&] { order += "beat "; };
    timer.Interval = 200;
    timer.Enabled = true;
    form.load();
    const auto start = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - start < std::chrono::milliseconds(270)) { }
    ASSERT_TRUE(robot.until([&] { return order.ends_with("late "); }));
    EXPECT_EQ(order, "beat beat late ");
    form.unload();
}

TEST_F(Timers, RunWhileAFormIsModalAndMayUnloadTheirOwn)
{
    struct Ticking : Form {
        using Form::Form;
        Timer own{this, {.Name = "own", .Interval = 3, .Enabled = true}};
    };
    FormSlot<Ticking> slot(desktop, [&] { return std::make_unique<Ticking>(desktop, FormPlan{.Name = "Ticking"}); });
    slot().own.Tick.connect([&] {
        slot().unload();
        other.hide();
    });
    slot().load();
    other.showModal();
    EXPECT_FALSE(slot.isLoaded());
}

} // namespace trovarium
