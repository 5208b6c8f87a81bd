// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/FormFixture.h"
#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/FormWindow.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/Timer.h"

#include <QCoreApplication>

#include <csignal>

namespace trovarium {

struct Page : Form {
    using Form::Form;
    ~Page() override { *diary += Name() + ".gone "; }

    PictureBox box{this, {.Name = "box", .Left = 150, .Top = 150, .Width = 1500, .Height = 750}};
    std::string* diary = nullptr;
};

struct Lifecycle : FormFixture {
    FormHolder<Page>::Factory maker(const std::string& name)
    {
        return [this, name] {
            auto page = std::make_unique<Page>(desktop, FormPlan{.Name = name, .Width = 3000, .Height = 1500});
            page->diary = &diary;
            note(page->Load, name + ".load");
            note(page->Activate, name + ".activate");
            note(page->Unload, name + ".unload");
            note(page->box.Click, name + ".click");
            return page;
        };
    }
    // A handler runs it, as the program's code is always run by one.
    void inHandler(Page& page, std::function<void()> action)
    {
        when[page.Name() + ".click"] = std::move(action);
        robot.click(page.box);
    }

    FormHolder<Page> a{desktop, maker("A")};
    FormHolder<Page> b{desktop, maker("B")};
    FormHolder<Page> c{desktop, maker("C")};
};

TEST_F(Lifecycle, AFormIsListedUntilItIsClosedAndLivesUntilItsHandlerHasReturnedBesideANewOne)
{
    b().load();
    a().show();
    EXPECT_EQ(taken(), "B.load A.load ");
    EXPECT_EQ(&desktop.formsItem(0), &b());
    EXPECT_EQ(desktop.activeForm(), &a());
    EXPECT_EQ(failureOf([&] { desktop.formsItem(2); }), "Subscript out of range");
    b().unload();
    when["A.unload"] = [this] { a().unload(); }; // nothing, in its own Unload
    robot.close(a());
    desktop.DoEvents();
    EXPECT_EQ(desktop.formsCount(), 0);
    EXPECT_EQ(taken(), "B.unload A.unload B.gone A.gone ");
    Form boxless(desktop, {.Name = "Boxless", .Width = 1500, .Height = 1500, .CloseBox = false});
    boxless.show();
    robot.close(boxless);
    EXPECT_TRUE(boxless.isLoaded());
    when.clear();
    a().show();
    bool isFirst = true;
    inHandler(a(), [&] {
        if (!std::exchange(isFirst, false))
            return;
        robot.atNextTurn([this] { robot.click(a().box), robot.close(a()); });
        EXPECT_TRUE(desktop.state().mayWait(std::chrono::milliseconds(0)));
        EXPECT_FALSE(desktop.state().mayWait(std::chrono::seconds(1))) << "a close is noticed in a wait";
        diary += "waited ";
    });
    desktop.DoEvents();
    EXPECT_EQ(taken(), "A.load A.click waited A.activate A.click A.unload A.gone ");
    a().show();
    robot.key(a(), F2Key + 2, AltKey); // where no window manager takes them
    desktop.DoEvents();
    EXPECT_EQ(taken(), "A.load A.activate A.unload A.gone ");
    a().show();
    inHandler(a(), [this, &page = a()] {
        page.box.Width = 300;
        page.unload();
        desktop.DoEvents();
        EXPECT_EQ(page.box.Width(), 300);
        EXPECT_EQ(a().box.Width(), 1500);
        a().show();
    });
    desktop.DoEvents();
    EXPECT_EQ(taken(), "A.load A.click A.unload A.load A.activate A.gone ");
}

TEST_F(Lifecycle, ActivateComesOnceForEachShowingAndOnlyTheInnermostModalFormTakesInput)
{
    a().show();
    desktop.repaintOnly();
    a().hide();
    desktop.DoEvents();
    EXPECT_EQ(taken(), "A.load ") << "waiting is closed to events, and a hidden form gets none";
    when["A.activate"] = [this] { // as of a notice
        robot.whenShown("B", [this] { b().unload(); });
        b().showModal();
        desktop.DoEvents();
    };
    a().show();
    for (int turn = 0; turn < 3; ++turn)
        desktop.DoEvents();
    EXPECT_EQ(taken(), "A.activate B.load B.activate B.unload B.gone ");
    when.clear();
    robot.whenShown("B", [&] {
        robot.whenShown("C", [&] {
            for (Page* page : {&a(), &b(), &c()})
                robot.click(page->box);
            robot.close(a()); // the window manager's keys don't get through either
            b().unload();
            EXPECT_TRUE(c().isShown()) << "and the lower one returns after it";
            c().unload();
        });
        robot.click(b().box);
        c().showModal();
        diary += "back ";
    });
    b().showModal();
    robot.click(a().box);
    desktop.DoEvents();
    EXPECT_EQ(taken(),
        "B.load B.activate B.click C.load C.activate C.click B.unload C.unload back "
        "B.gone C.gone A.click A.activate ");
}

TEST_F(Lifecycle, TheLoopGoesOnBehindAFailureAndEndsWithTheLastUnloadOrWithTheProgram)
{
    a().show();
    when["B.click"] = [] { throw std::runtime_error("from a library"); };
    robot.atNextTurn([&] {
        inHandler(a(), [&] {
            a().unload();
            testing::internal::CaptureStderr();
            EXPECT_EQ(desktop.guarded([] { throw Failure(FailureKind::DiskFull); }), 1);
            b().box.Click.raise();
            EXPECT_EQ(testing::internal::GetCapturedStderr(), "Disk full\nB.box: from a library\n");
            b().show();
        });
        robot.atNextTurn([&] { b().unload(); });
    });
    EXPECT_EQ(desktop.run(), 0);
    EXPECT_EQ(taken(), "A.load A.activate A.click A.unload B.click B.load A.gone B.activate B.unload B.gone ");
    const auto ending = [&] {
        desktop.endProgram(7);
        diary += "never ";
    };
    a().show();
    robot.whenShown("B", [&] {
        inHandler(b(), [&] {
            robot.atNextTurn([&] { inHandler(b(), ending); });
            while (true)
                desktop.DoEvents();
        });
    });
    robot.atNextTurn([&] {
        inHandler(a(), [&] {
            b().showModal();
            diary += "never ";
        });
    });
    EXPECT_EQ(desktop.run(), 7);
    robot.click(a().box);
    EXPECT_EQ(taken(), "A.load A.activate A.click B.load B.activate B.click B.click ");
    EXPECT_TRUE(a.isLoaded()) << "nothing is unloaded at the end";
    EXPECT_THROW(desktop.DoEvents(), ProgramEnd);
    EXPECT_EQ(desktop.guarded([&] { desktop.endProgram(3); }), 3);
    // What comes from outside unloads them, whatever runs.
    for (const int signal : {SIGTERM, SIGHUP, 0}) {
        desktop.state().endCode.reset();
        a().show();
        robot.whenShown("B", [&] { signal != 0 ? static_cast<void>(raise(signal)) : QCoreApplication::quit(); });
        robot.atNextTurn([&] { robot.click(a().box); });
        EXPECT_EQ(desktop.run(), 0);
        EXPECT_TRUE(taken().ends_with("B.activate B.unload A.unload B.gone A.gone ")) << signal;
    }
}

TEST_F(Lifecycle, ATimerTicksOnlyWhileItsFormIsLoadedAndItIsOnAndOnceBehindALongHandler)
{
    Timer timer(&form, {.Name = "timer", .Interval = 3, .Enabled = true});
    note(timer.Tick, "tick");
    Timer clock(&a(), {.Name = "clock", .Interval = 3, .Enabled = true});
    int time = 0;
    clock.Tick.connect([&] { ++time; });
    a().load();
    const auto passTime = [&] { EXPECT_TRUE(robot.until([&, end = time + 5] { return time >= end; })); };
    passTime(); // the form isn't loaded yet
    when["tick"] = [&] {
        passTime();
        timer.Enabled = diary == "A.load tick "; // after the second no more
        diary += "done ";
    };
    form.load();
    ASSERT_TRUE(robot.until([&] { return !timer.Enabled(); }));
    passTime();
    EXPECT_EQ(taken(), "A.load tick done tick done ");
}

} // namespace trovarium
