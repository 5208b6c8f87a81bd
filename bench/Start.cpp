// SPDX-License-Identifier: GPL-3.0-or-later

// Starts the program in the folder where it stands, as its own `main` does, and ends as soon as the main window
// is painted on the screen.

#include "platform/files/FileService.h"
#include "platform/system/Shell.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/FormWindow.h"
#include "startup/Program.h"
#include "store/Album.h"

#include <QWidget>
#include <QWindow>

#include <cstdlib>

int main(int argc, char** argv)
{
    using namespace trovarium;

    FileService files;
    Desktop desktop(argc, argv, files, Pace::Paced);
    Album album(files);
    Program program(desktop, album, programPath());
    const int exitCode = desktop.guarded([&] { program.Main(); });
    if (exitCode != 0)
        return exitCode;
    const QWindow* window = program.mainWindow()().window().windowHandle();
    while (!window->isExposed())
        desktop.repaintOnly();
    desktop.repaintOnly();
    std::_Exit(0); // what follows is the end of the program and not its start
}
