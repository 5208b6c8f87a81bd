#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace trovarium {

struct Album;
class frmMain;

enum : std::int16_t { CreateEmpty = 0, CreateWithCopies = 1, CreateByMoving = 2 };

// Makes, removes and renames groups, and carries the selected photographs between them.
class GroupCommands {
public:
    GroupCommands(frmMain& form, Album& album);

    // Asks for a name and makes the group, empty or with the selection. It is not opened.
    void CreateAlbumGroup(std::int16_t Mode);

    // Acts on the row last pressed, with any button.
    void DeleteAlbumGroup();

    // Acts on the group on show.
    void RenameAlbumGroup();

    // `FileName` is a stem + ".lst". The selection stays after a copy and is gone after a move. A move from a list that
    // somebody else has changed since it was read moves nothing, and reads it again.
    void AddToGroup(std::string_view FileName);
    void MoveToGroup(std::string_view FileName);

    void mnuThumbRemove_Click();
    void mnuEditRemoveFromGroup_Click();
    void mnuEditAdd_Click();
    void mnuEditMove_Click();
    void mnuThumbAdd_Click();
    void mnuThumbMove_Click();
    void mnuThumbMoveNewGroup_Click();

private:
    // A named operation without a control.
    void mnuThumbCopyNewGroup_Click();

    bool askForNewName(std::string& name);
    bool isFree(const std::string& name) const;
    bool renameTo(const std::string& name);
    void removeSelectedFromCurrent();
    void showAgain();

    frmMain& m_form;
    Album& m_album;
};

} // namespace trovarium
