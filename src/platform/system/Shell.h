#pragma once

#include <string>
#include <string_view>

namespace trovarium {

// The folder that holds the program as it was started (a link's own folder, not its target's), in the
// program's form, without a separator at the end but for the root.
std::string programPath(std::string_view argument0);

// Leaves the working folder, which may be an album from somebody else, for "/": the sound library, for one, would read
// its settings there.
void workInRoot();

// The default place of the installed copy below the user's data folder, in the program's form.
std::string defaultInstallationPath();

inline constexpr int NormalWindow = 1;

// Hands a document, found as a file that is read, to the desktop's own program for it; a value above 32 when that was
// done. How its window is shown is left to that program.
int ShellOpenDocument(std::string_view Path, int ShowCommand);

// Starts a program with a normal window; "File not found" when it can't be.
void startProgram(std::string_view path);

} // namespace trovarium
