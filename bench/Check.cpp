// SPDX-License-Identifier: GPL-3.0-or-later

// The check of a start on a library, in milliseconds.
//
//   bench_check all FOLDER      the four passes and the repair of the groups
//   bench_check missing FOLDER  up to the question whether the thumbnails are to be built

#include "check/RepairPasses.h"
#include "check/frmSplash.h"
#include "check/frmThumbnail.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Form.h"
#include "support/Library.h"
#include "viewer/VideoControls.h"

#include <chrono>
#include <iostream>
#include <string>

int main(int argc, char** argv)
{
    using namespace trovarium;

    if (argc != 3) {
        std::cerr << "usage: bench_check all|missing FOLDER\n";
        return 2;
    }
    const std::string job = argv[1];
    const std::string folder = argv[2];
    FileService files;
    Desktop desktop(argc, argv, files, Pace::Paced);
    Library library(desktop, folder);
    Album& album = library.album();
    FormHolder<frmSplash> splash(desktop, [&] { return std::make_unique<frmSplash>(desktop, album); });
    VideoControls video(desktop, album);
    FormHolder<frmThumbnail> builder(desktop, [&] { return std::make_unique<frmThumbnail>(desktop, album, video); });
    splash().show();
    desktop.DoEvents();

    const auto start = std::chrono::steady_clock::now();
    RepairPasses passes(album, splash(), builder);
    if (job == "missing") {
        passes.PhotoFilesExist(false);
        passes.ThumbnailFilesExist(false);
    } else {
        passes.CheckFolderContents();
        RemoveMissingPhotosFromGroup(album, desktop);
    }
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
    std::cout << taken.count() << '\n';
    splash().unload();
    return 0;
}
