// SPDX-License-Identifier: GPL-3.0-or-later

// How long the export of a whole group takes until the last change of the dialog is painted, in milliseconds.
//
//   bench_export LIBRARY FOLDER COUNT     a group of another size is an error

#include "export/frmExport.h"
#include "platform/files/FileService.h"
#include "platform/files/Paths.h"
#include "support/MainWindow.h"

#include <iostream>
#include <string>

int main(int argc, char** argv)
{
    using namespace trovarium;

    if (argc != 4) {
        std::cerr << "usage: bench_export LIBRARY FOLDER COUNT\n";
        return 2;
    }
    FileService files;
    Desktop desktop(argc, argv, files, Pace::Paced);
    MainWindow window(desktop, argv[1]);
    GroupOnShow& group = window.album().group;
    for (int position = 0; position <= group.GroupSelect.upperBound(); ++position)
        group.GroupSelect(position) = position > 0 ? 1 : 0;
    frmExport form(desktop, window.album());
    form.show();
    form.Dir1.Path = fromNativePath(argv[2]);
    window.paint();
    std::cout << 1000 * window.toPainted([&] { window.robot().click(form.cmdExport); }) << '\n';
    const bool isWhole = form.List1.ListCount() == std::stoi(argv[3]);
    if (!isWhole)
        std::cerr << form.List1.ListCount() << " files\n";
    form.unload();
    return isWhole ? 0 : 1;
}
