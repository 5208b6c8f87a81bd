#pragma once

#include <utility>
#include <vector>

namespace trovarium {

// Names and values of libmpv's options by which films sound: none where its own choice will do, silence where nothing
// could sound, since looking for a device in vain would hold up the first frame.
std::vector<std::pair<const char*, const char*>> filmSoundOptions();

} // namespace trovarium
