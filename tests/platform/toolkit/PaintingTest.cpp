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

// 200 by 100 pixels, in pixels.
class Painting : public Stage {
protected:
    Painting()
        : Stage({.Name = "Sheet", .Width = 3000, .Height = 1500, .Scale = ScaleMode::Pixels})
    {
        low.Stretch = true;
        high.Stretch = true;
        low.Picture = plain(Red);
        high.Picture = plain(Green);
    }
    void SetUp() override { form.show(); }

    Color inBox(int x, int y) const
    {
        const QColor color = renderedImage(box.Image()).pixelColor(x, y);
        return {static_cast<unsigned char>(color.red()), static_cast<unsigned char>(color.green()),
            static_cast<unsigned char>(color.blue())};
    }
    Qt::CursorShape pointer() const
    {
        const QCursor* beating = QGuiApplication::overrideCursor();
        return beating != nullptr ? beating->shape() : form.view()->client().cursor().shape();
    }
    Qt::CursorShape pointerOver(At at)
    {
        robot.moveTo(form, at);
        return pointer();
    }

    Image low{&form, {.Name = "low", .Left = 150, .Top = 150, .Width = 600, .Height = 600}};
    Image high{&form, {.Name = "high", .Left = 450, .Top = 450, .Width = 600, .Height = 600}};
    Shape bar{&form, {.Name = "bar", .Left = 1500, .Top = 150, .Width = 600, .Height = 300}};
    PictureBox box{&form, {.Name = "box", .Left = 2250, .Top = 150, .Width = 600, .Height = 600}, ScaleMode::Pixels};
    Label text{&form, {.Name = "text", .Left = 150, .Top = 1200, .Width = 1200, .Height = 240}};
};

} // namespace

TEST_F(Painting, LaterItemsLieAboveAndZOrderRaises)
{
    Shot shot = robot.shot(form);
    EXPECT_EQ(shot.at(15, 15), Red);
    EXPECT_EQ(shot.at(40, 40), Green);
    EXPECT_EQ(shot.at(5, 5), PanelGrey);
    low.ZOrder();
    EXPECT_EQ(robot.shot(form).at(40, 40), Red);
    low.Left = 145;
    box.BackColor = Blue;
    form.BackColor = Black;
    shot = robot.shot(form);
    EXPECT_EQ(shot.at(155, 20), Blue) << "boxes lie above drawn items";
    EXPECT_EQ(shot.at(5, 5), Black);
    form.Picture = plain(Blue, 4, 4);
    EXPECT_EQ(robot.shot(form).at(199, 99), Blue) << "a form's picture covers it all";
}

TEST_F(Painting, AnImageWithoutStretchStandsInTheMiddleOfTheTopEdgeAndShapesKeepWholePixels)
{
    high.Visible = false;
    low.Stretch = false;
    bar.BorderColor = Blue;
    bar.BorderWidth = 2;
    bar.FillColor = White;
    const Shot shot = robot.shot(form); // a picture of 20 in a place of 40 at 10,10
    EXPECT_EQ(shot.at(20, 10), Red);
    EXPECT_EQ(shot.at(39, 29), Red);
    EXPECT_EQ(shot.count(Red), 400);
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
    int painted = 0;
    for (int step = 0; step <= 3000; ++step) {
        bar.Width = 40 * static_cast<float>(step) / 3000;
        desktop.DoEvents();
        painted += paints.take();
    }
    EXPECT_EQ(painted, 1 + 40 * form.view()->client().devicePixelRatio());
    bar.Left = bar.Left() + 0.2F;
    bar.FillColor = Blue;
    text.Caption = text.Caption();
    desktop.DoEvents();
    EXPECT_EQ(paints.take(), 0);
    low.Left = 20;
    desktop.DoEvents();
    EXPECT_EQ(paints.take(), 1);
    text.Caption = "new";
    desktop.repaintOnly();
    EXPECT_EQ(paints.take(), 1);
    text.Caption = "newer";
    text.Refresh();
    EXPECT_EQ(paints.take(), 1);
}

