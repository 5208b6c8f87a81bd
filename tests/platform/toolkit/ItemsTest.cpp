#include "platform/FormFixture.h"
#include "platform/media/FilmSurface.h"
#include "platform/pictures/PictureData.h"
#include "platform/pictures/PictureService.h"
#include "platform/toolkit/FormWindow.h"
#include "platform/toolkit/Image.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/Menu.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/ProgressBar.h"
#include "platform/toolkit/Shape.h"
#include "support/ScriptedPrompts.h"

#include <QAccessible>
#include <QApplication>
#include <QCursor>
#include <QScreen>

#include <thread>

namespace trovarium {

namespace {

constexpr Color Red{255, 0, 0};
constexpr Color Green{0, 255, 0};
constexpr Color Blue{0, 0, 255};

Picture plain(Qt::GlobalColor color, int width = 20, int height = 20)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return pictureFromImage(image);
}

// In pixels: two images that overlap, a line over the upper one, a box, and two buttons.
struct Items : FormFixture {
    Items()
        : FormFixture({.Name = "Items", .Width = 6000, .Height = 3000, .Scale = ScaleMode::Pixels})
    {
        low.Stretch = true;
        high.Stretch = true;
        low.Picture = plain(Qt::red);
        high.Picture = plain(Qt::green);
        for (Image* image : {&low, &high}) {
            note(image->MouseDown, image->Name() + ".down");
            note(image->MouseUp, image->Name() + ".up");
            note(image->Click, image->Name() + ".click");
        }
        note(low.DblClick, "low.double");
        note(box.MouseDown, "box.down");
        note(first.Click, "first");
        note(second.Click, "second");
        note(entry.Click, "entry");
        note(form.MouseDown, "form.down");
        note(form.KeyDown, "key");
        note(form.KeyPress, "char");
        show();
    }

    // Of the window as it was painted last.
    QColor onScreen(int x, int y) const
    {
        return form.window().screen()->grabWindow(form.window().winId()).toImage().pixelColor(x, y);
    }
    QColor inBox(int x, int y) const { return renderedImage(box.Image()).pixelColor(x, y); }
    Qt::CursorShape pointerOver(At at)
    {
        robot.moveTo(form, at);
        const QCursor* beating = QGuiApplication::overrideCursor();
        const QWidget* below = form.client()->childAt(static_cast<int>(at.x), static_cast<int>(at.y));
        return (beating != nullptr ? *beating : (below != nullptr ? below : form.client())->cursor()).shape();
    }

    const At both{30, 30}; // of the lower one; the upper one covers it there
    Image low{&form, {.Name = "low", .Left = 150, .Top = 150, .Width = 600, .Height = 600}};
    Image high{&form, {.Name = "high", .Left = 450, .Top = 450, .Width = 600, .Height = 600}};
    Shape bar{&form, {.Name = "bar", .Left = 1500, .Top = 150, .Width = 600, .Height = 300}};
    PictureBox box{&form, {.Name = "box", .Left = 2250, .Top = 150, .Width = 600, .Height = 600}, ScaleMode::Pixels};
    Label text{&form, {.Name = "text", .Left = 150, .Top = 1200, .Width = 1200, .Height = 240}};
    Line line{&form, {.Name = "line", .Left = 900, .Top = 900, .Width = 150, .Height = 150}};
    PictureButton first{&form, {.Name = "first", .Left = 3600, .Width = 900, .Height = 450}};
    PictureButton second{&form, {.Name = "second", .Left = 4800, .Width = 900, .Height = 450}};
    Menu menu{&form, {.Name = "menu", .Caption = "Pop", .Visible = false}};
    Menu entry{&menu, {.Name = "entry", .Caption = "Entry"}};
};

} // namespace

