// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/MainMenus.h"

#include "browser/GroupCommands.h"
#include "browser/GroupListPane.h"
#include "browser/frmMain.h"
#include "platform/system/Shell.h"
#include "platform/toolkit/Desktop.h"
#include "store/Album.h"

#include <functional>
#include <initializer_list>

namespace trovarium {

namespace {

// Connects a command with its entries in the menu bar and in pop-up menus.
void wire(std::initializer_list<Menu*> entries, const std::function<void()>& command)
{
    for (Menu* entry : entries)
        entry->Click.connect(command);
}

} // namespace

MainMenus::MainMenus(frmMain& form, Album& album)
    : WindowPart(form, album)
{
    on(form.mnuFile.Click, this, &MainMenus::mnuFile_Click);
    on(form.mnuEdit.Click, this, &MainMenus::mnuEdit_Click);
    on(form.mnuFileImport.Click, this, &MainMenus::mnuFileImport_Click);
    on(form.mnuFileExport.Click, this, &MainMenus::mnuFileExport_Click);
    on(form.mnuFileMidi.Click, this, &MainMenus::mnuFileMidi_Click);
    on(form.mnuEditWaveLink.Click, this, &MainMenus::mnuEditWaveLink_Click);
    on(form.mnuGroupImport.Click, this, &MainMenus::mnuGroupImport_Click);
    on(form.mnuGroupExport.Click, this, &MainMenus::mnuGroupExport_Click);
    on(form.mnuGroupMidi.Click, this, &MainMenus::mnuGroupMidi_Click);
    on(form.mnuFileExit.Click, this, &MainMenus::mnuFileExit_Click);
    on(form.mnuHelpContents.Click, this, &MainMenus::mnuHelpContents_Click);
    wire({&form.mnuHelpAbout}, [&form] { form.dialogs().showAbout(); });
    wireGroupEntries();
    wirePhotographEntries();
}

void MainMenus::wireGroupEntries()
{
    frmMain& form = m_form;
    wire(
        {&form.mnuFileCreate, &form.mnuGroupNewGroup}, [&form] { form.groupCommands().CreateAlbumGroup(CreateEmpty); });
    wire({&form.mnuFileRemove, &form.mnuGroupRemove}, [&form] { form.groupCommands().DeleteAlbumGroup(); });
    wire({&form.mnuFileRenameGroup, &form.mnuGroupRenameGroup}, [&form] { form.groupCommands().RenameAlbumGroup(); });
}

void MainMenus::wirePhotographEntries()
{
    frmMain& form = m_form;
    wire({&form.mnuThumbMoveNewGroup}, [&form] { form.groupCommands().CreateAlbumGroup(CreateByMoving); });
    wire({&form.mnuEditRemoveFromAlbum}, [&form] { form.groupCommands().RemoveFromProgram(); });
}

void MainMenus::mnuFile_Click()
{
    GroupListPane& list = m_form.groupList();
    const bool canChange = !list.isAllPhotosRow(list.CurrentGroupRow);
    m_form.mnuFileRemove.Enabled = canChange;
    m_form.mnuFileRenameGroup.Enabled = canChange;
}

// Removing photographs stays enabled even in the group of all photographs.
void MainMenus::mnuEdit_Click()
{
    GroupListPane& list = m_form.groupList();
    m_form.mnuEditMove.Enabled = !list.isAllPhotosRow(list.CurrentGroupRow);
}

void MainMenus::mnuFileImport_Click()
{
    m_form.dialogs().showImport();
}

void MainMenus::mnuFileExport_Click()
{
    m_form.dialogs().showExport();
}

void MainMenus::mnuFileMidi_Click()
{
    m_form.dialogs().showMidiLink();
}

void MainMenus::mnuEditWaveLink_Click()
{
    m_form.dialogs().showWavLink();
}

void MainMenus::mnuFileExit_Click()
{
    // The form is gone after unload; the desktop isn't.
    Desktop& desktop = m_form.desktop();
    m_form.unload();
    desktop.endProgram();
}

// Without a check that the page exists.
void MainMenus::mnuHelpContents_Click()
{
    ShellOpenDocument(m_album.paths.ProgramFolder + "\\help\\index.html", NormalWindow);
}

} // namespace trovarium
