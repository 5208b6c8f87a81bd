// SPDX-License-Identifier: GPL-3.0-or-later

#include "WindowJobs.h"
#include "platform/media/FilmSurface.h"
#include "support/MainWindow.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace trovarium {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int Second = 1000; // milliseconds

// A show of one photograph a second. The time is the most by which a change, painted, was late by a clock that began
// with the show, so that delays which add up count too.
void changeSlides(benchmark::State& state, MainWindow& window)
{
    constexpr int Slides = 20;
    constexpr std::chrono::seconds GivenUp(20);
    frmMain& form = window.form();
    form.tmrSlideShow.Interval = Second;
    for (auto _ : state) {
        std::chrono::duration<double> latest{};
        Clock::time_point due = Clock::now();
        form.tmrSlideShow.Enabled = true;
        for (int slide = 0; slide < Slides; ++slide) {
            const int old = window.album().view.CurrentIndex;
            due += std::chrono::milliseconds(Second);
            while (window.album().view.CurrentIndex == old && Clock::now() < due + GivenUp) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
                window.desktop().DoEvents();
            }
            if (window.album().view.CurrentIndex == old)
                state.SkipWithError("the show stands still");
            window.paint();
            latest = std::max<std::chrono::duration<double>>(latest, Clock::now() - due);
        }
        form.tmrSlideShow.Enabled = false;
        state.SetIterationTime(latest.count());
    }
}

// From the double click on a clip until its first frame is painted.
void showFirstFrame(benchmark::State& state, MainWindow& window)
{
    for (auto _ : state)
        state.SetIterationTime(window.toPainted([&] { window.robot().doubleClick(window.form().imgThumbnail(0)); }));
    if (window.form().picVideoWindow.filmSurface()->shown().frame.isNull())
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
