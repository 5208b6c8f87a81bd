#pragma once

#include <string>
#include <vector>

namespace trovarium {

// Where media are mounted that a person put in or called up, sticks, cards, discs and shares, as native paths in
// the order of their mounting; the home folder is no medium, wherever it lies. `table` lists what is mounted in the
// form of fstab.
std::vector<std::string> mountedMedia(const std::string& table = "/proc/self/mounts");

} // namespace trovarium
