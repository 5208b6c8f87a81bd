#include "platform/qt/toolkit/FormView.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/FormSlot.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/PictureBox.h"
#include "runtime/Failure.h"
#include "support/FailureOf.h"
#include "support/Robot.h"

#include <QGuiApplication>
#include <QScreen>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace trovarium {

namespace {

using Diary = std::vector<std::string>;

// Writes down what happens to it; what it does then is up to the test.
class Page : public Form {
public:
    Page(Desktop& desktop, Diary& diary, std::string_view name = "Page")
        : Form(desktop, {.Name = name, .Width = 3000, .Height = 1500})
        , m_diary(diary)
    {
        on(Load, this, &Page::Form_Load);
        on(Activate, this, &Page::Form_Activate);
        on(Unload, this, &Page::Form_Unload);
        on(box.Click, this, &Page::box_Click);
    }
    ~Page() override { m_diary.push_back(Name() + " gone"); }

    PictureBox box{this, {.Name = "box", .Left = 150, .Top = 150, .Width = 1500, .Height = 750}};

    std::function<void()> atLoad;
    std::function<void()> atActivate;
    std::function<void()> atUnload;
    std::function<void()> atClick;

private:
    void note(const std::string& what, const std::function<void()>& action)
    {
        m_diary.push_back(Name() + " " + what);
        if (action)
            action();
    }
    void Form_Load() { note("load", atLoad); }
    void Form_Activate() { note("activate", atActivate); }
    void Form_Unload() { note("unload", atUnload); }
    void box_Click() { note("click", atClick); }

    Diary& m_diary;
};

class Lifecycle : public testing::Test {
protected:
    FormSlot<Page>::Factory maker(std::string name)
    {
        return [this, name] { return std::make_unique<Page>(desktop, diary, name); };
    }
    // A handler runs it, as the program's code is always run by one.
    void inHandler(Page& page, std::function<void()> action)
    {
        page.atClick = std::move(action);
        robot.click(page.box);
    }

    Desktop& desktop = testDesktop();
    Robot robot{desktop};
    Diary diary;
    FormSlot<Page> a{desktop, maker("A")};
    FormSlot<Page> b{desktop, maker("B")};
    FormSlot<Page> c{desktop, maker("C")};
};

} // namespace

TEST_F(Lifecycle, AFormLoadsWhenItIsShownAndIsListedInTheOrderOfLoading)
{
    a().box.Width = 4500;
    EXPECT_FALSE(a.isLoaded());
    EXPECT_EQ(diary, Diary{});
    b().load();
    a().show();
    EXPECT_EQ(diary, (Diary{"B load", "A load"}));
    EXPECT_EQ(a().box.Width(), 4500);
    ASSERT_EQ(desktop.formsCount(), 2);
    EXPECT_EQ(&desktop.formsItem(0), &b());
    EXPECT_EQ(desktop.activeForm(), &a());
    for (const int index : {-1, 2})
        EXPECT_EQ(failureOf([&] { desktop.formsItem(index); }), "Subscript out of range") << index;
    b().unload();
    EXPECT_EQ(desktop.formsCount(), 1);
}

TEST_F(Lifecycle, AFormThatUnloadsItselfLivesUntilItsHandlerHasReturnedBesideANewOne)
{
    a().show();
    inHandler(a(), [this, &page = a()] {
        page.box.Width = 300;
        page.unload();
        EXPECT_FALSE(a.isLoaded());
        desktop.DoEvents();
        EXPECT_EQ(page.box.Width(), 300);
        EXPECT_EQ(a().box.Width(), 1500);
        a().show();
    });
    EXPECT_TRUE(a.isLoaded());
    EXPECT_EQ(diary, (Diary{"A load", "A click", "A unload", "A load", "A gone"}));
}

TEST_F(Lifecycle, UnloadingInsideUnloadAndTwiceDoesNothing)
{
    a().show();
    a().atUnload = [this] { a().unload(); };
    a().unload();
    EXPECT_EQ(diary, (Diary{"A load", "A unload"}));
    EXPECT_FALSE(a.isLoaded());
}

TEST_F(Lifecycle, ActivateComesAtTheNextTurnOnceForEachShowing)
{
    a().show();
    desktop.repaintOnly();
    EXPECT_EQ(diary, (Diary{"A load"})) << "waiting is closed to events";
    a().hide();
    desktop.DoEvents();
    EXPECT_EQ(diary, (Diary{"A load"})) << "nor does a hidden form get one";
    a().show();
    desktop.DoEvents();
    desktop.DoEvents();
    EXPECT_EQ(diary, (Diary{"A load", "A activate"}));
    a().hide();
    a().show();
    desktop.DoEvents();
    EXPECT_EQ(diary, (Diary{"A load", "A activate", "A activate"}));
}

