// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/FileService.h"
#include "platform/system/Shell.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "startup/Program.h"
#include "store/Album.h"
#include "store/COWReg.h"

#include <string>
#include <string_view>

int main(int argc, char** argv)
{
    using namespace trovarium;

    const std::string folder = programPath();
    workInRoot();
    FileService files;
    Desktop desktop(argc, argv, files, Pace::Paced, COWReg().GetOWSetting("Trovarium", "Options", "Scale", ""));
    // The installed command shows in a window why it can't start.
    if (argc == 3 && std::string_view(argv[1]) == "--message")
        return desktop.guarded([&] { desktop.prompts().messageBox(argv[2], Message::Error, ""); });

    Album album(files);
    Program program(desktop, album, folder);
    const int exitCode = desktop.guarded([&] { program.Main(); });
    return exitCode != 0 ? exitCode : desktop.run();
}