TEST_F(Items, APressGoesThroughShapesToTheItemBelowInTheScaleOfItsFormAndADisabledOneSwallowsIt)
{
    robot.click(low, LeftButton, CtrlKey | ShiftKey, At{10, 20});
    robot.click(high, RightButton, AltKey, At{35, 35}); // on the line
    robot.click(box, RightButton, NoKeys, At{2, 3});
    robot.click(form, At{110, 15}, RightButton); // on the bar
    EXPECT_EQ(taken(),
        "low.down:1:3:150:300 low.up:1:3:150:300 low.click high.down:2:4:525:525 high.up:2:4:525:525 "
        "box.down:2:0:2:3 form.down:2:0:110:15 ");
    high.Enabled = false;
    box.Enabled = false;
    robot.click(high);
    robot.click(box);
    EXPECT_EQ(taken(), "");
}

TEST_F(Items, TheSecondPressOfADoubleClickIsADoubleClickWhereItIsKnown)
{
    const std::string click = "high.down:1:0:150:150 high.up:1:0:150:150 high.click ";
    robot.doubleClick(high, NoKeys, At{10, 10});
    EXPECT_EQ(taken(), click + click);
    note(high.DblClick, "high.double");
    robot.doubleClick(low, NoKeys, At{10, 10});
    EXPECT_EQ(taken(), "low.down:1:0:150:150 low.up:1:0:150:150 low.click low.double low.up:1:0:150:150 ");
    low.ZOrder();
    when["low.click"] = [this] { low.Visible = false; }; // as a page that turns
    robot.doubleClick(low, NoKeys, both);
    EXPECT_EQ(taken(), "low.down:1:0:450:450 low.up:1:0:450:450 low.click " + click) << "quick presses on two items";
}

TEST_F(Items, APressThatOpensAMenuShowsAModalFormOrAsksGetsNoRelease)
{
    ScriptedPrompts prompts(desktop);
    Form other(desktop, {.Name = "Other", .Width = 1500, .Height = 1500});
    prompts.expectNotice("asked");
    robot.whenMenuOpens([&] { robot.choose(entry); });
    robot.whenShown("Other", [&] { other.hide(); });
    const std::function<void()> acts[] = {[&] { form.PopupMenu(menu); }, [&] { other.showModal(); },
        [&] { desktop.prompts().messageBox("asked", Message::Notice, {}); }, {}};
    for (const auto& act : acts) {
        when["low.down"] = act;
        robot.click(low, RightButton, NoKeys, At{10, 10});
    }
    const std::string down = "low.down:2:0:150:150 ";
    EXPECT_EQ(taken(), down + "entry " + down + down + down + "low.up:2:0:150:150 ") << "the last press is whole again";
    when["low.down"] = acts[0];
    robot.whenMenuOpens([&] {
        EXPECT_EQ(QApplication::activePopupWidget()->pos(), form.client()->mapToGlobal(QPoint(30, 30)));
        robot.dismissMenu();
    });
    keys({93});
}

TEST_F(Items, TabWalksOverWhatCanBeClickedAndKeysAndScreenReadersActOnIt)
{
    keys({32, 13, 93}); // on the first one from the start; the menu key presses with the right button
    const std::string click = "low.down:1:0:300:300 low.up:1:0:300:300 low.click ";
    EXPECT_EQ(taken(), click + click + "low.double low.up:1:0:300:300 low.down:2:0:300:300 low.up:2:0:300:300 ");
    for (int step = 0; step < 3; ++step)
        robot.tab(form);
    keys({13});
    robot.tab(form, true);
    keys({32});
    second.SetFocus();
    second.Enabled = false;
    keys({32});
    EXPECT_EQ(taken(), "second key:16:1 first key:32:0 char:32 ") << "a disabled button does nothing";
    const QAccessibleInterface* surface = QAccessible::queryAccessibleInterface(form.client());
    surface->child(2)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(taken(), "high.down:1:0:300:300 high.up:1:0:300:300 high.click ");
    fillBar(box, bar, 20);
    EXPECT_EQ(surface->child(0)->valueInterface()->currentValue().toInt(), 50) << "a box as a progress bar";
}

