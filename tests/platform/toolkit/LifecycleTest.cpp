#include "platform/Stage.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/toolkit/FormSlot.h"
#include "platform/toolkit/PictureBox.h"

#include <QGuiApplication>
#include <QScreen>

namespace trovarium {

namespace {

class Page : public Form {
public:
    Page(Desktop& desktop, std::string_view name, std::string& diary)
        : Form(desktop, {.Name = name, .Width = 3000, .Height = 1500})
        , m_diary(diary)
    {
    }
    ~Page() override { m_diary += Name() + ".gone "; }

    PictureBox box{this, {.Name = "box", .Left = 150, .Top = 150, .Width = 1500, .Height = 750}};

private:
    std::string& m_diary;
};

class Lifecycle : public Stage {
protected:
    FormSlot<Page>::Factory maker(const std::string& name)
    {
        return [this, name] {
            auto page = std::make_unique<Page>(desktop, name, diary);
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

    FormSlot<Page> a{desktop, maker("A")};
    FormSlot<Page> b{desktop, maker("B")};
    FormSlot<Page> c{desktop, maker("C")};
};

} // namespace

TEST_F(Lifecycle, AFormLoadsWhenItIsShownAndIsListedInTheOrderOfLoading)
{
    a().box.Width = 4500;
    EXPECT_FALSE(a.isLoaded());
    EXPECT_EQ(taken(), "");
    b().load();
    a().show();
    EXPECT_EQ(taken(), "B.load A.load ");
    EXPECT_EQ(a().box.Width(), 4500);
    ASSERT_EQ(desktop.formsCount(), 2);
    EXPECT_EQ(&desktop.formsItem(0), &b());
    EXPECT_EQ(desktop.activeForm(), &a());
    for (const int index : {-1, 2})
        EXPECT_EQ(failureOf([&] { desktop.formsItem(index); }), "Subscript out of range") << index;
    b().unload();
    EXPECT_EQ(desktop.formsCount(), 1);
    when["A.unload"] = [this] { a().unload(); };
    a().unload();
    EXPECT_EQ(taken(), "B.unload A.unload B.gone ");
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
    EXPECT_EQ(taken(), "A.load A.click A.unload A.load A.gone ");
}

TEST_F(Lifecycle, ActivateComesAtTheNextTurnOnceForEachShowing)
{
    a().show();
    desktop.repaintOnly();
    EXPECT_EQ(taken(), "A.load ") << "waiting is closed to events";
    a().hide();
    desktop.DoEvents();
    EXPECT_EQ(taken(), "") << "nor does a hidden form get one";
    for (int showing = 0; showing < 2; ++showing) {
        a().hide();
        a().show();
        desktop.DoEvents();
        desktop.DoEvents();
        EXPECT_EQ(taken(), "A.activate ");
    }
}

TEST_F(Lifecycle, AModalFormActivatesInItsOwnLoopAndTheOneBelowAfterIt)
{
    a().show();
    desktop.DoEvents();
    robot.whenShown("B", [this] { b().hide(); });
    inHandler(a(), [this] {
        b().showModal();
        diary += "back ";
    });
    desktop.DoEvents();
    EXPECT_EQ(taken(), "A.load A.activate A.click B.load B.activate back A.activate ");
    a().hide();
    when["A.activate"] = [this] { // as of a notice
        robot.whenShown("B", [this] { b().unload(); });
        b().showModal();
        desktop.DoEvents();
    };
    a().show();
    for (int turn = 0; turn < 5; ++turn)
        desktop.DoEvents();
    EXPECT_EQ(taken(), "A.activate B.activate B.unload B.gone ");
}

TEST_F(Lifecycle, OnlyTheInnermostModalFormTakesInput)
{
    a().show();
    robot.whenShown("B", [&] {
        robot.whenShown("C", [&] {
            for (Page* page : {&a(), &b(), &c()})
                robot.click(page->box);
            c().hide();
        });
        robot.click(a().box);
        robot.click(b().box);
        c().showModal();
        robot.click(b().box);
        robot.close(a()); // the window manager's keys don't get through either
        b().unload();
    });
    b().showModal();
    EXPECT_TRUE(a.isLoaded());
    robot.click(a().box);
    EXPECT_EQ(taken(),
        "A.load B.load A.activate B.activate B.click C.load C.activate C.click B.click B.unload B.gone A.click ");
}

TEST_F(Lifecycle, AFormUnloadedUnderItsModalChildReturnsWhenTheChildDoes)
{
    robot.whenShown("B", [&] {
        robot.whenShown("C", [&] {
            taken();
            b().unload();
            EXPECT_TRUE(c().isShown());
            c().unload();
        });
        c().showModal();
        diary += "C.back ";
    });
    b().showModal();
    EXPECT_EQ(taken(), "B.unload C.unload C.back B.gone C.gone ");
}

TEST_F(Lifecycle, TheCloseBoxUnloadsAndAFormWithoutOneCantBeClosed)
{
    Form boxless(desktop, {.Name = "Boxless", .Width = 1500, .Height = 1500, .CloseBox = false});
    boxless.show();
    robot.close(boxless);
    EXPECT_TRUE(boxless.isLoaded());
    a().show();
    robot.close(a());
    EXPECT_EQ(taken(), "A.load A.unload A.gone ");
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
    EXPECT_EQ(taken(), "A.load A.activate A.click A.unload B.load A.gone B.activate B.unload B.gone ");
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
            diary += "never ";
        });
    });
    EXPECT_EQ(desktop.run(), 7);
    EXPECT_EQ(taken(), "A.load A.activate A.click B.load B.activate B.click B.click ");
    EXPECT_TRUE(a.isLoaded()) << "nothing is unloaded at the end";
}

