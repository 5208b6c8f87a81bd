#include "platform/toolkit/ScrollBar.h"

#include "platform/Stage.h"
#include "platform/toolkit/PictureBox.h"

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
    VScroll bar{&window, {.Name = "bar", .Left = 2700, .Width = 255, .Height = 4500}};
    const At downArrow{8, 296};
};

TEST_F(ScrollBarTest, ChangeRunsInsideTheStatementAndAPageIsTurnedOnlyWhereTheBarIsShownAndEnabled)
{
    bar.Value = 5;
    bar.Value = 5;
    bar.Max = 3;
    bar.Max = 10;
    bar.Min = 4;
    EXPECT_EQ(taken(), "C:5 C:3 C:4 ");
    for (const int value : {3, 11})
        EXPECT_EQ(failureOf([&] { bar.Value = value; }), "Invalid property value") << value;
    bar.LargeChange = 4;
    for (const int steps : {1, 5, 1, -1})
        bar.page(steps);
    EXPECT_EQ(taken(), "C:8 S:8 C:10 S:10 C:6 S:6 ");
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
    bar.SetFocus();
    keys({38, 33, 34});
    EXPECT_EQ(taken(), "C:2 S:2 C:4 S:4 C:3 S:3 C:1 S:1 C:3 S:3 ");
    robot.wheel(bar, 1);
    robot.wheel(window, 1);
    EXPECT_EQ(taken(), "C:5 S:5 C:7 S:7 ");
    const Shot before = robot.shot(form);
    bar.Value = 10;
    desktop.DoEvents();
    EXPECT_FALSE(robot.shot(form) == before) << "the thumb stands elsewhere";
    bar.Enabled = false;
    robot.click(bar, LeftButton, NoKeys, downArrow);
    keys({38});
    robot.wheel(bar, -1);
    robot.wheel(window, -1);
    EXPECT_EQ(taken(), "C:10 ");
    bar.Enabled = true;
    keys({38});
    EXPECT_EQ(taken(), "C:9 S:9 ") << "and keeps the focus";
}

TEST_F(ScrollBarTest, ADragRaisesScrollAndOneChangeOnReleaseWhereItEndsElsewhere)
{
    bar.Max = 101;
    show();
    for (const float end : {150.0F, 22.0F}) {
        bar.Value = 1;
        taken();
        robot.press(bar, LeftButton, NoKeys, At{8, 22});
        robot.moveTo(bar, At{8, 100});
        robot.moveTo(bar, At{8, end});
        const std::string scrolled = taken();
        EXPECT_EQ(scrolled.find('C'), std::string::npos) << scrolled;
        EXPECT_EQ(std::count(scrolled.begin(), scrolled.end(), 'S'), 2) << scrolled;
        robot.release();
        EXPECT_EQ(bar.Value() > 30, end > 22) << bar.Value();
        EXPECT_EQ(taken(), end > 22 ? "C:" + std::to_string(bar.Value()) + " " : "");
    }
}

} // namespace

} // namespace trovarium
