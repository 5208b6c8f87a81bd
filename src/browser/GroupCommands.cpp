// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/GroupCommands.h"

#include "browser/GroupListPane.h"
#include "browser/Selection.h"
#include "browser/ThumbnailPages.h"
#include "browser/frmMain.h"
#include "check/RepairPasses.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/GroupFile.h"
#include "store/Log.h"
#include "store/PhotographFiles.h"

namespace trovarium {

GroupCommands::GroupCommands(frmMain& form, Album& album)
    : WindowPart(form, album)
{
    on(form.mnuEditAdd.Click, this, &GroupCommands::mnuEditAdd_Click);
    on(form.mnuEditMove.Click, this, &GroupCommands::mnuEditMove_Click);
    on(form.mnuThumbAdd.Click, this, &GroupCommands::mnuThumbAdd_Click);
    on(form.mnuThumbMove.Click, this, &GroupCommands::mnuThumbMove_Click);
    on(form.mnuThumbRemove.Click, this, &GroupCommands::mnuThumbRemove_Click);
    on(form.mnuEditRemoveFromGroup.Click, this, &GroupCommands::mnuEditRemoveFromGroup_Click);
}

void GroupCommands::CreateAlbumGroup(std::int16_t Mode)
try {
    std::string name = "new group";
    if (!askForNewName(name))
        return;
    constexpr int fileNumber = 1;
    // Appending keeps what may be there.
    m_album.files.open(groupListPath(m_album, name + ".lst"), OpenMode::Append, fileNumber);
    m_album.files.close(fileNumber);
    if (Mode == CreateWithCopies)
        AddToGroup(name + ".lst");
    else if (Mode == CreateByMoving)
        MoveToGroup(name + ".lst");
    m_form.groupList().LoadGroupNames();
} catch (const Failure& failure) {
    logFailure(m_album, "CreateAlbumGroup", failure);
}

// False when the box was cancelled. The name is tested as typed and again after its characters were replaced.
bool GroupCommands::askForNewName(std::string& name)
{
    Prompts& prompts = m_form.desktop().prompts();
    for (;;) {
        name = prompts.inputBox("Enter name for new group.", "New Album Group", name);
        if (name.empty())
            return false;
        if (!m_form.groupList().GroupExists(name)) {
            CheckGroupName(name);
            if (isFree(name))
                return true;
        }
        prompts.messageBox("Album group name already exists. Select a new name.", Message::Notice, "Group Exists.");
    }
}

// Looks in the folder too: another program may have put a list there since the names were read.
bool GroupCommands::isFree(const std::string& name) const
{
    return !m_form.groupList().GroupExists(name) && !equalInCapitals(name, ScratchGroupName)
        && !hasGroupList(m_album, name + ".lst");
}

void GroupCommands::DeleteAlbumGroup()
try {
    const std::string& name = m_form.groupList().SelectedGroupName;
    const Answer answer = m_form.desktop().prompts().messageBox(
        "Are you sure you want to delete this group -> " + name, Message::Warning, "");
    if (answer != Answer::Yes)
        return;
    if (!hasGroupList(m_album, name + ".lst"))
        return;
    m_album.files.remove(groupListPath(m_album, name + ".lst"));
    m_form.groupList().LoadGroupNames();
    attempt([&] { m_album.files.remove(m_album.paths.MidiPath + name + ".mid"); });
} catch (const Failure& failure) {
    // Logged under this name on purpose.
    logFailure(m_album, "CreateAlbumGroup", failure);
}

void GroupCommands::RenameAlbumGroup()
{
    // The group of all photographs is recognised by its name alone.
    if (isAllPhotosGroup(m_album.group.CurrentGroupName))
        return;
    Prompts& prompts = m_form.desktop().prompts();
    std::string name;
    for (;;) {
        name = prompts.inputBox("Rename \"" + m_album.group.CurrentGroupName + "\" group to ...", "Rename Group", name);
        if (name.empty())
            return;
        CheckGroupName(name);
        bool renamed = false;
        attempt([&] { renamed = isFree(name) && renameTo(name); });
        if (renamed)
            return;
        prompts.messageBox("Group name already in use. Try another", Message::Error, "Rename Group");
    }
}

// False when the list file could not be renamed. Most groups have no music, so that failure doesn't count.
bool GroupCommands::renameTo(const std::string& name)
{
    FileService& files = m_album.files;
    const AlbumPaths& paths = m_album.paths;
    const std::string old = m_album.group.CurrentGroupName;
    if (attempt([&] { files.rename(groupListPath(m_album, old + ".lst"), groupListPath(m_album, name + ".lst")); }))
        return false;
    attempt([&] { files.rename(paths.MidiPath + old + ".mid", paths.MidiPath + name + ".mid"); });
    m_album.group.CurrentGroupName = name;
    GroupListPane& list = m_form.groupList();
    list.renameEntry(old, name);
    if (list.SelectedGroupName == old)
        list.SelectedGroupName = name;
    return true;
}

void GroupCommands::AddToGroup(std::string_view FileName)
{
    trovarium::AddToGroup(m_album, FileName);
}

void GroupCommands::MoveToGroup(std::string_view FileName)
{
    if (!isGroupAsRead(m_album))
        showAgain();
    // If the copy failed, for instance on a full disk, the photographs stay here and selected.
    else if (trovarium::AddToGroup(m_album, FileName))
        removeSelectedFromCurrent();
}

void GroupCommands::removeSelectedFromCurrent()
{
    if (isGroupAsRead(m_album))
        RemoveFromGroupFile(m_album, m_album.group.currentGroupFile());
    showAgain();
}

void GroupCommands::showAgain()
{
    m_form.pages().reload();
    m_form.selection().SetGroupListSelect(-1, NoKeys);
}

void GroupCommands::mnuEditAdd_Click()
{
    m_form.dialogs().showGroups(CreateWithCopies);
}

void GroupCommands::mnuEditMove_Click()
{
    m_form.dialogs().showGroups(CreateByMoving);
}

void GroupCommands::mnuThumbRemove_Click()
{
    const Answer answer = m_form.desktop().prompts().messageBox(
        "Are you sure you want to remove the photograph(s) from this group?", Message::Warning, "");
    if (answer == Answer::Yes)
        removeSelectedFromCurrent();
}

void GroupCommands::RemoveFromProgram()
{
    const AlbumPaths& paths = m_album.paths;
    const Answer answer = m_form.desktop().prompts().messageBox(
        "Are you sure you want to remove selected photograph(s) from the program? The removed photograph(s) will be "
        "place in the following folder -> "
            + toNativePath(paths.PhotoPath + "Removed"),
        Message::Warning, "Remove photos from Album");
    if (answer != Answer::Yes)
        return;
    m_form.MousePointer = HourglassPointer;
    for (const std::string& folder : {paths.PhotoPath, paths.InfoPath, paths.AudioPath})
        attempt([&] { m_album.files.makeFolder(folder + "Removed"); });
    std::int16_t last = -1;
    if (m_album.group.isWhole)
        attempt([&] { last = toInt16(m_album.group.GroupSelect.upperBound()); });
    for (int i = 0; i <= last; ++i) {
        attempt([&] {
            if (m_album.group.GroupSelect(i) == 1 && isPhotographName(m_album.group.GroupList(i)))
                setAside(m_album.group.GroupList(i));
        });
    }
    attempt([&] { RemoveMissingPhotosFromGroup(m_album, m_form.desktop()); });
    m_form.groupList().reopenGroup();
    m_form.MousePointer = DefaultPointer;
}

// If the photograph can't be moved, its information and its places in the groups stay too. One that is only linked has
// no file here.
void GroupCommands::setAside(const std::string& name)
{
    FileService& files = m_album.files;
    const AlbumPaths& paths = m_album.paths;
    const std::string photo = photographPath(paths, name);
    attempt([&] { files.remove(paths.PhotoPath + "Removed_Photos\\" + name); });
    attempt([&] { trovarium::setAside(files, paths.PhotoPath, name); });
    if (files.exists(photo))
        return;
    attempt([&] { files.remove(thumbnailPath(paths, name)); });
    attempt([&] { trovarium::setAside(files, paths.InfoPath, name + ".info"); });
    attempt([&] { trovarium::setAside(files, paths.AudioPath, name + ".wav"); });
}

} // namespace trovarium
