// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

// The user's home folder as a native path with no slash at the end, but for the root's; empty when the system
// knows none.
std::string homeFolder();

// A folder of the XDG base directories: the environment's `variable` when it is an absolute path,
// else `belowHome` in the home folder. Native; empty without a home.
std::string userFolder(const char* variable, std::string_view belowHome);

// Whether a native folder lies where removable media and shares have theirs: below /media, /run/media and /mnt.
bool isOnMedium(std::string_view folder);

// Where removable media and shares are mounted, as native paths in the order of their mounting. The home folder is
// never among them.
std::vector<std::string> mountedMedia();

} // namespace trovarium
