// SPDX-License-Identifier: GPL-3.0-or-later

// Tells the megabytes of memory that are resident.
//
//   bench_memory group FOLDER    with a large group on show and no photograph
//   bench_memory steps FOLDER    the most while stepping through all photographs of the first group

#include "platform/files/FileService.h"
#include "support/MainWindow.h"

#include <iostream>
#include <string>

int main(int argc, char** argv)
{
    using namespace trovarium;

    if (argc != 3) {
        std::cerr << "usage: bench_memory group|steps FOLDER\n";
        return 2;
    }
    const std::string job = argv[1];
    const std::string folder = argv[2];
    FileService files;
    Desktop desktop(argc, argv, files, Pace::Paced);
    MainWindow window(desktop, folder);
    if (job == "group") {
        std::cout << residentMegabytes() << '\n';
        return 0;
    }
    constexpr int Unhurried = 20; // steps that wait until both neighbours are decoded
    window.robot().doubleClick(window.form().imgThumbnail(0));
    for (int i = 1; i < window.album().group.PhotoCount; ++i) {
        window.robot().click(window.form().pctNext);
        window.paint();
        if (i <= Unhurried)
            untilIdle(desktop);
    }
    if (window.album().view.CurrentIndex != window.album().group.PhotoCount) {
        std::cerr << "the last photograph was not reached\n";
        return 1;
    }
    std::cout << mostResidentMegabytes() << '\n';
    return 0;
}
