#include "platform/Stage.h"
#include "platform/toolkit/Timer.h"

namespace trovarium {

namespace {

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
