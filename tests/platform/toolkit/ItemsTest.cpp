// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/FormFixture.h"
#include "platform/media/FilmSurface.h"
#include "platform/pictures/PictureData.h"
#include "platform/toolkit/FormWindow.h"
#include "platform/toolkit/Image.h"
#include "platform/toolkit/Menu.h"
#include "platform/toolkit/PictureBox.h"
#include "support/ScriptedPrompts.h"

#include <QScreen>

#include <thread>

namespace trovarium {

namespace {

// An image, a box and a pop-up menu.
struct Items : FormFixture {
    Items()
    {
        note(low.MouseDown, "down");
        note(low.MouseUp, "up");
        note(entry.Click, "entry");
        show();
    }

    QColor inBox(int x, int y) const { return renderedImage(box.Image()).pixelColor(x, y); }

    Image low{&form, {.Name = "low", .Left = 150, .Top = 150, .Width = 600, .Height = 600}};
    PictureBox box{&form, {.Name = "box", .Left = 2250, .Top = 150, .Width = 600, .Height = 600}, ScaleMode::Pixels};
    Menu menu{&form, {.Name = "menu", .Caption = "Pop", .Visible = false}};
    Menu entry{&menu, {.Name = "entry", .Caption = "Entry"}};
};

} // namespace

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
        when["down"] = act;
        robot.click(low, RightButton);
    }
    const std::string down = "down:2:0:300:300 ";
    EXPECT_EQ(taken(), down + "entry " + down + down + down + "up:2:0:300:300 ") << "the last press is whole again";
}

TEST_F(Items, AFilmShowsInItsBoxInTheTurnInWhichItComesAndMayOutliveTheForm)
{
    QImage red(2, 2, QImage::Format_RGB32);
    red.fill(Qt::red);
    const std::shared_ptr<FilmSurface> film = box.filmSurface();
    film->moveTo({20, -10, 600, 30});
    std::thread([&] { film->put(red); }).join();
    const auto onScreen = [this] {
        return form.window().screen()->grabWindow(form.window().winId()).toImage().pixelColor(180, 20);
    };
    EXPECT_TRUE(desktop.waitUntil([&] { return onScreen() == Qt::red; }, 20'000));
    EXPECT_EQ(robot.shot(form).count({255, 0, 0}), 20 * 20); // the box is 40 by 40 pixels
    form.unload();
    film->put(red);
    EXPECT_EQ(inBox(20, 19), Qt::red) << "a thumbnail in work is finished";
    box.BackColor = Color{0, 255, 0};
    box.Picture = {};
    film->put(red);
    EXPECT_EQ(inBox(20, 19), Qt::green) << "nor a late frame, until a film takes the box again";
}

} // namespace trovarium
