#include "platform/media/FilmSurface.h"
#include "platform/pictures/PictureService.h"
#include "platform/qt/pictures/PictureData.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Frame.h"
#include "platform/toolkit/Image.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/Line.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/PictureButton.h"
#include "platform/toolkit/Shape.h"
#include "platform/toolkit/TextBox.h"
#include "support/FailureOf.h"
#include "support/Robot.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace trovarium {

std::ostream& operator<<(std::ostream& stream, Color color)
{
    return stream << '(' << int(color.red) << ',' << int(color.green) << ',' << int(color.blue) << ')';
}

namespace {

constexpr Color Red{255, 0, 0};
constexpr Color Green{0, 255, 0};
constexpr Color Blue{0, 0, 255};

Picture plain(Color color, int width = 20, int height = 20)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(qRgb(color.red, color.green, color.blue));
    return pictureFromImage(image);
}

FilmFrame redFrame()
{
    return {2, 2, std::vector<std::uint32_t>(4, 0xffff0000)};
}

// 200 by 100 pixels, in pixels.
class Sheet : public Form {
public:
    explicit Sheet(Desktop& desktop)
        : Form(desktop, {.Name = "Sheet", .Width = 3000, .Height = 1500, .Scale = ScaleMode::Pixels})
    {
        low.Stretch = true;
        high.Stretch = true;
        low.Picture = plain(Red);
        high.Picture = plain(Green);
    }

    Image low{this, {.Name = "low", .Left = 150, .Top = 150, .Width = 600, .Height = 600}};
    Image high{this, {.Name = "high", .Left = 450, .Top = 450, .Width = 600, .Height = 600}};
    Shape bar{this, {.Name = "bar", .Left = 1500, .Top = 150, .Width = 600, .Height = 300}};
    PictureBox box{this, {.Name = "box", .Left = 2250, .Top = 150, .Width = 600, .Height = 600}, ScaleMode::Pixels};
    Label text{this, {.Name = "text", .Left = 150, .Top = 1200, .Width = 1200, .Height = 240}};
};

// How often surfaces are painted.
class Paints : public QObject {
public:
    explicit Paints(const Container& container) { container.surface()->installEventFilter(this); }
    int take() { return std::exchange(m_count, 0); }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        m_count += event->type() == QEvent::Paint;
        return false;
    }

private:
    int m_count = 0;
};

class Painting : public testing::Test {
protected:
    Painting() { sheet.show(); }

    Desktop& desktop = testDesktop();
    Robot robot{desktop};
    Sheet sheet{desktop};
};

} // namespace

TEST_F(Painting, LaterItemsLieAboveAndZOrderRaises)
{
    Shot shot = robot.shot(sheet);
    EXPECT_EQ(shot.at(15, 15), Red);
    EXPECT_EQ(shot.at(40, 40), Green);
    EXPECT_EQ(shot.at(5, 5), PanelGrey);
    sheet.low.ZOrder();
    EXPECT_EQ(robot.shot(sheet).at(40, 40), Red);
    sheet.low.Left = 145;
    sheet.box.BackColor = Blue;
    sheet.BackColor = Black;
    shot = robot.shot(sheet);
    EXPECT_EQ(shot.at(155, 20), Blue) << "boxes lie above drawn items";
    EXPECT_EQ(shot.at(5, 5), Black);
    sheet.Picture = plain(Blue, 4, 4);
    EXPECT_EQ(robot.shot(sheet).at(199, 99), Blue) << "a form's picture covers it all";
}

TEST_F(Painting, AnImageWithoutStretchStandsInTheMiddleOfTheTopEdge)
{
    sheet.high.Visible = false;
    sheet.low.Stretch = false;
    const Shot shot = robot.shot(sheet); // a picture of 20 in a place of 40 at 10,10
    EXPECT_EQ(shot.at(20, 10), Red);
    EXPECT_EQ(shot.at(39, 29), Red);
    EXPECT_EQ(shot.at(19, 10), PanelGrey);
    EXPECT_EQ(shot.at(40, 10), PanelGrey);
    EXPECT_EQ(shot.at(20, 30), PanelGrey);
    EXPECT_EQ(shot.count(Red), 400);
}

