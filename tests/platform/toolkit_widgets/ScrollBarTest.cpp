#include "platform/toolkit/ScrollBar.h"

#include "platform/Stage.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/PictureBox.h"

#include <QPointer>
#include <QWidget>

namespace trovarium {

namespace {

class ScrollBarTest : public Stage {
protected:
    ScrollBarTest()
    {
        note(bar.Change, "C", [this] { return std::to_string(bar.Value()); });
        note(bar.Scroll, "S", [this] { return std::to_string(bar.Value()); });
        bar.Min = 1;
        bar.Max = 10;
        taken();
    }

    PictureBox window{&form, {.Name = "window", .Width = 3000, .Height = 4500}};
    PictureBox inner{&window, {.Name = "inner", .Width = 1500, .Height = 1500}};
    VScroll bar{&window, {.Name = "bar", .Left = 2700, .Width = 255, .Height = 4500}};
    const At upArrow{8, 4};
    const At downArrow{8, 296};
};

TEST_F(ScrollBarTest, ChangeRunsInsideTheStatementForEveryRealChange)
{
    bar.Value = 5;
    bar.Value = 5;
    EXPECT_EQ(taken(), "C:5 ");
    bar.Max = 3;
    EXPECT_EQ(taken(), "C:3 ");
    bar.Max = 10;
    bar.Min = 4;
    EXPECT_EQ(taken(), "C:4 ");
    for (const int value : {3, 11, -1})
        EXPECT_EQ(failureOf([&] { bar.Value = value; }), "Invalid property value") << value;
    EXPECT_EQ(failureOf([&] { bar.SmallChange = 0; }), "Invalid property value");
    EXPECT_EQ(failureOf([&] { bar.LargeChange = 0; }), "Invalid property value");
    bar.Max = 0; // which counts as Min
    bar.Value = 4;
    EXPECT_EQ(failureOf([&] { bar.Value = 3; }), "Invalid property value");
    EXPECT_EQ(taken(), "");
}

TEST_F(ScrollBarTest, PagesLikeTheTroughAndOnlyWhereItIsShownAndEnabled)
{
    bar.LargeChange = 4;
    for (const int steps : {1, 5, 1, -1})
        bar.page(steps);
    EXPECT_EQ(taken(), "C:5 S:5 C:10 S:10 C:6 S:6 ");
    bar.Enabled = false;
    bar.page(1);
    bar.Enabled = true;
    window.Visible = false;
    bar.page(1);
    EXPECT_EQ(taken(), "");
}

TEST_F(ScrollBarTest, ArrowTroughKeysAndWheelRaiseScrollBehindChange)
{
    bar.LargeChange = 2;
    show();
    robot.click(bar, LeftButton, NoKeys, downArrow);
    robot.click(bar, LeftButton, NoKeys, At{8, 270});
    EXPECT_EQ(taken(), "C:2 S:2 C:4 S:4 ");
    bar.SetFocus();
    keys({38, 33, 34});
    EXPECT_EQ(taken(), "C:3 S:3 C:1 S:1 C:3 S:3 ");
    robot.wheel(bar, 1);
    robot.wheel(window, 1);
    robot.wheel(inner, -1);
    EXPECT_EQ(taken(), "C:5 S:5 C:7 S:7 C:5 S:5 ");
    const Shot before = robot.shot(form);
    bar.Value = 10;
    desktop.DoEvents();
    EXPECT_FALSE(robot.shot(form) == before) << "the thumb stands elsewhere";
    robot.click(bar, LeftButton, NoKeys, upArrow);
    EXPECT_EQ(taken(), "C:10 C:9 S:9 ");
    bar.Enabled = false;
    robot.click(bar, LeftButton, NoKeys, downArrow);
    keys({38});
    robot.wheel(bar, 1);
    robot.wheel(window, 1);
    EXPECT_EQ(taken(), "");
    bar.Enabled = true;
    keys({38});
    EXPECT_EQ(taken(), "C:8 S:8 ") << "and keeps the focus";
}

TEST_F(ScrollBarTest, ADragRaisesScrollAndOneChangeOnRelease)
{
    bar.Max = 101;
    show();
    robot.press(bar, LeftButton, NoKeys, At{8, 22});
    robot.moveTo(bar, At{8, 100});
    robot.moveTo(bar, At{8, 150});
    const std::string scrolled = taken();
    EXPECT_EQ(scrolled.find('C'), std::string::npos) << scrolled;
    EXPECT_EQ(std::count(scrolled.begin(), scrolled.end(), 'S'), 2) << scrolled;
    const int value = bar.Value();
    EXPECT_GT(value, 30);
    robot.release();
    EXPECT_EQ(taken(), "C:" + std::to_string(value) + " ");
    bar.Value = 1;
    robot.press(bar, LeftButton, NoKeys, At{8, 22});
    robot.moveTo(bar, At{8, 150});
    robot.moveTo(bar, At{8, 22});
    taken();
    robot.release();
    EXPECT_EQ(taken(), "") << "back at its start";
    EXPECT_EQ(bar.Value(), 1);
}

TEST_F(ScrollBarTest, AHandlerThatClosesTheBarForAMomentDoesNotBreakOffAHeldArrow)
{
    when["C"] = [&] {
        bar.Enabled = false;
        desktop.DoEvents();
        bar.Enabled = true;
    };
    show();
    robot.press(bar, LeftButton, NoKeys, downArrow);
    EXPECT_TRUE(robot.until([&] { return bar.Value() == 5; }));
    robot.release();
    EXPECT_EQ(taken().substr(0, 32), "C:2 S:2 C:3 S:3 C:4 S:4 C:5 S:5 ") << "one step at a time";
}

TEST_F(ScrollBarTest, AWindowClosedWhileItsBarIsPressedGoesWhenThePressHasReturned)
{
    show();
    const QPointer<QWidget> widget(bar.view()->widget());
    when["C"] = [&] {
        robot.atNextTurn([&] { form.unload(); });
        EXPECT_TRUE(robot.until([&] { return !form.isLoaded(); }));
        desktop.DoEvents();
        EXPECT_TRUE(widget);
    };
    robot.click(bar, LeftButton, NoKeys, downArrow);
    desktop.DoEvents();
    EXPECT_FALSE(widget);
}

} // namespace

} // namespace trovarium
