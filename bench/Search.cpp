// SPDX-License-Identifier: GPL-3.0-or-later

// How long a search by two fields takes until its last change is painted, in milliseconds.
//
//   bench_search LIBRARY TITLE PEOPLE FOUND     a count other than FOUND is an error

#include "platform/files/FileService.h"
#include "search/frmSearch.h"
#include "support/MainWindow.h"

#include <iostream>
#include <string>

int main(int argc, char** argv)
{
    using namespace trovarium;

    if (argc != 5) {
        std::cerr << "usage: bench_search LIBRARY TITLE PEOPLE FOUND\n";
        return 2;
    }
    FileService files;
    Desktop desktop(argc, argv, files, Pace::Paced);
    MainWindow window(desktop, argv[1]);
    frmSearch form(desktop, window.album(), window.form());
    form.show();
    form.txtTitle.Text = argv[2];
    form.txtPeople.Text = argv[3];
    window.paint();
    std::cout << 1000 * window.toPainted([&] { window.robot().click(form.cmdSearch); }) << '\n';
    const bool isRight = form.lbProgress.Caption().ends_with(" Found " + std::string(argv[4]));
    if (!isRight)
        std::cerr << form.lbProgress.Caption() << '\n';
    form.unload();
    return isRight ? 0 : 1;
}
