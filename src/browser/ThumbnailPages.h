#pragma once

#include "browser/WindowPart.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace trovarium {

// The pages of sixteen thumbnails, and how a group becomes the one on show. Positions in a group and pages are
// 1-based, cells 0 to 15.
class ThumbnailPages : public WindowPart {
public:
    static constexpr int CellCount = Columns * Rows;

    ThumbnailPages(frmMain& form, Album& album);

    // Reads the list file (stem + ".lst") of SlideGroupPath into the group on show and sets up the scrollbar
    // and the count. False when it can't be read: all but GroupList then keeps its state.
    bool LoadGroupFile(std::string_view FileName);

    // The group on show keeps its page, any other opens on page 1. False only after a failure.
    bool LoadSlideGroup(std::string_view FileName);

    // Reads the list of the group on show again and shows its page. False when the list can't be read; an empty page
    // for one that is gone.
    bool reload();

    // Fills the cells while events run, one by one. The page is looked at anew with every cell, so that a
    // caller that passes CurrentPage follows a page change that comes in between.
    bool ShowThumbnails(const std::int32_t& Page);

    // Back from a photograph, a film or a show: the page of the current photograph, whose cell gets the focus.
    void showCurrent();

    // Hides or shows all sixteen cells, also those beyond the end of the group; showing is the thumbnail view.
    bool ShowThumbnailBoxes(bool Show);

    void SetCountLabel(std::int32_t Index);

    void VScroll1_Change();

    // Position of a cell of the page on show.
    std::int32_t positionOf(int cell) const { return (CurrentPage - 1) * CellCount + cell + 1; }

    // That of the current photograph; -1 when it isn't on the page.
    int currentCell() const;

    std::int32_t CurrentPage = 0; // 0 until the first page was shown

private:
    void takeBackFrame();
    void setUpScrollBar();
    void fillCell(int cell, std::int32_t position);
    void emptyCell(int cell);

    bool PageChangeBusy = false;
};

} // namespace trovarium
