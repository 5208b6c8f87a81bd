// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace trovarium {

// The folder of the program as it was started (of a symbolic link its own folder, not its target's), in the
// program's form, without a separator at the end but for the root.
std::string programPath();
std::string programPath(const std::string& startedAs); // for tests: the path that was passed to exec

// Makes "/" the working folder. The one that the user starts from may be an album from somebody else, and libraries
// look for their settings there.
void workInRoot();

// The default place of the installed copy below the user's data folder, in the program's form.
std::string defaultInstallationPath();

inline constexpr int NormalWindow = 1;

// Opens a document in the desktop's program for it; above 32 on success. The name falls back to another case, as for
// reading. `ShowCommand` has no effect: that program decides how its window is shown.
int ShellOpenDocument(std::string_view Path, int ShowCommand);

// Starts a program with a normal window; "File not found" when it can't be.
void startProgram(std::string_view path);

} // namespace trovarium
