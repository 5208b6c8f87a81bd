// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/WindowPart.h"
#include "store/GroupHistory.h"

#include <cstdint>
#include <optional>
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

    // Moves the selected photographs as one block: +n after position n, -n before it.
    void reorder(std::int32_t position);

    // The last change to groups, and what was taken back. A group that was changed is shown; a step that can't be
    // carried out is told.
    void takeBack();
    void doAgain();
    GroupHistory& history() { return m_history; }

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
    bool createGroup(const std::string& fileName, std::int16_t Mode);
    bool moveLines(std::string_view fileName);
    void removeSelectedFromCurrent();
    void showAgain();
    void show(const std::optional<GroupHistory::Outcome>& outcome, const std::string& refused);
    bool setAside(const std::string& name); // false if it stays

    GroupHistory m_history;
};

} // namespace trovarium
