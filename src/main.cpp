#include "platform/files/FileService.h"
#include "platform/system/Shell.h"
#include "platform/toolkit/Desktop.h"
#include "startup/Program.h"
#include "store/Album.h"

int main(int argc, char** argv)
{
    using namespace trovarium;

    FileService files;
    Desktop desktop(argc, argv, files, Pace::Paced);
    Album album(files);
    Program program(desktop, album, programPath(argc > 0 ? argv[0] : ""));
    const int exitCode = desktop.guarded([&] { program.Main(); });
    return exitCode != 0 ? exitCode : desktop.run();
}