TEST_F(Painting, ShapesAndLinesKeepWholePixelsAtEveryScale)
{
    sheet.bar.BorderColor = Blue;
    sheet.bar.BorderWidth = 2;
    sheet.bar.FillColor = White;
    for (const int scale : {1, 2, 3}) {
        const Shot shot = robot.shot(sheet, scale);
        EXPECT_EQ(shot.count(White), 36 * 16 * scale * scale) << "scale " << scale;
        EXPECT_EQ(shot.count(Blue), (40 * 20 - 36 * 16) * scale * scale) << "scale " << scale;
    }
}

TEST_F(Painting, WhatMovesNoPixelPaintsNothing)
{
    sheet.bar.FillColor = Blue;
    desktop.DoEvents();
    Paints paints(sheet);
    int painted = 0;
    for (int step = 0; step <= 3000; ++step) {
        sheet.bar.Width = 40 * static_cast<float>(step) / 3000;
        desktop.DoEvents();
        painted += paints.take();
    }
    EXPECT_EQ(painted, 1 + 40 * sheet.view()->client().devicePixelRatio());
    sheet.bar.Left = sheet.bar.Left() + 0.2F;
    sheet.bar.FillColor = Blue;
    sheet.text.Caption = sheet.text.Caption();
    desktop.DoEvents();
    EXPECT_EQ(paints.take(), 0);
}

TEST_F(Painting, DoEventsPaintsWhatIsDirtyBeforeItReturns)
{
    desktop.DoEvents();
    Paints paints(sheet);
    sheet.low.Left = 20;
    desktop.DoEvents();
    EXPECT_EQ(paints.take(), 1);
    sheet.text.Caption = "new";
    desktop.repaintOnly();
    EXPECT_EQ(paints.take(), 1);
    sheet.text.Caption = "newer";
    sheet.text.Refresh();
    EXPECT_EQ(paints.take(), 1);
}

TEST_F(Painting, ABoxPaintsAndGivesItsImageWithoutAWindow)
{
    PictureBox& box = sheet.box;
    sheet.unload();
    box.BackColor = Black;
    EXPECT_EQ(failureOf([&] { box.PaintPicture({}, 0, 0, 10, 10); }), "Invalid picture");
    box.PaintPicture(plain(Red), 0, 0, 10, 40);
    box.PaintPicture(plain(Green), 5, 0, 10, 40);
    QImage image = renderedImage(box.Image());
    EXPECT_EQ(image.size(), QSize(40, 40));
    EXPECT_EQ(image.pixel(4, 20), qRgb(255, 0, 0));
    EXPECT_EQ(image.pixel(5, 20), qRgb(0, 255, 0));
    EXPECT_EQ(image.pixel(15, 20), qRgb(0, 0, 0));
    box.Cls();
    EXPECT_EQ(renderedImage(box.Image()).pixel(4, 20), qRgb(0, 0, 0));
    for (int stroke = 0; stroke < 300; ++stroke)
        box.PaintPicture(plain(stroke % 2 == 0 ? Red : Blue), static_cast<float>(stroke % 40), 0, 1, 40);
    image = renderedImage(box.Image());
    for (int x = 0; x < 40; ++x)
        EXPECT_EQ(image.pixel(x, 7), x % 2 == 0 ? qRgb(255, 0, 0) : qRgb(0, 0, 255)) << x;
    box.Picture = plain(Blue);
    EXPECT_EQ(renderedImage(box.Image()).pixel(4, 20), qRgb(0, 0, 255));
}

