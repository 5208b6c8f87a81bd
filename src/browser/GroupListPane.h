#pragma once

#include "browser/WindowPart.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace trovarium {

// The column of groups: eight rows that slide over the hidden, sorted list of all group names. What is enabled goes by
// the row of the press that opened a group; everything that reads or writes its list goes by the group's name.
class GroupListPane : public WindowPart {
public:
    GroupListPane(frmMain& form, Album& album);

    // Reads the group names from the folder. The window over the list stays where it is and no row stays
    // bright. False after a failure.
    bool LoadGroupNames();

    // Row 0 shows entry `NewFirstRow` (0-based) from now on; true when the rows moved. The group on show and
    // its row number stay.
    bool ScrollGroupNames(std::int32_t NewFirstRow);

    void CheckGroupScrollArrows();

    // The row with the name of `FileName` (stem + ".lst"), or -1.
    std::int16_t FindGroupRow(std::string_view FileName) const;

    // True for a name in the list, in any case, and for the empty name.
    bool GroupExists(std::string_view Name) const;

    // Reads the group on show again and shows its page, as a press on its row does, whatever row that is now. For
    // what has changed lists. A list that is gone leaves an empty page.
    void reopenGroup();

    // A renamed group: the entry and the caption with its old name get the new one.
    void renameEntry(const std::string& from, const std::string& to);

    // The row is that of the group of all photographs.
    bool isAllPhotosRow(int row) const;

    void pctAlbumList_MouseDown(int Index, int Button, int Shift, float X, float Y);
    void lbAlbumList_MouseMove(int Index);
    void pctArrows_Click(int Index);

    std::int32_t FirstGroupRow = 0;
    std::int16_t CurrentGroupRow = 0;
    std::string SelectedGroupName; // caption of the row last pressed, with any button

private:
    void openRow(int Index, bool isOther);
    int rowOf(std::string_view name) const;
    void light(int row);
    void showGroupMenu(int Index);
    void showRow(int row, const std::string& name);

    bool GroupScrollBusy = false;
};

} // namespace trovarium
