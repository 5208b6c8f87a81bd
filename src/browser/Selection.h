#pragma once

#include "browser/WindowPart.h"

#include <cstdint>

namespace trovarium {

// The photographs of the group that are picked, in the manner of a file list, across pages.
class Selection : public WindowPart {
public:
    Selection(frmMain& form, Album& album);

    // `Position` is 1-based; -1 drops the whole selection. `Mode` is the Shift argument of the mouse: 0 this
    // one alone, 1 from the anchor on, 2 toggles, 3 adds. Adding and extending count a photograph once more
    // that was selected already: SelectedCount is what the status shows, the flags are what commands read.
    void SetGroupListSelect(std::int32_t Position, std::int16_t Mode);

    // Frames and status text of the page on show.
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
