#include "platform/qt/toolkit/FormView.h"
#include "platform/toolkit/ComboBox.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/FormSlot.h"
#include "platform/toolkit/Image.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/PictureButton.h"
#include "platform/toolkit/ProgressBar.h"
#include "platform/toolkit/Shape.h"
#include "platform/toolkit/TextBox.h"
#include "platform/toolkit/Timer.h"
#include "support/FailureOf.h"
#include "support/Robot.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace trovarium {

namespace {

using Diary = std::vector<std::string>;

class Keyed : public Form {
public:
    explicit Keyed(Desktop& desktop, bool preview = false)
        : Form(desktop, {.Name = "Keyed", .Width = 6000, .Height = 3000, .KeyPreview = preview})
    {
        first.Click.connect([this] { diary.push_back("first"); });
        second.Click.connect([this] { diary.push_back("second"); });
        onSecond.Click.connect([this] { diary.push_back("label"); });
        thumb.MouseDown.connect([this](int button, int, float x, float y) {
            diary.push_back("thumb down " + std::to_string(button) + " " + std::to_string(static_cast<int>(x)) + ","
                + std::to_string(static_cast<int>(y)));
        });
        thumb.DblClick.connect([this] { diary.push_back("thumb open"); });
    }

    PictureButton first{this, {.Name = "first", .Width = 900, .Height = 450}};
    PictureButton second{this, {.Name = "second", .Left = 1500, .Width = 900, .Height = 450}};
    Label onSecond{this, {.Name = "onSecond", .Left = 1650, .Width = 600, .Height = 300, .Caption = "Second"}};
    Image thumb{this, {.Name = "thumb", .Left = 3000, .Width = 600, .Height = 300, .ToolTipText = "A thumbnail"}};
    Image plain{this, {.Name = "plain", .Left = 4500, .Width = 600, .Height = 300}};
    Diary diary;
};

class Ticking : public Form {
public:
    explicit Ticking(Desktop& desktop)
        : Form(desktop, {.Name = "Ticking", .Width = 1500, .Height = 1500})
    {
        on(timer.Tick, this, &Ticking::timer_Timer);
    }

    Timer timer{this, {.Name = "timer", .Interval = 3}};
    int ticks = 0;
    std::function<void()> meanwhile;

private:
    void timer_Timer()
    {
        ++ticks;
        if (meanwhile)
            meanwhile();
    }
};

} // namespace

TEST(Keyboard, TabWalksOverWhatCanBeClickedAndKeysActOnIt)
{
    Keyed form(testDesktop());
    form.show();
    Robot robot(testDesktop());
    robot.key(form, 32); // the first one has the focus from the start
    robot.tab(form);
    robot.key(form, 13);
    robot.tab(form);
    robot.key(form, 32);
    robot.key(form, 13);
    robot.key(form, 93); // the menu key presses with the right button
    robot.tab(form, true);
    robot.key(form, 32);
    EXPECT_EQ(form.diary,
        (Diary{"first", "second", "thumb down 1 300,150", "thumb down 1 300,150", "thumb open", "thumb down 2 300,150",
            "second"}));
    form.second.Enabled = false;
    robot.key(form, 32);
    EXPECT_EQ(form.diary.size(), 7U) << "a disabled button does nothing";
}

TEST(Keyboard, AFormGetsTheKeysThatNothingElseTakes)
{
    Keyed form(testDesktop());
    form.KeyDown.connect([&](int code, int shift) {
        form.diary.push_back("key " + std::to_string(code) + " " + std::to_string(shift));
    });
    form.KeyPress.connect([&](int ascii) { form.diary.push_back("char " + std::to_string(ascii)); });
    form.show();
    Robot robot(testDesktop());
    robot.key(form, 65);
    robot.key(form, 46, CtrlKey);
    robot.key(form, 113);
    form.first.SetFocus();
    robot.key(form, 32);
    EXPECT_EQ(form.diary, (Diary{"key 65 0", "char 97", "key 17 2", "key 46 2", "key 113 0", "first"}));
    const struct {
        int symbol;
        quint32 place;
        const char* heard;
    } cases[] = {{0x424, 38, "key 65 0"}, {Qt::Key_Q, 38, "key 81 0"}, {Qt::Key_Ampersand, 10, "key 49 0"},
        {Qt::Key_Comma, 58, "key 0 0"}, {0x416, 47, "key 0 0"}, {Qt::Key_MediaPlay, 172, "key 0 0"}};
    for (const auto& c : cases) {
        QKeyEvent press(QEvent::KeyPress, c.symbol, Qt::NoModifier, c.place, 0, 0);
        QApplication::sendEvent(&form.view()->window(), &press);
        EXPECT_EQ(form.diary.back(), c.heard) << c.symbol;
        form.diary = {""};
    }
}

