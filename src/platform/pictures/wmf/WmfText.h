// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/wmf/WmfFile.h"

#include <QFont>
#include <QPainterPath>

#include <string_view>
#include <vector>

namespace trovarium {

struct WmfFont {
    explicit WmfFont(std::string_view name = {}); // in Windows-1252

    QFont face;           // in a size that nothing is fitted to pixels in
    int height = 0;       // of a line above 0, of an em below it, in units
    int averageWidth = 0; // 0 keeps the font's own proportions
    int escapement = 0;   // tenths of a degree, against the clock
};

WmfFont wmfFont(const WmfRecord& record);

// A line of text as outlines, in the units of the records: it starts at x = 0 and its baseline is y = 0.
struct WmfLine {
    QPainterPath outline;
    double width = 0;
    double ascent = 0;
    double descent = 0;
};

// Sets text with the fonts that there are. Its bytes are read as Windows-1252, whatever the font's own characters are.
// `advances`: how far to go from each character to the next; empty where the font tells.
WmfLine wmfLine(const WmfFont& font, std::string_view text, const std::vector<int>& advances);

} // namespace trovarium
