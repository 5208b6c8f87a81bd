// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/FileTransfer.h"

#include "browser/GroupListPane.h"
#include "browser/frmMain.h"
#include "platform/toolkit/Clipboard.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "store/InfoFile.h"
#include "store/Log.h"
#include "store/PhotographFiles.h"
#include "viewer/PhotoDisplay.h"
#include "viewer/SlideShow.h"

#include <cstdint>

namespace trovarium {

FileTransfer::FileTransfer(frmMain& form, Album& album)
    : WindowPart(form, album)
{
    form.TakesFiles = true;
    on(form.FilesDropped, this, &FileTransfer::Form_FilesDropped);
}

void FileTransfer::Form_FilesDropped(const OfferedFiles& files, float X, float Y)
{
    const int row = m_form.groupList().rowAt(X, Y);
    if (row >= 0 && m_form.pctAlbumList(row).Visible())
        m_form.groupList().pctAlbumList_MouseDown(row, LeftButton, NoKeys, 0, 0);
    import(files);
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

void FileTransfer::copy(const std::vector<std::string>& paths, const Picture& picture)
{
    m_form.MousePointer = HourglassPointer;
    const std::size_t found = copyToClipboard(m_album.files, paths, picture);
    m_form.MousePointer = DefaultPointer;
    if (const std::size_t lost = paths.size() - found; lost > 0)
        m_form.desktop().prompts().messageBox(
            numberText(lost) + " of the " + numberText(paths.size()) + " photographs could not be found.",
            Message::Notice, "");
}

} // namespace trovarium
