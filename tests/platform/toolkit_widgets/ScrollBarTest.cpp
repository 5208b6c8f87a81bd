#include "platform/toolkit/ScrollBar.h"

#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/PictureBox.h"
#include "support/FailureOf.h"
#include "support/Robot.h"

#include <QPointer>
#include <QWidget>

#include <gtest/gtest.h>

#include <functional>

namespace trovarium {

namespace {

class ScrollForm : public Form {
public:
    ScrollForm()
        : Form(testDesktop(), {.Name = "ScrollForm", .Width = 4500, .Height = 4500})
    {
        VScroll1.Change.connect([this] {
            log += "C" + std::to_string(VScroll1.Value()) + " ";
            if (onChange)
                onChange();
        });
        VScroll1.Scroll.connect([this] { log += "S" + std::to_string(VScroll1.Value()) + " "; });
    }

    std::string taken() { return std::exchange(log, {}); }

    PictureBox pctWindow{this, {.Name = "pctWindow", .Width = 3000, .Height = 4500}};
    VScroll VScroll1{&pctWindow, {.Name = "VScroll1", .Left = 2700, .Width = 255, .Height = 4500}};
    std::function<void()> onChange;
    std::string log;
};

class ScrollBarTest : public testing::Test {
protected:
    ScrollBarTest()
    {
        bar.Min = 1;
        bar.Max = 10;
        bar.Value = 1;
        form.taken();
    }
    ~ScrollBarTest() override { form.unload(); }

    ScrollForm form;
    VScroll& bar = form.VScroll1;
    Robot robot{testDesktop()};
    const At upArrow{8, 4};
    const At downArrow{8, 296};
};

TEST_F(ScrollBarTest, ChangeRunsInsideTheStatementForEveryRealChange)
{
    bar.Value = 5;
    EXPECT_EQ(form.taken(), "C5 ");
    bar.Value = 5;
    EXPECT_EQ(form.taken(), "");
    bar.Max = 3;
    EXPECT_EQ(form.taken(), "C3 ");
    bar.Max = 10;
    EXPECT_EQ(form.taken(), "");
    bar.Min = 4;
    EXPECT_EQ(form.taken(), "C4 ");
}

TEST_F(ScrollBarTest, ValuesOutsideAreRefusedAndAMaxBelowMinCountsAsMin)
{
    for (const int value : {0, 11, -1})
        EXPECT_EQ(failureOf([&] { bar.Value = value; }), "Invalid property value") << value;
    EXPECT_EQ(failureOf([&] { bar.SmallChange = 0; }), "Invalid property value");
    EXPECT_EQ(failureOf([&] { bar.LargeChange = 0; }), "Invalid property value");
    bar.Max = 0;
    bar.Value = 1;
    EXPECT_EQ(failureOf([&] { bar.Value = 0; }), "Invalid property value");
    EXPECT_EQ(form.taken(), "");
}

TEST_F(ScrollBarTest, PagesLikeTheTroughAndOnlyWhereItIsShownAndEnabled)
{
    bar.LargeChange = 4;
    bar.page(1);
    bar.page(5);
    bar.page(1);
    bar.page(-1);
    EXPECT_EQ(form.taken(), "C5 S5 C10 S10 C6 S6 ");
    bar.Enabled = false;
    bar.page(1);
    bar.Enabled = true;
    form.pctWindow.Visible = false;
    bar.page(1);
    EXPECT_EQ(form.taken(), "");
}

TEST_F(ScrollBarTest, ArrowTroughKeysAndWheelRaiseScrollBehindChange)
{
    form.show();
    robot.click(bar, LeftButton, NoKeys, downArrow);
    EXPECT_EQ(form.taken(), "C2 S2 ");
    robot.click(bar, LeftButton, NoKeys, At{8, 270});
    EXPECT_EQ(form.taken(), "C3 S3 ");
    bar.SetFocus();
    robot.key(form, 38);
    EXPECT_EQ(form.taken(), "C2 S2 ");
    robot.wheel(bar, 1);
    robot.wheel(form.pctWindow, 2);
    EXPECT_EQ(form.taken(), "C3 S3 C5 S5 ");
    robot.key(form, 33);
    EXPECT_EQ(form.taken(), "C4 S4 ");
}

TEST_F(ScrollBarTest, ADragRaisesScrollAndOneChangeOnRelease)
{
    bar.Max = 101;
    form.show();
    robot.press(bar, LeftButton, NoKeys, At{8, 22});
    robot.moveTo(bar, At{8, 100});
    robot.moveTo(bar, At{8, 150});
    const std::string scrolled = form.taken();
    EXPECT_EQ(scrolled.find('C'), std::string::npos) << scrolled;
    EXPECT_EQ(std::count(scrolled.begin(), scrolled.end(), 'S'), 2) << scrolled;
    const int value = bar.Value();
    EXPECT_GT(value, 30);
    robot.release();
    EXPECT_EQ(form.taken(), "C" + std::to_string(value) + " ");

    bar.Value = 1;
    robot.press(bar, LeftButton, NoKeys, At{8, 22});
    robot.moveTo(bar, At{8, 150});
    robot.moveTo(bar, At{8, 22});
    form.taken();
    robot.release();
    EXPECT_EQ(form.taken(), "") << "back at its start";
    EXPECT_EQ(bar.Value(), 1);
}

TEST_F(ScrollBarTest, AHandlerThatClosesTheBarForAMomentDoesNotBreakOffAHeldArrow)
{
    form.onChange = [&] {
        bar.Enabled = false;
        testDesktop().DoEvents();
        bar.Enabled = true;
    };
    form.show();
    robot.press(bar, LeftButton, NoKeys, downArrow);
    EXPECT_TRUE(robot.until([&] { return bar.Value() == 5; }));
    robot.release();
    EXPECT_EQ(form.taken().substr(0, 24), "C2 S2 C3 S3 C4 S4 C5 S5 ") << "one step at a time";
}

TEST_F(ScrollBarTest, AWindowClosedWhileItsBarIsPressedGoesWhenThePressHasReturned)
{
    form.show();
    const QPointer<QWidget> widget(bar.view()->widget());
    form.onChange = [&] {
        robot.atNextTurn([&] { form.unload(); });
        EXPECT_TRUE(robot.until([&] { return !form.isLoaded(); }));
        testDesktop().DoEvents();
        EXPECT_TRUE(widget);
    };
    robot.click(bar, LeftButton, NoKeys, downArrow);
    testDesktop().DoEvents();
    EXPECT_FALSE(widget);
}

TEST_F(ScrollBarTest, ADisabledBarTakesNoInput)
{
    form.show();
    bar.SetFocus();
    bar.Enabled = false;
    robot.click(bar, LeftButton, NoKeys, downArrow);
    robot.key(form, 40);
    robot.wheel(bar, 1);
    EXPECT_EQ(bar.Value(), 1);
    bar.Enabled = true;
    robot.key(form, 40);
    EXPECT_EQ(form.taken(), "C2 S2 ") << "and keeps the focus";
}

TEST_F(ScrollBarTest, ShowsWhatCodeHasSet)
{
    form.show();
    const Shot before = robot.shot(form);
    bar.Value = 10;
    testDesktop().DoEvents();
    EXPECT_FALSE(robot.shot(form) == before) << "the thumb stands elsewhere";
    robot.click(bar, LeftButton, NoKeys, upArrow);
    EXPECT_EQ(form.taken(), "C10 C9 S9 ");
}

} // namespace

} // namespace trovarium
