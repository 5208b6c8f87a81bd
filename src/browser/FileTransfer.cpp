// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/FileTransfer.h"

#include "browser/GroupListPane.h"
#include "browser/frmMain.h"
#include "platform/files/FileService.h"
#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Clipboard.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/InfoFile.h"
#include "store/Log.h"
#include "store/PhotographFiles.h"
#include "viewer/PhotoDisplay.h"
#include "viewer/SlideShow.h"

#include <cstdint>

namespace trovarium {

bool canShow(const Album& album, Desktop& desktop, const std::string& path)
{
    bool can = false;
    attempt([&] { can = isVideoFile(path) ? album.files.length(path) >= 0 : desktop.pictures().isPicture(path); });
    return can;
}

FileTransfer::FileTransfer(frmMain& form, Album& album)
    : WindowPart(form, album)
{
    form.TakesFiles = true;
    on(form.FilesDropped, this, &FileTransfer::Form_FilesDropped);
}

void FileTransfer::Form_FilesDropped(const OfferedFiles& files, float X, float Y)
{
    const int row = m_form.groupList().rowAt(X, Y);
    if (row < 0 || !m_form.pctAlbumList(row).Visible() || opens(row))
        import(files);
}

// The press runs events, in which the window may be closed or an edit begin.
bool FileTransfer::opens(int row)
{
    const GroupOnShow& group = m_album.group;
    const std::string name = m_form.lbAlbumList(row).Caption();
    m_form.groupList().pctAlbumList_MouseDown(row, LeftButton, NoKeys, 0, 0);
    if (!m_form.isLoaded() || !m_form.TakesFiles())
        return false;
    const bool isOpen = group.isWhole && group.CurrentGroupName == name;
    if (!isOpen)
        m_form.desktop().prompts().messageBox(
            "The group \"" + std::string(trimmed(name)) + "\" could not be opened. Nothing was imported.",
            Message::Notice, "");
    return isOpen;
}

void FileTransfer::paste()
{
    const OfferedFiles files = filesOnClipboard();
    if (files.empty())
        m_form.desktop().prompts().messageBox("There are no files on the clipboard.", Message::Notice, "");
    else
        import(files);
}

// A show would go on behind the dialog.
void FileTransfer::import(const OfferedFiles& files)
{
    m_form.slideShow().StopSlideShow();
    m_form.dialogs().importOffered(files);
}

void FileTransfer::copySelected()
{
    std::vector<std::string> paths;
    for (const std::int32_t position : m_album.group.selected()) {
        const std::string& name = m_album.group.GroupList(position);
        paths.push_back(isPhotographName(name) ? GetPhotoLink(m_album, name + ".info") : "");
    }
    copy(paths, {});
}

void FileTransfer::copyPhotographOnShow()
{
    const bool isFilm = m_form.picVideoWindow.Visible();
    copy({m_form.photoDisplay().loadedFile()}, isFilm ? Picture() : m_form.pctBox(0).Picture());
}

// A link in an album that comes from somebody else may lead to any file of the user, so only what the program can show
// is copied.
void FileTransfer::copy(std::vector<std::string> paths, const Picture& picture)
{
    m_form.MousePointer = HourglassPointer;
    const std::size_t all = paths.size();
    std::erase_if(paths, [this](const std::string& path) { return !canShow(m_album, m_form.desktop(), path); });
    const std::size_t found = copyToClipboard(m_album.files, paths, picture);
    m_form.MousePointer = DefaultPointer;
    if (found == all)
        return;
    const std::string lost =
        all == 1 ? "The photograph" : numberText(all - found) + " of the " + numberText(all) + " photographs";
    m_form.desktop().prompts().messageBox(lost + " could not be copied.", Message::Notice, "");
}

} // namespace trovarium
