// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/WindowPart.h"

#include <cstdint>
#include <vector>

namespace trovarium {

// The selected photographs of the group, across pages, with the rules of a file list.
class Selection : public WindowPart {
public:
    Selection(frmMain& form, Album& album);

    // `Position` is 1-based; -1 clears the selection. `Mode` is the Shift argument of the mouse: 0 selects this one
    // alone, 1 extends from the anchor, 2 toggles, 3 adds. Extending and adding count a photograph again that is
    // selected already, so SelectedCount, which the status bar shows, may exceed the number of set flags.
    void SetGroupListSelect(std::int32_t Position, std::int16_t Mode);

    // Selects these and no others.
    void select(const std::vector<std::int32_t>& positions);

    // Updates the frames of the current page and the status text.
    void ShowGroupListSelect();

    void imgThumbnail_MouseDown(int Index, int Button, int Shift, float X, float Y);
    void imgThumbnail_DblClick(int Index);

private:
    void clear();
    void toggle(std::int32_t Position);
    void extendTo(std::int32_t Position);
    void pressLeft(std::int32_t position, int Shift, float X, float Y);
    void pressRight(std::int32_t position);

    std::int16_t LastSelected = 0; // the anchor of a range
};

} // namespace trovarium