TEST(Keyboard, AFormThatPreviewsKeysTakesThemFirst)
{
    Keyed form(testDesktop(), true);
    form.KeyDown.connect([&](int code, int) { form.diary.push_back("key " + std::to_string(code)); });
    PictureBox box(&form, {.Name = "box", .Top = 1500, .Width = 600, .Height = 600});
    box.KeyDown.connect([&](int, int) { form.diary.push_back("box"); });
    form.show();
    Robot robot(testDesktop());
    form.first.SetFocus();
    Diary expected;
    for (const int code : {13, 27, 32, 33, 34, 35, 36, 37, 38, 39, 40, 46, 48, 57, 65, 90, 93, 107, 109, 113, 122}) {
        robot.key(form, code);
        expected.push_back("key " + std::to_string(code));
    }
    box.SetFocus();
    robot.key(form, 39);
    expected.push_back("key 39");
    EXPECT_EQ(form.diary, expected);
}

TEST(ScreenReaders, DrawnItemsHaveNameRoleAndAction)
{
    Keyed form(testDesktop());
    form.first.AccessibleName = "First thing";
    form.load();
    QAccessibleInterface* surface = QAccessible::queryAccessibleInterface(&form.view()->client());
    ASSERT_NE(surface, nullptr);
    EXPECT_EQ(surface->parent()->role(), QAccessible::Window);
    form.show();
    Diary seen;
    QAccessibleInterface* firstButton = nullptr;
    for (int i = 0; i < surface->childCount(); ++i) {
        QAccessibleInterface* child = surface->child(i);
        EXPECT_EQ(surface->indexOfChild(child), i);
        EXPECT_EQ(child->parent(), surface);
        seen.push_back(child->text(QAccessible::Name).toStdString() + " " + std::to_string(child->role()));
        if (i == 0)
            firstButton = child;
    }
    const std::string button = " " + std::to_string(QAccessible::Button);
    EXPECT_EQ(seen,
        (Diary{"First thing" + button, "Second" + button, "Second " + std::to_string(QAccessible::StaticText),
            "A thumbnail" + button, " " + std::to_string(QAccessible::Graphic)}));
    firstButton->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(form.diary, (Diary{"first"}));
    form.first.Visible = false;
    EXPECT_TRUE(firstButton->state().invisible);
}

TEST(ScreenReaders, ABoxThatCanBeClickedIsAButtonCalledAsItsText)
{
    Form form(testDesktop(), {.Name = "Rows", .Width = 3000, .Height = 1500});
    PictureBox row(&form, {.Name = "row", .Width = 1500, .Height = 450});
    Label caption(&row, {.Name = "caption", .Width = 1500, .Height = 450, .Caption = "Ann & Ben"});
    int pressed = 0;
    row.MouseDown.connect([&](int button, int, float, float) { pressed = button; });
    form.show();
    QAccessibleInterface* box = QAccessible::queryAccessibleInterface(row.surface());
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->role(), QAccessible::Button);
    EXPECT_EQ(box->text(QAccessible::Name).toStdString(), "Ann & Ben");
    caption.UseMnemonic = true;
    caption.Caption = "&All && more";
    EXPECT_EQ(box->text(QAccessible::Name).toStdString(), "All & more");
    box->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(pressed, LeftButton);
}