TEST_F(Lifecycle, TheEndPassesThroughAnEventRaisedByCodeAndNoHandlerRunsAfterIt)
{
    a().show();
    b().show();
    when["A.click"] = [&] { desktop.endProgram(3); };
    inHandler(b(), [&] {
        a().box.Click.raise();
        diary += "never ";
    });
    robot.click(a().box);
    EXPECT_EQ(taken(), "A.load B.load B.click A.click ");
    EXPECT_THROW(desktop.DoEvents(), ProgramEnd);
    EXPECT_EQ(desktop.run(), 3);
}

TEST_F(Lifecycle, AFailureThatEscapesIsOneLineAndTheProgramGoesOn)
{
    EXPECT_EQ(desktop.guarded([] {}), 0);
    a().show();
    b().show();
    testing::internal::CaptureStderr();
    EXPECT_EQ(desktop.guarded([] { throw Failure(FailureKind::DiskFull); }), 1);
    inHandler(a(), [] { throw std::runtime_error("from a library"); });
    when["A.click"] = [] { throw Failure(FailureKind::Overflow); };
    inHandler(b(), [&] {
        a().box.Click.raise();
        diary += "on ";
    });
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Disk full\nA.box: from a library\nA.box: Overflow\n");
    EXPECT_EQ(taken(), "A.load B.load A.click B.click A.click on ");
    EXPECT_EQ(desktop.guarded([&] { desktop.endProgram(3); }), 3);
    EXPECT_EQ(desktop.run(), 3);
}

TEST_F(Lifecycle, SizesAreThoseOfTheWholeWindowAndScalesThoseOfTheClientArea)
{
    Form sized(desktop, {.Name = "F", .Width = 3000, .Height = 1500, .Scale = ScaleMode::Pixels});
    EXPECT_EQ(sized.ScaleWidth(), 200);
    EXPECT_EQ(sized.ScaleHeight(), 100);
    sized.load();
    const float frame = sized.Height() - 1500;
    sized.Height = 3000;
    EXPECT_EQ(sized.Height(), 3000);
    EXPECT_EQ(sized.ScaleHeight(), (3000 - frame) / 15);
    sized.Left = 1500.5F;
    sized.show();
    desktop.DoEvents();
    EXPECT_EQ(sized.Left(), 1500.5F) << "the window's whole pixels don't come back";
}

TEST_F(Lifecycle, AFormComesUpOnTheScreenOfTheActiveOneAndCountsItsPlaceFromThere)
{
    const QRect second = QGuiApplication::screens().at(1)->geometry();
    const auto corner = [](const Form& shown) { return shown.view()->window().frameGeometry().topLeft(); };
    show();
    EXPECT_FALSE(second.contains(corner(form)));
    form.view()->window().move(second.topLeft() + QPoint(100, 50)); // the user's hand
    desktop.DoEvents();
    EXPECT_EQ(form.Left(), 1500);
    EXPECT_EQ(desktop.Screen().Width(), static_cast<float>(second.width()) * TwipsPerPixel);
    const float width = desktop.Screen().Width();
    const float height = desktop.Screen().Height();
    Form whole(desktop, {.Name = "Whole", .Width = width, .Height = height, .Border = BorderKind::None});
    whole.show();
    desktop.DoEvents();
    EXPECT_EQ(corner(whole), second.topLeft());
    EXPECT_TRUE(whole.view()->window().isFullScreen());
    whole.unload();
    a().Left = 300;
    a().show();
    EXPECT_EQ(corner(a()), second.topLeft() + QPoint(20, 0));
    a().hide();
    form.Left = 0;
    EXPECT_EQ(corner(form).x(), second.left());
    b().show();
    const QPoint off = b().view()->window().geometry().center() - second.center();
    EXPECT_LE(off.manhattanLength(), 10) << "in the middle, but for its frame";
}

} // namespace trovarium
