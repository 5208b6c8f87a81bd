// SPDX-License-Identifier: GPL-3.0-or-later

#include "WindowJobs.h"
#include "browser/Selection.h"
#include "support/MainWindow.h"

#include <benchmark/benchmark.h>

namespace trovarium {

namespace {

void selectAllAndReorder(benchmark::State& state, Desktop& desktop, const std::string& data)
{
    MainWindow window(desktop, data + "/library of many");
    frmMain& form = window.form();
    Robot& robot = window.robot();
    const int count = window.album().group.PhotoCount;
    robot.click(form.imgThumbnail(0));
    form.VScroll1.Value = form.VScroll1.Max();
    window.paint();
    int selected = 0;
    for (auto _ : state) {
        state.SetIterationTime(window.toPainted([&] {
            robot.press(form.imgThumbnail(15), LeftButton, ShiftKey);
            selected = window.album().group.SelectedCount;
            robot.moveTo(form.imgThumbnail(3), {}, ShiftKey);
            robot.release(ShiftKey);
        }));
    }
    if (count == 0 || selected != count || window.album().group.SelectedCount != 0)
        state.SkipWithError("not all were selected and moved");
}

} // namespace

void addGroupJobs(Desktop& desktop, const std::string& data)
{
    benchmark::RegisterBenchmark(
        "SelectAllAndReorder", [&desktop, data](benchmark::State& state) { selectAllAndReorder(state, desktop, data); })
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
}

} // namespace trovarium