TEST(ScreenReaders, ABoxWithAValueIsAProgressBar)
{
    Form form(testDesktop(), {.Name = "Run", .Width = 3000, .Height = 1500});
    PictureBox box(&form, {.Name = "box", .Width = 1500, .Height = 450});
    Shape bar(&box, {.Name = "bar", .Height = 450});
    form.show();
    QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(box.surface());
    EXPECT_EQ(seen->valueInterface(), nullptr);
    for (const auto& [width, percent] : {std::pair{0.0F, 0}, {755.0F, 50}, {1530.0F, 100}}) {
        fillBar(box, bar, width);
        EXPECT_EQ(bar.Width(), width);
        EXPECT_EQ(seen->role(), QAccessible::ProgressBar);
        EXPECT_EQ(seen->valueInterface()->currentValue().toInt(), percent);
    }
}

TEST(ScreenReaders, ABoxToChooseFromIsCalledByItsName)
{
    Form form(testDesktop(), {.Name = "Boxes", .Width = 3000, .Height = 1500});
    ComboBox box(&form, {.Name = "box", .Width = 1500, .Height = 450});
    box.AccessibleName = "Group name";
    box.Text = "Alps";
    form.show();
    testDesktop().DoEvents();
    QAccessibleInterface* shown = QAccessible::queryAccessibleInterface(&form.view()->client())->child(0);
    EXPECT_EQ(shown->text(QAccessible::Name).toStdString(), "Group name");
    EXPECT_EQ(shown->text(QAccessible::Value).toStdString(), "Alps");
    EXPECT_EQ(shown->indexOfChild(shown->child(1)), 1) << "the text field";
}

TEST(Timers, TickOnlyWhileTheFormIsLoadedAndTheyAreOn)
{
    Desktop& desktop = testDesktop();
    Robot robot(desktop);
    Ticking form(desktop);
    form.timer.Enabled = true;
    Ticking other(desktop); // a clock to wait by
    other.timer.Enabled = true;
    other.load();
    const auto threeMore = [&] { return robot.until([&, end = other.ticks + 3] { return other.ticks >= end; }); };
    ASSERT_TRUE(threeMore());
    EXPECT_EQ(form.ticks, 0) << "not loaded";
    form.load();
    ASSERT_TRUE(robot.until([&] { return form.ticks >= 2; }));
    form.timer.Interval = 0;
    form.ticks = 0;
    ASSERT_TRUE(threeMore());
    EXPECT_EQ(form.ticks, 0) << "no interval";
    form.timer.Interval = 3;
    ASSERT_TRUE(robot.until([&] { return form.ticks >= 2; }));
    form.unload();
    form.ticks = 0;
    ASSERT_TRUE(threeMore());
    EXPECT_EQ(form.ticks, 0) << "unloaded";
    EXPECT_EQ(failureOf([&] { form.timer.Interval = -1; }), "Invalid property value");
}

TEST(Timers, ATickThatFallsDueInALongHandlerComesOnceAndNotInsideIt)
{
    Desktop& desktop = testDesktop();
    Robot robot(desktop);
    Ticking form(desktop);
    Ticking other(desktop);
    other.timer.Enabled = true;
    other.load();
    int inside = 0;
    int deepest = 0;
    form.meanwhile = [&] {
        deepest = std::max(deepest, ++inside);
        robot.until([&, end = other.ticks + 5] { return other.ticks >= end; });
        form.timer.Enabled = form.ticks < 2;
        --inside;
    };
    form.timer.Enabled = true;
    form.load();
    ASSERT_TRUE(robot.until([&] { return form.ticks == 2; }));
    ASSERT_TRUE(robot.until([&, end = other.ticks + 5] { return other.ticks >= end; }));
    EXPECT_EQ(form.ticks, 2);
    EXPECT_EQ(deepest, 1);
}

TEST(Timers, RunWhileAFormIsModalAndMayUnloadTheirOwn)
{
    Desktop& desktop = testDesktop();
    Robot robot(desktop);
    FormSlot<Ticking> slot(desktop, [&] { return std::make_unique<Ticking>(desktop); });
    Form modal(desktop, {.Name = "Modal", .Width = 1500, .Height = 1500});
    bool ticked = false;
    slot().meanwhile = [&] {
        ticked = true;
        slot().unload();
        modal.hide();
    };
    slot().timer.Enabled = true;
    slot().load();
    modal.showModal();
    EXPECT_TRUE(ticked);
    EXPECT_FALSE(slot.isLoaded());
}

} // namespace trovarium
