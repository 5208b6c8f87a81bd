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

#include <numeric>
#include <set>

namespace trovarium {

GroupCommands::GroupCommands(frmMain& form, Album& album)
    : WindowPart(form, album)
    , m_history(album)
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
    const std::string fileName = name + ".lst";
    bool isChanged = false; // the group on show
    std::set<std::string> files{fileName};
    if (Mode == CreateByMoving)
        files.insert(m_album.group.currentGroupFile());
    m_history.record(files, [&] { isChanged = createGroup(fileName, Mode); });
    if (isChanged)
        showAgain();
    m_form.groupList().LoadGroupNames();
} catch (const Failure& failure) {
    logFailure(m_album, "CreateAlbumGroup", failure);
}

// True if the group on show has to be read again.
bool GroupCommands::createGroup(const std::string& fileName, std::int16_t Mode)
{
    constexpr int fileNumber = 1;
    // Appending keeps what may be there.
    m_album.files.open(groupListPath(m_album, fileName), OpenMode::Append, fileNumber);
    m_album.files.close(fileNumber);
    if (Mode == CreateWithCopies)
        trovarium::AddToGroup(m_album, fileName);
    return Mode == CreateByMoving && moveLines(fileName);
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
    const std::string name = m_form.groupList().SelectedGroupName; // the box below runs events
    const Answer answer = m_form.desktop().prompts().messageBox(
        "Are you sure you want to delete this group -> " + name, Message::Warning, "");
    if (answer != Answer::Yes)
        return;
    if (!hasGroupList(m_album, name + ".lst"))
        return;
    m_history.record({name + ".lst", name + ".mid"}, [&] {
        m_album.files.remove(groupListPath(m_album, name + ".lst"));
        m_form.groupList().LoadGroupNames();
        attempt([&] { m_album.files.remove(m_album.paths.MidiPath + name + ".mid"); });
    });
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

// False when the list file could not be renamed.
bool GroupCommands::renameTo(const std::string& name)
{
    const std::string old = m_album.group.CurrentGroupName;
    if (attempt([&] { m_history.rename(old + ".lst", name + ".lst"); }))
        return false;
    m_album.group.CurrentGroupName = name;
    GroupListPane& list = m_form.groupList();
    list.renameEntry(old, name);
    if (list.SelectedGroupName == old)
        list.SelectedGroupName = name;
    return true;
}

void GroupCommands::AddToGroup(std::string_view FileName)
{
    m_history.record({std::string(FileName)}, [&] { trovarium::AddToGroup(m_album, FileName); });
}

void GroupCommands::MoveToGroup(std::string_view FileName)
{
    bool isChanged = false;
    m_history.record(
        {std::string(FileName), m_album.group.currentGroupFile()}, [&] { isChanged = moveLines(FileName); });
    if (isChanged)
        showAgain();
}

// If the copy failed, for instance on a full disk, the photographs stay here and selected.
bool GroupCommands::moveLines(std::string_view fileName)
{
    if (!isGroupAsRead(m_album))
        return true;
    if (!trovarium::AddToGroup(m_album, fileName))
        return false;
    if (isGroupAsRead(m_album))
        RemoveFromGroupFile(m_album, m_album.group.currentGroupFile());
    return true;
}

void GroupCommands::removeSelectedFromCurrent()
{
    m_history.record({m_album.group.currentGroupFile()}, [&] {
        if (isGroupAsRead(m_album))
            RemoveFromGroupFile(m_album, m_album.group.currentGroupFile());
    });
    showAgain();
}

void GroupCommands::reorder(std::int32_t position)
{
    const std::string file = m_album.group.currentGroupFile();
    GroupHistory::Moved moved{m_album.group.selected(), {}};
    const auto act = [&] {
        const std::int32_t first = isGroupAsRead(m_album) ? ReorderGroupFile(m_album, file, position) : 0;
        moved.to.resize(moved.from.size());
        std::iota(moved.to.begin(), moved.to.end(), first);
    };
    m_history.record({file}, act, moved);
}

void GroupCommands::showAgain()
{
    m_form.pages().reload();
    m_form.selection().SetGroupListSelect(-1, NoKeys);
}

void GroupCommands::takeBack()
{
    show(m_history.takeBack(), "This can't be taken back: ");
}

void GroupCommands::doAgain()
{
    show(m_history.doAgain(), "This can't be done again: ");
}

void GroupCommands::show(const std::optional<GroupHistory::Outcome>& outcome, const std::string& refused)
{
    if (!outcome)
        return;
    if (!outcome->refusal.empty()) {
        m_form.desktop().prompts().messageBox(refused + outcome->refusal + ".", Message::Notice, "");
        return;
    }
    GroupListPane& list = m_form.groupList();
    list.reload();
    if (!outcome->group.empty())
        list.showGroup(outcome->group, outcome->position, outcome->selected);
    else if (list.GroupExists(m_album.group.CurrentGroupName))
        list.reopenGroup();
    else
        list.showGroup(std::string(AllPhotosGroupName), 1, {});
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
    bool isAnyRemoved = false;
    for (int i = 0; i <= last; ++i) {
        attempt([&] {
            if (m_album.group.GroupSelect(i) == 1 && isPhotographName(m_album.group.GroupList(i)))
                isAnyRemoved |= setAside(m_album.group.GroupList(i));
        });
    }
    if (isAnyRemoved)
        m_history.recordFinal("photographs were removed from the program");
    attempt([&] { RemoveMissingPhotosFromGroup(m_album, m_form.desktop()); });
    m_form.groupList().reopenGroup();
    m_form.MousePointer = DefaultPointer;
}

// If the photograph can't be moved, its information and its places in the groups stay too. One that is only linked has
// no file here.
bool GroupCommands::setAside(const std::string& name)
{
    FileService& files = m_album.files;
    const AlbumPaths& paths = m_album.paths;
    const std::string photo = photographPath(paths, name);
    attempt([&] { files.remove(paths.PhotoPath + "Removed_Photos\\" + name); });
    attempt([&] { trovarium::setAside(files, paths.PhotoPath, name); });
    if (files.exists(photo))
        return false;
    attempt([&] { files.remove(thumbnailPath(paths, name)); });
    attempt([&] { trovarium::setAside(files, paths.InfoPath, name + ".info"); });
    attempt([&] { trovarium::setAside(files, paths.AudioPath, name + ".wav"); });
    return true;
}

} // namespace trovarium
