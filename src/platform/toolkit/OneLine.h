#pragma once

#include <string>
#include <string_view>

namespace trovarium {

// `text` with a blank for each line end (CR LF, CR or LF), for fields of one line.
std::string oneLine(std::string_view text);

} // namespace trovarium
