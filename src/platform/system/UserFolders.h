#pragma once

#include <string>
#include <string_view>

namespace trovarium {

// The user's home folder as a native path with no slash at the end, but for the root's; empty when the system
// knows none.
std::string homeFolder();

// A folder of the desktop's base folder rules: the environment's `variable` when it is an absolute path,
// else `belowHome` in the home folder. Native; empty without a home.
std::string userFolder(const char* variable, std::string_view belowHome);

} // namespace trovarium