TEST_F(Lifecycle, AModalFormActivatesInItsOwnLoopAndTheOneBelowAfterIt)
{
    a().show();
    desktop.DoEvents();
    robot.whenShown("B", [this] { b().hide(); });
    inHandler(a(), [this] {
        b().showModal();
        diary.push_back("back");
    });
    desktop.DoEvents();
    EXPECT_EQ(diary, (Diary{"A load", "A activate", "A click", "B load", "B activate", "back", "A activate"}));
}

TEST_F(Lifecycle, ANoticeShownByActivateDoesNotActivateItAgain)
{
    a().atActivate = [this] {
        robot.whenShown("B", [this] { b().unload(); });
        b().showModal();
        desktop.DoEvents();
    };
    a().show();
    for (int turn = 0; turn < 5; ++turn)
        desktop.DoEvents();
    EXPECT_EQ(diary, (Diary{"A load", "A activate", "B load", "B activate", "B unload", "B gone"}));
}

TEST_F(Lifecycle, OnlyTheInnermostModalFormTakesInput)
{
    a().show();
    Diary inputs;
    const auto click = [&](Page& page) {
        const std::size_t before = diary.size();
        robot.click(page.box);
        inputs.push_back(page.Name() + (diary.size() > before ? " took" : " closed"));
    };
    robot.whenShown("B", [&] {
        b().atClick = {};
        click(a());
        click(b());
        robot.whenShown("C", [&] {
            click(a());
            click(b());
            click(c());
            c().hide();
        });
        c().showModal();
        click(b());
        robot.close(a()); // the window manager's keys don't get through either
        b().unload();
    });
    b().showModal();
    EXPECT_TRUE(a.isLoaded());
    click(a());
    EXPECT_EQ(inputs, (Diary{"A closed", "B took", "A closed", "B closed", "C took", "B took", "A took"}));
}

TEST_F(Lifecycle, AFormUnloadedUnderItsModalChildReturnsWhenTheChildDoes)
{
    a().show();
    robot.whenShown("B", [&] {
        robot.whenShown("C", [&] {
            b().unload();
            diary.push_back("B unloaded");
            EXPECT_TRUE(c().isShown());
            c().unload();
        });
        c().showModal();
        diary.push_back("C back");
    });
    b().showModal();
    diary.push_back("B back");
    const Diary tail(diary.end() - 6, diary.end());
    EXPECT_EQ(tail, (Diary{"B unloaded", "C unload", "C back", "B gone", "C gone", "B back"}));
}

TEST_F(Lifecycle, TheCloseBoxUnloadsAndAFormWithoutOneCantBeClosed)
{
    Form boxless(desktop, {.Name = "Boxless", .Width = 1500, .Height = 1500, .CloseBox = false});
    boxless.show();
    robot.close(boxless);
    EXPECT_TRUE(boxless.isLoaded());
    a().show();
    robot.close(a());
    EXPECT_FALSE(a.isLoaded());
    EXPECT_EQ(diary, (Diary{"A load", "A unload", "A gone"}));
}

TEST_F(Lifecycle, TheLastUnloadEndsTheLoopWithZeroUnlessAnotherFormIsShown)
{
    a().show();
    robot.atNextTurn([&] {
        inHandler(a(), [&] {
            a().unload();
            b().show();
        });
        robot.atNextTurn([&] { b().unload(); });
    });
    EXPECT_EQ(desktop.run(), 0);
    EXPECT_EQ(diary,
        (Diary{"A load", "A activate", "A click", "A unload", "B load", "A gone", "B activate", "B unload", "B gone"}));
}

TEST_F(Lifecycle, TheEndOfTheProgramLeavesEveryNestedLoop)
{
    a().show();
    robot.atNextTurn([&] {
        inHandler(a(), [&] {
            robot.whenShown("B", [&] {
                inHandler(b(), [&] {
                    robot.atNextTurn([&] { inHandler(b(), [&] { desktop.endProgram(7); }); });
                    while (true)
                        desktop.DoEvents();
                });
            });
            b().showModal();
            diary.push_back("never");
        });
    });
    EXPECT_EQ(desktop.run(), 7);
    EXPECT_EQ(diary, (Diary{"A load", "A activate", "A click", "B load", "B activate", "B click", "B click"}));
    EXPECT_TRUE(a.isLoaded()) << "nothing is unloaded at the end";
}