TEST_F(Items, LaterItemsLieAboveInWholePixelsAndTheScreensPointerBeatsTheItemsAndThatTheForms)
{
    low.Stretch = false; // so its 20 pixels stand in the middle of its top edge
    const Shot shot = robot.shot(form);
    EXPECT_EQ(shot.at(20, 10), Red);
    EXPECT_EQ(shot.count(Red), 20 * 20);
    EXPECT_EQ(shot.at(40, 40), Green);
    low.Stretch = true;
    low.ZOrder();
    EXPECT_EQ(robot.shot(form).at(40, 40), Red);
    form.Picture = plain(Qt::black, 4, 4);
    EXPECT_EQ(robot.shot(form).at(199, 99), Black) << "a form's picture covers it all";
    bar.BorderColor = Blue;
    bar.BorderWidth = 2;
    bar.FillColor = White;
    const Shot scaled = robot.shot(form, 3);
    EXPECT_EQ(scaled.count(White), 36 * 16 * 9);
    EXPECT_EQ(scaled.count(Blue), (40 * 20 - 36 * 16) * 9);
    form.MousePointer = NoDropPointer;
    low.MousePointer = OwnPointer;
    EXPECT_EQ(pointerOver(At{2, 2}), Qt::ForbiddenCursor);
    desktop.Screen().MousePointer = HourglassPointer;
    EXPECT_EQ(pointerOver(At{15, 15}), Qt::WaitCursor);
    desktop.Screen().MousePointer = DefaultPointer;
    EXPECT_EQ(pointerOver(At{15, 15}), Qt::BitmapCursor);
}

TEST_F(Items, ABoxPaintsAndGivesItsImageWithoutAWindowAndTakesTheSizeOfItsPicture)
{
    form.unload();
    const Picture under = plain(Qt::blue);
    box.Picture = under;
    EXPECT_EQ(failureOf([&] { box.PaintPicture({}, 0, 0, 10, 10); }), "Invalid picture");
    box.PaintPicture(plain(Qt::red), 0, 0, 10, 40);
    box.PaintPicture(plain(Qt::green), 5, 0, 10, 40);
    EXPECT_EQ(inBox(4, 39), Qt::red);
    EXPECT_EQ(inBox(5, 20), Qt::green);
    box.Cls();
    EXPECT_EQ(inBox(4, 39), Qt::blue);
    for (int stroke = 0; stroke < 10 * 40; ++stroke) // more than it keeps apart
        box.PaintPicture(plain(stroke % 2 == 0 ? Qt::red : Qt::blue), float(stroke % 40), float(stroke / 40), 1, 1);
    for (int x = 0; x < 40; ++x)
        EXPECT_EQ(inBox(x, x / 4), x % 2 == 0 ? Qt::red : Qt::blue) << x;
    box.Picture = under;
    EXPECT_EQ(inBox(4, 0), Qt::blue);
    EXPECT_EQ(failureOf([&] { box.Width = -1; }), "Invalid property value");
    box.AutoSize = true;
    box.Picture = plain(Qt::red, 30, 20);
    box.Picture = {}; // which has no size to take
    EXPECT_EQ(std::pair(box.Width(), box.ScaleHeight()), std::pair(30.0F, 20.0F)) << "in the scale of the form";
}

TEST_F(Items, AFilmShowsInItsBoxInTheTurnInWhichItComesAndMayOutliveTheForm)
{
    const FilmFrame red{2, 2, std::vector<std::uint32_t>(4, 0xffff0000)};
    const std::shared_ptr<FilmSurface> film = box.filmSurface();
    film->moveTo({20, -10, 600, 30});
    low.Visible = false;
    desktop.DoEvents();
    std::thread([&] { film->put(red); }).join();
    EXPECT_TRUE(desktop.waitUntil([&] { return onScreen(180, 20) == Qt::red; }, 20'000));
    film->put({3, 2, std::vector<std::uint32_t>(5)}); // too short, and dropped
    EXPECT_EQ(robot.shot(form).count(Red), 20 * 20);  // the box is 40 by 40 pixels
    form.unload();
    film->put(red);
    EXPECT_EQ(inBox(20, 19), Qt::red) << "a thumbnail in work is finished";
    box.BackColor = Green;
    box.Picture = {};
    film->put(red);
    EXPECT_EQ(inBox(20, 19), Qt::green) << "nor a late frame, until a film takes the box again";
}

} // namespace trovarium
