// SPDX-License-Identifier: GPL-3.0-or-later

// Builds the thumbnails of all photographs of a library and tells how many milliseconds that took, the two
// waits for the reader left out.
//
//   bench_thumbnails FOLDER

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

    if (argc != 2) {
        std::cerr << "usage: bench_thumbnails FOLDER\n";
        return 2;
    }
    const std::string folder = argv[1];
    FileService files;
    Desktop desktop(argc, argv, files, Pace::Immediate);
    Library library(desktop, folder);
    Album& album = library.album();
    CheckedArray<std::string> names;
    for (const std::string& name : files.list(album.paths.PhotoPath + "*.*"))
        names.append(name);

    VideoControls video(desktop, album);
    FormHolder<frmThumbnail> builder(desktop, [&] { return std::make_unique<frmThumbnail>(desktop, album, video); });
    const auto start = std::chrono::steady_clock::now();
    builder().load();
    builder().SetMissingList(names);
    builder().showModal();
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
    std::cout << taken.count() << '\n';
    return 0;
}
