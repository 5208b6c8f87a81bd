// SPDX-License-Identifier: GPL-3.0-or-later

#include "WindowJobs.h"
#include "support/MainWindow.h"

#include <benchmark/benchmark.h>

namespace trovarium {

namespace {

void turnPage(benchmark::State& state, Desktop& desktop, const std::string& data)
{
    MainWindow window(desktop, data + "/library of 8 megapixels");
    const auto turn = [&] { window.robot().wheel(window.form().pctWindow, 1); };
    window.toPainted(turn);
    const int before = window.form().VScroll1.Value();
    for (auto _ : state)
        state.SetIterationTime(window.toPainted(turn));
    if (window.form().VScroll1.Value() != before + static_cast<int>(state.iterations()))
        state.SkipWithError("not every turn showed another page");
}

} // namespace

void addPageJobs(Desktop& desktop, const std::string& data)
{
    constexpr int Pages = 20;
    benchmark::RegisterBenchmark(
        "TurnPage", [&desktop, data](benchmark::State& state) { turnPage(state, desktop, data); })
        ->UseManualTime()
        ->Iterations(Pages)
        ->Unit(benchmark::kMillisecond);
}

} // namespace trovarium
