#include "browser/Removal.h"

#include "browser/GroupListPane.h"
#include "browser/frmMain.h"
#include "check/RepairPasses.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "store/PhotographFiles.h"

namespace trovarium {

Removal::Removal(frmMain& form, Album& album)
    : m_form(form)
    , m_album(album)
{
    on(form.mnuEditRemoveFromAlbum.Click, this, &Removal::mnuEditRemoveFromAlbum_Click);
}

void Removal::RemoveFromProgram()
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
    attempt([&] { m_album.files.makeFolder(paths.PhotoPath + "Removed"); });
    attempt([&] { m_album.files.makeFolder(paths.InfoPath + "Removed"); });
    attempt([&] { m_album.files.makeFolder(paths.AudioPath + "Removed"); });
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

// A photograph that can't be moved stays as a whole: with its words it keeps its places in the groups. One that is only
// linked has no file here.
void Removal::setAside(const std::string& name)
{
    FileService& files = m_album.files;
    const AlbumPaths& paths = m_album.paths;
    const std::string photo = photographPath(paths, name);
    attempt([&] { files.remove(paths.PhotoPath + "Removed_Photos\\" + name); });
    attempt([&] { trovarium::setAside(files, paths.PhotoPath, name); });
    if (files.exists(photo))
        return;
    attempt([&] { trovarium::setAside(files, paths.InfoPath, name + ".info"); });
    attempt([&] { trovarium::setAside(files, paths.AudioPath, name + ".wav"); });
    attempt([&] { files.remove(thumbnailPath(paths, name)); });
}

void Removal::mnuEditRemoveFromAlbum_Click()
{
    RemoveFromProgram();
}

} // namespace trovarium
