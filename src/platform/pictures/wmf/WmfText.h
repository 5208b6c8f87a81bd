#pragma once

#include "platform/pictures/wmf/WmfObjects.h"

#include <QPainterPath>

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

// A line of text as outlines, in the units of the records: it starts at 0 and stands on y = 0.
struct WmfLine {
    QPainterPath outline;
    double width = 0;
    double ascent = 0;
    double descent = 0;
};

// Sets text with the fonts that there are. Its bytes are read as Windows-1252, whatever the font's own
// characters are.
class WmfTypesetter {
public:
    // `advances`: how far to go from each character to the next; empty where the font tells.
    WmfLine line(const WmfFont& font, std::string_view text, const std::vector<int>& advances);

    // Nanoseconds, about, that setting it will take: fonts that are seen for the first time cost most.
    double work(const WmfFont& font, std::string_view text);

private:
    std::set<std::string> m_known;
};

} // namespace trovarium
