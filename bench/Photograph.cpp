// SPDX-License-Identifier: GPL-3.0-or-later

#include "WindowJobs.h"
#include "browser/ThumbnailPages.h"
#include "platform/files/FileService.h"
#include "support/MainWindow.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <functional>

namespace trovarium {

namespace {

constexpr int Cell = 4; // a landscape photograph; the floor decodes the same
constexpr int EscapeKey = 27;

using Job = std::function<void(benchmark::State&, MainWindow&)>;

// Counts what is read from files while it lives.
class PictureReads {
public:
    explicit PictureReads(FileService& files)
        : m_files(files)
    {
        files.setFaultHook([this](FileOperation operation, std::string_view) {
            m_count += operation == FileOperation::Picture ? 1 : 0;
        });
    }
    ~PictureReads() { m_files.setFaultHook({}); }
    PictureReads(const PictureReads&) = delete;
    PictureReads& operator=(const PictureReads&) = delete;

    int count() const { return m_count; }

private:
    FileService& m_files;
    int m_count = 0;
};

void openPhotograph(benchmark::State& state, MainWindow& window)
{
    window.goBackToThumbnails();
    for (auto _ : state)
        state.SetIterationTime(window.toPainted([&] { window.robot().doubleClick(window.form().imgThumbnail(Cell)); }));
    if (!window.form().imgbox.Visible())
        state.SkipWithError("no photograph came up");
}

void stepToNext(benchmark::State& state, MainWindow& window)
{
    const auto step = [&] { window.robot().click(window.form().pctNext); };
    window.toPainted(step);
    untilIdle(window.desktop());
    const int before = window.album().view.CurrentIndex;
    for (auto _ : state)
        state.SetIterationTime(window.toPainted(step));
    if (window.album().view.CurrentIndex != before + 1)
        state.SkipWithError("no other photograph came up");
}

// Moves the picture in the frame a pixel at a time. The time is the mean of all moves.
void drag(benchmark::State& state, MainWindow& window)
{
    Image& imgbox = window.form().imgbox;
    constexpr float FromCorner = 100;
    const At grip{FromCorner - std::min(0.0F, imgbox.Left()), FromCorner - std::min(0.0F, imgbox.Top())};
    window.robot().press(imgbox, LeftButton, NoKeys, grip);
    const auto move = [&] { window.robot().moveTo(imgbox, At{grip.x + 1, grip.y + 1}); };
    window.toPainted(move);
    const float before = imgbox.Left();
    double slowest = 0;
    for (auto _ : state) {
        const double taken = window.toPainted(move);
        state.SetIterationTime(taken);
        slowest = std::max(slowest, taken);
    }
    window.robot().release();
    state.counters["slowest"] = slowest * 1000;
    if (imgbox.Left() != before + static_cast<float>(state.iterations()))
        state.SkipWithError("the picture didn't follow the mouse");
}

// The widget of the photograph with a picture that needs no scaling.
void dragReadyPicture(benchmark::State& state, MainWindow& window)
{
    frmMain& form = window.form();
    form.imgbox.Picture = form.pctWindow.Image();
    form.imgbox.Width = form.pctWindow.ScaleWidth();
    form.imgbox.Height = form.pctWindow.ScaleHeight();
    form.imgbox.Left = 0;
    form.imgbox.Top = 0;
    window.paint();
    drag(state, window);
}

// From the level that fits the frame to 3/1 and back again; the time is that of the slowest step.
void zoomStep(benchmark::State& state, MainWindow& window)
{
    frmMain& form = window.form();
    const std::int16_t fit = window.album().view.ZoomLevel;
    const PictureReads reads(window.desktop().files());
    for (auto _ : state) {
        double slowest = 0;
        while (window.album().view.ZoomLevel < 3)
            slowest = std::max(slowest, window.toPainted([&] { window.robot().click(form.cmdZoomIn); }));
        while (window.album().view.ZoomLevel > fit)
            slowest = std::max(slowest, window.toPainted([&] { window.robot().click(form.cmdZoomOut); }));
        state.SetIterationTime(slowest);
    }
    if (reads.count() != 0)
        state.SkipWithError("something was decoded again");
}

void showFullScreen(benchmark::State& state, MainWindow& window)
{
    const PictureReads reads(window.desktop().files());
    for (auto _ : state)
        state.SetIterationTime(window.toPainted([&] { window.robot().click(window.form().cmdFullScreen); }));
    Form& fullScreen = *window.desktop().activeForm();
    state.counters["width"] = fullScreen.Width() / TwipsPerPixel;
    if (fullScreen.Name() != "frmFullScreen")
        state.SkipWithError("no full screen came up");
    else
        window.robot().key(fullScreen, EscapeKey);
    if (reads.count() != 0)
        state.SkipWithError("something was decoded again");
}

} // namespace

void addPhotographJobs(Desktop& desktop, const std::string& data)
{
    const auto add = [&desktop, data](const char* name, int turns, Job job, const char* kind = "") {
        benchmark::RegisterBenchmark(name,
            [&desktop, library = data + "/library of 12 megapixels" + kind, job = std::move(job)](
                benchmark::State& state) {
                MainWindow window(desktop, library);
                window.openPhotograph(Cell);
                job(state, window);
            })
            ->UseManualTime()
            ->Iterations(turns)
            ->Unit(benchmark::kMillisecond);
    };
    const auto dragAt = [](int level) {
        return [level](benchmark::State& state, MainWindow& window) {
            window.zoomTo(level);
            drag(state, window);
        };
    };
    constexpr int Moves = 50;
    add("OpenPhotograph", 1, openPhotograph);
    add("OpenPhotographOfP3", 1, openPhotograph, " of P3");
    add("StepToNext", 1, stepToNext);
    add("DragReadyPicture", Moves, dragReadyPicture);
    add("DragAtQuarter", Moves, dragAt(-4));
    add("DragAtThreefold", Moves, dragAt(3));
    add("ZoomStep", 1, zoomStep);
    add("ShowFullScreen", 1, showFullScreen);
}

} // namespace trovarium
