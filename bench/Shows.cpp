#include "WindowJobs.h"
#include "platform/media/FilmSurface.h"
#include "support/MainWindow.h"

#include <benchmark/benchmark.h>

#include <algorithm>

namespace trovarium {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int Second = 1000; // milliseconds

// A show of one photograph a second; the time is the most by which a change was late, painted.
void changeSlides(benchmark::State& state, MainWindow& window)
{
    constexpr int Slides = 10;
    frmMain& form = window.form();
    form.tmrSlideShow.Interval = Second;
    form.tmrSlideShow.Enabled = true;
    for (auto _ : state) {
        std::chrono::duration<double> latest{};
        Clock::time_point before = Clock::now();
        for (int slide = 0; slide < Slides; ++slide) {
            const int old = window.album().view.CurrentIndex;
            if (!window.robot().until([&] { return window.album().view.CurrentIndex != old; }))
                state.SkipWithError("the show stands still");
            window.paint();
            const Clock::time_point now = Clock::now();
            latest = std::max<std::chrono::duration<double>>(latest, now - before - std::chrono::milliseconds(Second));
            before = now;
        }
        state.SetIterationTime(latest.count());
    }
    form.tmrSlideShow.Enabled = false;
}

// From the double click on a clip until its first frame is painted.
void showFirstFrame(benchmark::State& state, MainWindow& window)
{
    for (auto _ : state)
        state.SetIterationTime(window.toPainted([&] { window.robot().doubleClick(window.form().imgThumbnail(0)); }));
    if (window.form().picVideoWindow.filmSurface()->shown().frame == nullptr)
        state.SkipWithError("no frame came up");
}

} // namespace

void addShowJobs(Desktop& desktop, const std::string& data)
{
    const auto add = [&desktop, data](const char* name, const char* library, auto job) {
        benchmark::RegisterBenchmark(name,
            [&desktop, folder = data + library, job](benchmark::State& state) {
                MainWindow window(desktop, folder);
                job(state, window);
            })
            ->UseManualTime()
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    };
    add("SlideChange", "/library of 24 megapixels", [](benchmark::State& state, MainWindow& window) {
        window.robot().doubleClick(window.form().imgThumbnail(0));
        untilIdle(window.desktop());
        changeSlides(state, window);
    });
    add("FirstFrame", "/library of a clip", showFirstFrame);
}

} // namespace trovarium
