#include "platform/Stage.h"
#include "platform/media/FilmSurface.h"
#include "platform/pictures/PictureService.h"
#include "platform/qt/pictures/PictureData.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/toolkit/Image.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/Shape.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>

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

// How often a surface is painted.
struct Paints : QObject {
    explicit Paints(const Container& container) { container.surface()->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }
    int take() { return std::exchange(count, 0); }

    int count = 0;
};

// 200 by 100 pixels, in pixels.
class Painting : public Stage {
protected:
    Painting()
        : Stage({.Name = "Sheet", .Width = 3000, .Height = 1500, .Scale = ScaleMode::Pixels})
    {
        low.Stretch = true;
        high.Stretch = true;
        low.Picture = plain(Qt::red);
        high.Picture = plain(Qt::green);
    }
    void SetUp() override { form.show(); }

    QColor inBox(int x, int y) const { return renderedImage(box.Image()).pixelColor(x, y); }
    Qt::CursorShape pointerOver(At at)
    {
        robot.moveTo(form, at);
        const QCursor* beating = QGuiApplication::overrideCursor();
        return beating != nullptr ? beating->shape() : form.view()->client().cursor().shape();
    }

    Image low{&form, {.Name = "low", .Left = 150, .Top = 150, .Width = 600, .Height = 600}};
    Image high{&form, {.Name = "high", .Left = 450, .Top = 450, .Width = 600, .Height = 600}};
    Shape bar{&form, {.Name = "bar", .Left = 1500, .Top = 150, .Width = 600, .Height = 300}};
    PictureBox box{&form, {.Name = "box", .Left = 2250, .Top = 150, .Width = 600, .Height = 600}, ScaleMode::Pixels};
    Label text{&form, {.Name = "text", .Left = 150, .Top = 1200, .Width = 1200, .Height = 240}};
};

} // namespace

TEST_F(Painting, LaterItemsLieAboveAndEdgesKeepWholePixels)
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
    for (const int scale : {1, 2, 3}) {
        const Shot scaled = robot.shot(form, scale);
        EXPECT_EQ(scaled.count(White), 36 * 16 * scale * scale) << "scale " << scale;
        EXPECT_EQ(scaled.count(Blue), (40 * 20 - 36 * 16) * scale * scale) << "scale " << scale;
    }
}

TEST_F(Painting, WhatMovesNoPixelPaintsNothingAndDoEventsPaintsWhatIsDirtyBeforeItReturns)
{
    bar.FillColor = Blue;
    desktop.DoEvents();
    Paints paints(form);
    for (int step = 0; step <= 3000; ++step) {
        bar.Width = 40 * static_cast<float>(step) / 3000;
        desktop.DoEvents();
    }
    EXPECT_EQ(paints.take(), 1 + 40);
    bar.Left = bar.Left() + 0.2F;
    bar.FillColor = Blue;
    text.Caption = text.Caption();
    desktop.DoEvents();
    EXPECT_EQ(paints.take(), 0);
    const std::function<void()> acts[] = {
        [&] { desktop.DoEvents(); }, [&] { desktop.repaintOnly(); }, [&] { text.Refresh(); }};
    for (const auto& act : acts) {
        text.Caption = text.Caption() + "more";
        act();
        EXPECT_EQ(paints.take(), 1);
    }
}

TEST_F(Painting, ABoxPaintsAndGivesItsImageWithoutAWindow)
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
}

TEST_F(Painting, AFilmShowsInItsBoxInTheTurnInWhichItComesAndMayOutliveTheForm)
{
    const FilmFrame red{2, 2, std::vector<std::uint32_t>(4, 0xffff0000)};
    const std::shared_ptr<FilmSurface> film = box.filmSurface();
    film->moveTo({20, -10, 600, 30});
    low.Visible = false;
    desktop.DoEvents();
    Paints paints(box);
    std::thread thread([&] { film->put(red); });
    EXPECT_TRUE(desktop.waitUntil([&] { return paints.take() > 0; }, 20'000));
    thread.join();
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

TEST_F(Painting, PlacesKeepTheirFractionsAndSizesFollowTheirContentInTheParentsScale)
{
    low.Left = 10.3F;
    EXPECT_EQ(low.Left(), 10.3F);
    EXPECT_EQ(box.Width(), 40) << "a plan in twips on a form in pixels";
    EXPECT_EQ(failureOf([&] { low.Width = -1; }), "Invalid property value");
    box.AutoSize = true;
    box.Picture = plain(Qt::red, 30, 20);
    box.Picture = {}; // which has no size to take
    EXPECT_EQ(box.Width(), 30);
    EXPECT_EQ(box.ScaleHeight(), 20);
}

TEST_F(Painting, TheScreensPointerBeatsTheFormsAndThatTheControlsDefault)
{
    const At item{15, 15};
    form.MousePointer = NoDropPointer;
    low.MousePointer = OwnPointer;
    EXPECT_EQ(pointerOver(item), Qt::BitmapCursor);
    EXPECT_EQ(pointerOver(At{2, 2}), Qt::ForbiddenCursor);
    desktop.Screen().MousePointer = HourglassPointer;
    EXPECT_EQ(pointerOver(item), Qt::WaitCursor);
    desktop.Screen().MousePointer = DefaultPointer;
    EXPECT_EQ(pointerOver(item), Qt::BitmapCursor);
}

} // namespace trovarium
