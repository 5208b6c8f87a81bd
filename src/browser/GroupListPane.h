// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/WindowPart.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

// The column of groups: eight rows that show a part of the hidden, sorted list of all group names. Menu entries are
// enabled by the row that was pressed to open the group; lists are read and written by the group's name.
class GroupListPane : public WindowPart {
public:
    GroupListPane(frmMain& form, Album& album);

    // Reads the group names from the folder. Keeps the scroll position; no row is highlighted afterwards. False after
    // a failure.
    bool LoadGroupNames();

    // The same, and scrolls to the first entry if all fit now. For use after Ctrl+Z, which can remove a group.
    void reload();

    // Scrolls entry `NewFirstRow` (0-based) to row 0; true when the rows moved. The group on show and its row number
    // don't change.
    bool ScrollGroupNames(std::int32_t NewFirstRow);

    void CheckGroupScrollArrows();

    // The row with the name of `FileName` (stem + ".lst"), or -1.
    std::int16_t FindGroupRow(std::string_view FileName) const;

    // True for a name in the list, in upper or lower case, and for the empty name.
    bool GroupExists(std::string_view Name) const;

    // The row there, in pixels of the form, or -1. Hidden rows count too.
    int rowAt(float x, float y) const;

    // Reads the group on show again and shows its page, as a press on its row does. For callers that changed lists. A
    // deleted list leaves an empty page.
    void reopenGroup();

    // Shows the group by its name with these photographs selected, on the page of the position, whatever was on show.
    // The list scrolls to its row.
    void showGroup(const std::string& name, std::int32_t position, const std::vector<std::int32_t>& selected);

    // Gives the entry and the row of a renamed group the new name.
    void renameEntry(const std::string& from, const std::string& to);

    // Whether the row shows the group of all photographs.
    bool isAllPhotosRow(int row) const;

    void pctAlbumList_MouseDown(int Index, int Button, int Shift, float X, float Y);
    void lbAlbumList_MouseDown(int Index, int Button, int Shift, float X, float Y);
    void lbAlbumList_MouseMove(int Index);
    void pctArrows_Click(int Index);

    std::int32_t FirstGroupRow = 0;
    std::int16_t CurrentGroupRow = 0;
    std::string SelectedGroupName; // caption of the row that was last pressed, with any button

private:
    void openRow(int Index, bool isOther);
    int rowOf(std::string_view name) const;
    void scrollTo(const std::string& name);
    void markAsOpen(const std::string& name);
    void light(int row);
    void showGroupMenu(int Index);
    void showRow(int row, const std::string& name);

    bool GroupScrollBusy = false;
};

} // namespace trovarium
