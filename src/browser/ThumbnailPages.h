// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/WindowPart.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace trovarium {

// The pages of sixteen thumbnails, and opening a group. Positions in a group and page numbers start at 1, cells at 0.
class ThumbnailPages : public WindowPart {
public:
    static constexpr int CellCount = Columns * Rows;

    ThumbnailPages(frmMain& form, Album& album);

    // Reads the list file (stem + ".lst") in SlideGroupPath into the group on show, and sets scrollbar and count. False
    // if it can't be read: then only GroupList has changed.
    bool LoadGroupFile(std::string_view FileName);

    // Opens the group on page 1; the one already on show keeps its page. False only after a failure.
    bool LoadSlideGroup(std::string_view FileName);

    // Reads the list of the group on show again and shows its page, which is empty if the list was deleted. False if
    // the list can't be read.
    bool reload();

    // Fills the cells one by one; events run in between and may change the page. `Page` is read again for each cell,
    // so that a caller who passes CurrentPage follows such a change.
    bool ShowThumbnails(const std::int32_t& Page);

    // Returns from a photograph, a film or a show to the page of the current photograph, and focuses its cell.
    void showCurrent();

    // Hides or shows all sixteen cells, even those past the end of the group. Showing sets ViewMode.
    bool ShowThumbnailBoxes(bool Show);

    void SetCountLabel(std::int32_t Index);

    void VScroll1_Change();

    // The position in the group of a cell of the current page.
    std::int32_t positionOf(int cell) const { return (CurrentPage - 1) * CellCount + cell + 1; }

    // The cell of the current photograph; -1 if it isn't on the page.
    int currentCell() const;

    std::int32_t CurrentPage = 0; // 0 until the first page was shown

private:
    void takeBackFrame();
    void setUpScrollBar();
    void fillCell(int cell, std::int32_t position);
    void emptyCell(int cell);
    std::string photographOf(const std::string& name);

    bool PageChangeBusy = false;
};

} // namespace trovarium
