// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/WindowPart.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace trovarium {

enum : std::int16_t { CreateEmpty = 0, CreateWithCopies = 1, CreateByMoving = 2 };

// Creates, deletes and renames groups, moves the selected photographs between them, and removes photographs.
class GroupCommands : public WindowPart {
public:
    GroupCommands(frmMain& form, Album& album);

    // Asks for a name and makes the group, empty or with the selection. It is not opened.
    void CreateAlbumGroup(std::int16_t Mode);

    // Acts on the row last pressed, with any button.
    void DeleteAlbumGroup();

    // Acts on the group on show.
    void RenameAlbumGroup();

    // `FileName` is a stem + ".lst". A copy keeps the selection, a move clears it. If the list on show was changed by
    // another program since it was read, a move only reads it again.
    void AddToGroup(std::string_view FileName);
    void MoveToGroup(std::string_view FileName);

    // Removes the selected photographs from the library and from every group. Photograph, information and clip move
    // to a folder "Removed" inside their own; only the thumbnail is deleted. Failures are skipped without a message.
    void RemoveFromProgram();

    // Ask for the group that the selected photographs are copied or moved to.
    void mnuEditAdd_Click();
    void mnuEditMove_Click();
    void mnuThumbAdd_Click() { mnuEditAdd_Click(); }
    void mnuThumbMove_Click() { mnuEditMove_Click(); }

    void mnuThumbRemove_Click();
    void mnuEditRemoveFromGroup_Click() { mnuThumbRemove_Click(); }

private:
    // Without a control: there is no such entry in the menu of thumbnails.
    void mnuThumbCopyNewGroup_Click() { CreateAlbumGroup(CreateWithCopies); }

    bool askForNewName(std::string& name);
    bool isFree(const std::string& name) const;
    bool renameTo(const std::string& name);
    void removeSelectedFromCurrent();
    void showAgain();
    void setAside(const std::string& name);
};

} // namespace trovarium
