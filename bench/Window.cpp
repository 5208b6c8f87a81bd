// SPDX-License-Identifier: GPL-3.0-or-later

// What a user waits for in the main window, as Google Benchmark's jobs.
//
//   bench_window FOLDER [Google Benchmark's options]      FOLDER holds the libraries

#include "WindowJobs.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"

#include <benchmark/benchmark.h>

#include <iostream>
#include <string>

int main(int argc, char** argv)
{
    using namespace trovarium;

    benchmark::Initialize(&argc, argv);
    if (argc != 2) {
        std::cerr << "usage: bench_window FOLDER [options of Google Benchmark]\n";
        return 2;
    }
    const std::string data = argv[1];
    FileService files;
    Desktop desktop(argc, argv, files, Pace::Paced);
    addActs(desktop, data);
    addPageJobs(desktop, data);
    addPhotographJobs(desktop, data);
    addGroupJobs(desktop, data);
    addShowJobs(desktop, data);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