TEST_F(Painting, AFilmShowsInItsBoxAndNowhereElse)
{
    sheet.low.Visible = false;
    const std::shared_ptr<FilmSurface> film = sheet.box.filmSurface();
    film->moveTo({20, -10, 600, 30});
    std::thread([&] { film->put(redFrame()); }).join();
    film->put({3, 2, std::vector<std::uint32_t>(5)}); // too short, and dropped
    const Shot shot = robot.shot(sheet);              // the box is 40 by 40 pixels at 150,10
    EXPECT_EQ(shot.at(170, 10), Red);
    EXPECT_EQ(shot.at(189, 29), Red);
    EXPECT_EQ(shot.count(Red), 20 * 20);
    EXPECT_EQ(renderedImage(sheet.box.Image()).pixel(20, 19), qRgb(255, 0, 0));
    EXPECT_NE(renderedImage(sheet.box.Image()).pixel(19, 19), qRgb(255, 0, 0));
    sheet.box.Picture = {};
    EXPECT_EQ(robot.shot(sheet).count(Red), 0) << "until the next frame";
}

TEST_F(Painting, AFrameOfAFilmIsPaintedInTheTurnInWhichItComes)
{
    desktop.DoEvents();
    Paints paints(sheet.box);
    const std::shared_ptr<FilmSurface> film = sheet.box.filmSurface();
    std::thread thread([&] { film->put(redFrame()); });
    EXPECT_TRUE(desktop.waitUntil([&] { return paints.take() > 0; }, 20'000));
    thread.join();
    film->put(redFrame());
    desktop.repaintOnly();
    EXPECT_EQ(paints.take(), 1);
    film->put(redFrame());
    desktop.DoEvents();
    EXPECT_EQ(paints.take(), 1);
}

TEST_F(Painting, AFilmOutlivesTheFormThatShowedIt)
{
    auto gone = std::make_unique<Sheet>(desktop);
    gone->show();
    const std::shared_ptr<FilmSurface> film = gone->box.filmSurface();
    film->moveTo({0, 0, 40, 40});
    std::atomic<bool> ends = false;
    std::thread thread([&] {
        while (!ends)
            film->put(redFrame());
    });
    robot.until([&] { return film->shown().frame != nullptr; });
    gone->unload();
    EXPECT_EQ(renderedImage(gone->box.Image()).pixel(20, 20), qRgb(255, 0, 0)) << "a thumbnail in work is finished";
    gone->show();
    gone.reset();
    ends = true;
    thread.join();
    film->put(redFrame());
    desktop.DoEvents();
}

TEST_F(Painting, AnAutoSizedBoxTakesItsPicturesNaturalSizeInItsParentsScale)
{
    sheet.box.AutoSize = true;
    sheet.box.Picture = plain(Red, 300, 200);
    EXPECT_EQ(sheet.box.Width(), 300);
    EXPECT_EQ(sheet.box.ScaleHeight(), 200);
    sheet.box.Picture = {};
    EXPECT_EQ(sheet.box.Width(), 300) << "an empty picture has no size to take";
    Form twips(desktop, {.Name = "T", .Width = 3000, .Height = 3000});
    PictureBox box(&twips, {.Name = "box"});
    box.AutoSize = true;
    box.Picture = plain(Red, 10, 20);
    EXPECT_EQ(box.Width(), 150);
    EXPECT_EQ(box.Height(), 300);
}

TEST_F(Painting, ALabelGrowsAboutItsAlignment)
{
    const float middle = sheet.text.Left() + sheet.text.Width() / 2;
    const float right = sheet.text.Left() + sheet.text.Width();
    sheet.text.AutoSize = true;
    sheet.text.Alignment = Alignment::Center;
    sheet.text.Left = middle - sheet.text.Width() / 2;
    sheet.text.Caption = "a rather long caption";
    const float wide = sheet.text.Width();
    EXPECT_FLOAT_EQ(sheet.text.Left() + wide / 2, middle);
    sheet.text.Alignment = Alignment::Right;
    sheet.text.Left = right - wide;
    sheet.text.Caption = "short";
    EXPECT_LT(sheet.text.Width(), wide);
    EXPECT_FLOAT_EQ(sheet.text.Left() + sheet.text.Width(), right);
    sheet.text.Alignment = Alignment::Left;
    sheet.text.Caption = "&&";
    EXPECT_GT(sheet.text.Width(), 0) << "one ampersand shows";
    sheet.text.WordWrap = true;
    sheet.text.Width = 30;
    const float line = sheet.text.Height();
    sheet.text.Caption = "several words in a narrow place";
    EXPECT_EQ(sheet.text.Width(), 30);
    EXPECT_GE(sheet.text.Height(), 2 * line);
}

TEST_F(Painting, ATextTooLongStaysInItsPlace)
{
    sheet.text.ForeColor = Red;
    sheet.text.Caption = "far too many words to stand in eighty pixels";
    sheet.low.Visible = false;
    sheet.high.Visible = false;
    const Shot shot = robot.shot(sheet);
    int inside = 0;
    for (int y = 60; y < 100; ++y)
        for (int x = 0; x < 200; ++x)
            if (shot.at(x, y) != PanelGrey) {
                EXPECT_GE(x, 9);
                EXPECT_LE(x, 91);
                ++inside;
            }
    EXPECT_GT(inside, 50);
}

TEST_F(Painting, TheScreensPointerBeatsTheFormsAndThatTheControlsDefault)
{
    const auto over = [&](At at) {
        robot.moveTo(sheet, at);
        const QCursor* beating = QGuiApplication::overrideCursor();
        return beating != nullptr ? beating->shape() : sheet.view()->client().cursor().shape();
    };
    const At item{15, 15};
    const At bare{2, 2};
    EXPECT_EQ(over(item), Qt::ArrowCursor);
    sheet.MousePointer = NoDropPointer;
    EXPECT_EQ(over(bare), Qt::ForbiddenCursor);
    EXPECT_EQ(over(item), Qt::ForbiddenCursor);
    sheet.low.MousePointer = TextPointer;
    EXPECT_EQ(over(item), Qt::IBeamCursor);
    sheet.low.MousePointer = OwnPointer;
    EXPECT_EQ(over(item), Qt::BitmapCursor);
    EXPECT_EQ(sheet.view()->client().cursor().pixmap().width(), 32) << "the screen's own pixels";
    EXPECT_EQ(over(bare), Qt::ForbiddenCursor);
    desktop.Screen().MousePointer = HourglassPointer;
    EXPECT_EQ(over(item), Qt::WaitCursor);
    desktop.Screen().MousePointer = DefaultPointer;
    sheet.low.MousePointer = DefaultPointer;
    sheet.MousePointer = DefaultPointer;
    EXPECT_EQ(over(item), Qt::ArrowCursor);
}

TEST_F(Painting, APressedItemsPointerFollowsWhatItsHandlerSays)
{
    robot.press(sheet.low, LeftButton, NoKeys, At{5, 5});
    sheet.low.MousePointer = NoDropPointer;
    robot.moveTo(sheet, At{2, 2});
    EXPECT_EQ(sheet.view()->client().cursor().shape(), Qt::ForbiddenCursor);
    robot.release();
    robot.moveTo(sheet, At{2, 2});
    EXPECT_EQ(sheet.view()->client().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(Painting, PlacesKeepTheirFractionsInTheirParentsScale)
{
    sheet.low.Left = 10.3F;
    sheet.box.Top = 12.7F;
    EXPECT_EQ(sheet.low.Left(), 10.3F);
    EXPECT_EQ(sheet.box.Top(), 12.7F);
    EXPECT_EQ(sheet.box.Width(), 40) << "a plan in twips on a form in pixels";
    Image inside(&sheet.box, {.Name = "inside", .Left = 150, .Width = 75});
    EXPECT_EQ(inside.Left(), 10);
    EXPECT_EQ(inside.Width(), 5);
    EXPECT_EQ(failureOf([&] { inside.Width = -1; }), "Invalid property value");
    EXPECT_EQ(inside.Width(), 5);
}

} // namespace trovarium
