#pragma once

#include <cstdint>
#include <string>

namespace trovarium {

// The fields of one information file: the photograph now shown.
struct PhotoInfo {
    std::string PhotoLink;
    std::string Title;
    std::string Photographer;
    std::string Year;
    std::string People;
    std::string Place;
    std::string Event;
    std::string Keywords;
    std::int16_t ImageWidth = 0;  // pixels
    std::int16_t ImageHeight = 0; // pixels
};

} // namespace trovarium