TEST_F(Lifecycle, TheEndPassesThroughAnEventRaisedByCodeAndNoHandlerRunsAfterIt)
{
    a().show();
    b().show();
    a().atClick = [&] { desktop.endProgram(3); };
    bool wentOn = false;
    inHandler(b(), [&] {
        a().box.Click.raise();
        wentOn = true;
    });
    EXPECT_FALSE(wentOn);
    diary.clear();
    robot.click(a().box);
    EXPECT_EQ(diary, Diary{});
    EXPECT_THROW(desktop.DoEvents(), ProgramEnd);
    EXPECT_EQ(desktop.run(), 3);
}

TEST_F(Lifecycle, GuardedReturnsZeroOneForAFailureAndTheProgramsEnd)
{
    EXPECT_EQ(desktop.guarded([] {}), 0);
    testing::internal::CaptureStderr();
    EXPECT_EQ(desktop.guarded([] { throw Failure(FailureKind::DiskFull); }), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Disk full\n");
    EXPECT_EQ(desktop.guarded([&] { desktop.endProgram(3); }), 3);
    EXPECT_EQ(desktop.run(), 3);
}

TEST_F(Lifecycle, AFailureThatEscapesAHandlerIsOneLineAndTheProgramGoesOn)
{
    a().show();
    b().show();
    testing::internal::CaptureStderr();
    inHandler(a(), [] { throw std::runtime_error("from a library"); });
    a().atClick = [] { throw Failure(FailureKind::Overflow); };
    bool wentOn = false;
    inHandler(b(), [&] {
        a().box.Click.raise();
        wentOn = true;
    });
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "A.box: from a library\nA.box: Overflow\n");
    EXPECT_TRUE(wentOn);
}

TEST(FormGeometry, SizesAreThoseOfTheWholeWindowAndScalesThoseOfTheClientArea)
{
    Form form(testDesktop(), {.Name = "F", .Width = 3000, .Height = 1500, .Scale = ScaleMode::Pixels});
    EXPECT_EQ(form.ScaleWidth(), 200);
    EXPECT_EQ(form.ScaleHeight(), 100);
    form.load();
    const float frame = form.Height() - 1500;
    form.Height = 3000;
    EXPECT_EQ(form.Height(), 3000);
    EXPECT_EQ(form.ScaleHeight(), (3000 - frame) / 15);
    form.Left = 1500.5F;
    form.show();
    testDesktop().DoEvents();
    EXPECT_EQ(form.Left(), 1500.5F) << "the window's whole pixels don't come back";
}

TEST(TwoScreens, AFormComesUpOnTheScreenOfTheActiveOneAndCountsItsPlaceFromThere)
{
    Desktop& desktop = testDesktop();
    ASSERT_EQ(QGuiApplication::screens().size(), 2);
    const QRect second = QGuiApplication::screens().last()->geometry();
    const auto corner = [](const Form& form) { return form.view()->window().frameGeometry().topLeft(); };
    Form album(desktop, {.Name = "Album", .Width = 3000, .Height = 1500});
    album.show();
    EXPECT_FALSE(second.contains(corner(album)));
    album.view()->window().move(second.topLeft() + QPoint(100, 50)); // the user's hand
    desktop.DoEvents();
    EXPECT_EQ(album.Left(), 1500);
    EXPECT_EQ(desktop.Screen().Width(), static_cast<float>(second.width()) * TwipsPerPixel);
    Form whole(desktop,
        {.Name = "Whole",
            .Width = desktop.Screen().Width(),
            .Height = desktop.Screen().Height(),
            .Border = BorderKind::None});
    whole.show();
    desktop.DoEvents();
    EXPECT_EQ(corner(whole), second.topLeft());
    EXPECT_TRUE(whole.view()->window().isFullScreen());
    whole.unload();
    Form placed(desktop, {.Name = "Placed", .Width = 3000, .Height = 1500});
    placed.Left = 300;
    placed.show();
    EXPECT_EQ(corner(placed), second.topLeft() + QPoint(20, 0));
    placed.hide();
    album.Left = 0;
    EXPECT_EQ(corner(album).x(), second.left());
    Form dialog(desktop, {.Name = "Dialog", .Width = 3000, .Height = 1500});
    dialog.show();
    const QPoint off = dialog.view()->window().geometry().center() - second.center();
    EXPECT_LE(off.manhattanLength(), 10) << "in the middle, but for its frame";
}

} // namespace trovarium
