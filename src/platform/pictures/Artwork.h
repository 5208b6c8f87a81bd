#pragma once

#include "platform/pictures/Picture.h"

#include <string_view>

namespace trovarium {

// One of the program's own drawings by its name in assets/; "File not found" for any other name.
Picture loadArtwork(std::string_view name);

} // namespace trovarium