TEST_F(Painting, ABoxPaintsAndGivesItsImageWithoutAWindow)
{
    form.unload();
    box.BackColor = Black;
    EXPECT_EQ(failureOf([&] { box.PaintPicture({}, 0, 0, 10, 10); }), "Invalid picture");
    box.PaintPicture(plain(Red), 0, 0, 10, 40);
    box.PaintPicture(plain(Green), 5, 0, 10, 40);
    EXPECT_EQ(renderedImage(box.Image()).size(), QSize(40, 40));
    EXPECT_EQ(inBox(4, 20), Red);
    EXPECT_EQ(inBox(5, 20), Green);
    EXPECT_EQ(inBox(15, 20), Black);
    box.Cls();
    EXPECT_EQ(inBox(4, 20), Black);
    for (int stroke = 0; stroke < 300; ++stroke)
        box.PaintPicture(plain(stroke % 2 == 0 ? Red : Blue), static_cast<float>(stroke % 40), 0, 1, 40);
    for (int x = 0; x < 40; ++x)
        EXPECT_EQ(inBox(x, 7), x % 2 == 0 ? Red : Blue) << x;
    box.Picture = plain(Blue);
    EXPECT_EQ(inBox(4, 20), Blue);
}

TEST_F(Painting, AFilmShowsInItsBoxAndNowhereElseInTheTurnInWhichItComes)
{
    low.Visible = false;
    const std::shared_ptr<FilmSurface> film = box.filmSurface();
    film->moveTo({20, -10, 600, 30});
    desktop.DoEvents();
    Paints paints(box);
    std::thread thread([&] { film->put(redFrame()); });
    EXPECT_TRUE(desktop.waitUntil([&] { return paints.take() > 0; }, 20'000));
    thread.join();
    film->put(redFrame());
    desktop.repaintOnly();
    EXPECT_EQ(paints.take(), 1);
    film->put(redFrame());
    EXPECT_TRUE(robot.until([&] { return paints.take() == 1; }));
    film->put({3, 2, std::vector<std::uint32_t>(5)}); // too short, and dropped
    const Shot shot = robot.shot(form);               // the box is 40 by 40 pixels at 150,10
    EXPECT_EQ(shot.at(170, 10), Red);
    EXPECT_EQ(shot.at(189, 29), Red);
    EXPECT_EQ(shot.count(Red), 20 * 20);
    EXPECT_EQ(inBox(20, 19), Red);
    EXPECT_NE(inBox(19, 19), Red);
    box.Picture = {};
    film->put(redFrame());
    EXPECT_EQ(robot.shot(form).count(Red), 0) << "nor a late frame, until a film takes the box again";
}

TEST_F(Painting, AFilmOutlivesTheFormThatShowedIt)
{
    auto gone = std::make_unique<Form>(desktop, FormPlan{.Name = "Gone", .Width = 1500, .Height = 1500});
    auto screen = std::make_unique<PictureBox>(gone.get(), Plan{.Name = "screen", .Width = 600, .Height = 600});
    gone->show();
    const std::shared_ptr<FilmSurface> film = screen->filmSurface();
    film->moveTo({0, 0, 40, 40});
    std::atomic<bool> ends = false;
    std::thread thread([&] {
        while (!ends)
            film->put(redFrame());
    });
    robot.until([&] { return film->shown().frame != nullptr; });
    gone->unload();
    EXPECT_EQ(renderedImage(screen->Image()).pixel(20, 20), qRgb(255, 0, 0)) << "a thumbnail in work is finished";
    gone->show();
    screen.reset();
    gone.reset();
    ends = true;
    thread.join();
    film->put(redFrame());
    desktop.DoEvents();
}

TEST_F(Painting, PlacesKeepTheirFractionsAndSizesFollowTheirContentInTheParentsScale)
{
    low.Left = 10.3F;
    box.Top = 12.7F;
    EXPECT_EQ(low.Left(), 10.3F);
    EXPECT_EQ(box.Top(), 12.7F);
    EXPECT_EQ(box.Width(), 40) << "a plan in twips on a form in pixels";
    Image inside(&box, {.Name = "inside", .Left = 150, .Width = 75});
    EXPECT_EQ(inside.Left(), 10);
    EXPECT_EQ(failureOf([&] { inside.Width = -1; }), "Invalid property value");
    EXPECT_EQ(inside.Width(), 5);
    box.AutoSize = true;
    box.Picture = plain(Red, 300, 200);
    EXPECT_EQ(box.Width(), 300);
    EXPECT_EQ(box.ScaleHeight(), 200);
    box.Picture = {};
    EXPECT_EQ(box.Width(), 300) << "an empty picture has no size to take";
    Form twips(desktop, {.Name = "T", .Width = 3000, .Height = 3000});
    PictureBox sized(&twips, {.Name = "sized"});
    sized.AutoSize = true;
    sized.Picture = plain(Red, 10, 20);
    EXPECT_EQ(sized.Width(), 150);
    EXPECT_EQ(sized.Height(), 300);
}

TEST_F(Painting, ALabelGrowsAboutItsAlignmentOrKeepsATextThatIsTooLongInItsPlace)
{
    low.Visible = false;
    high.Visible = false;
    text.ForeColor = Red;
    text.Caption = "far too many words to stand in eighty pixels";
    const Shot shot = robot.shot(form);
    int inside = 0;
    for (int y = 60; y < 100; ++y)
        for (int x = 0; x < 200; ++x)
            if (shot.at(x, y) != PanelGrey) {
                EXPECT_TRUE(x >= 9 && x <= 91) << x;
                ++inside;
            }
    EXPECT_GT(inside, 50);
    text.AutoSize = true;
    for (const auto alignment : {Alignment::Center, Alignment::Right}) {
        const float part = alignment == Alignment::Center ? 0.5F : 1;
        const auto kept = [&] { return text.Left() + text.Width() * part; };
        const float before = kept();
        text.Alignment = alignment;
        text.Caption = alignment == Alignment::Center ? "a rather long caption" : "short";
        EXPECT_FLOAT_EQ(kept(), before);
    }
    text.Alignment = Alignment::Left;
    text.Caption = "&&";
    EXPECT_GT(text.Width(), 0) << "one ampersand shows";
    text.WordWrap = true;
    text.Width = 30;
    const float line = text.Height();
    text.Caption = "several words in a narrow place";
    EXPECT_EQ(text.Width(), 30);
    EXPECT_GE(text.Height(), 2 * line);
}

TEST_F(Painting, TheScreensPointerBeatsTheFormsAndThatTheControlsDefault)
{
    const At item{15, 15};
    const At bare{2, 2};
    EXPECT_EQ(pointerOver(item), Qt::ArrowCursor);
    form.MousePointer = NoDropPointer;
    EXPECT_EQ(pointerOver(bare), Qt::ForbiddenCursor);
    EXPECT_EQ(pointerOver(item), Qt::ForbiddenCursor);
    low.MousePointer = TextPointer;
    EXPECT_EQ(pointerOver(item), Qt::IBeamCursor);
    low.MousePointer = OwnPointer;
    EXPECT_EQ(pointerOver(item), Qt::BitmapCursor);
    EXPECT_EQ(form.view()->client().cursor().pixmap().width(), 32) << "the screen's own pixels";
    EXPECT_EQ(pointerOver(bare), Qt::ForbiddenCursor);
    desktop.Screen().MousePointer = HourglassPointer;
    EXPECT_EQ(pointerOver(item), Qt::WaitCursor);
    desktop.Screen().MousePointer = DefaultPointer;
    low.MousePointer = DefaultPointer;
    form.MousePointer = DefaultPointer;
    EXPECT_EQ(pointerOver(item), Qt::ArrowCursor);
    robot.press(low, LeftButton, NoKeys, At{5, 5});
    low.MousePointer = NoDropPointer; // as its handler says
    EXPECT_EQ(pointerOver(bare), Qt::ForbiddenCursor);
    robot.release();
    EXPECT_EQ(pointerOver(bare), Qt::ArrowCursor);
}

} // namespace trovarium
