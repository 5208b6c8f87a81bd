#include "browser/MainMenus.h"

#include "browser/GroupCommands.h"
#include "browser/GroupListPane.h"
#include "browser/frmMain.h"
#include "platform/system/Shell.h"
#include "platform/toolkit/Desktop.h"
#include "store/Album.h"

namespace trovarium {

MainMenus::MainMenus(frmMain& form, Album& album)
    : m_form(form)
    , m_album(album)
{
    on(form.mnuFile.Click, this, &MainMenus::mnuFile_Click);
    on(form.mnuFileCreate.Click, this, &MainMenus::mnuFileCreate_Click);
    on(form.mnuFileRemove.Click, this, &MainMenus::mnuFileRemove_Click);
    on(form.mnuFileRenameGroup.Click, this, &MainMenus::mnuFileRenameGroup_Click);
    on(form.mnuFileImport.Click, this, &MainMenus::mnuFileImport_Click);
    on(form.mnuFileExport.Click, this, &MainMenus::mnuFileExport_Click);
    on(form.mnuFileMidi.Click, this, &MainMenus::mnuFileMidi_Click);
    on(form.mnuFileExit.Click, this, &MainMenus::mnuFileExit_Click);

    on(form.mnuEdit.Click, this, &MainMenus::mnuEdit_Click);
    on(form.mnuEditSearchAppend.Click, this, &MainMenus::mnuEditSearchAppend_Click);
    on(form.mnuEditWaveLink.Click, this, &MainMenus::mnuEditWaveLink_Click);

    on(form.mnuHelpContents.Click, this, &MainMenus::mnuHelpContents_Click);
    on(form.mnuHelpAbout.Click, this, &MainMenus::mnuHelpAbout_Click);

    on(form.mnuGroupNewGroup.Click, this, &MainMenus::mnuGroupNewGroup_Click);
    on(form.mnuGroupRemove.Click, this, &MainMenus::mnuGroupRemove_Click);
    on(form.mnuGroupRenameGroup.Click, this, &MainMenus::mnuGroupRenameGroup_Click);
    on(form.mnuGroupMidi.Click, this, &MainMenus::mnuGroupMidi_Click);
    on(form.mnuGroupImport.Click, this, &MainMenus::mnuGroupImport_Click);
    on(form.mnuGroupExport.Click, this, &MainMenus::mnuGroupExport_Click);
    on(form.mnuGroupSearchAppend.Click, this, &MainMenus::mnuGroupSearchAppend_Click);
}

void MainMenus::mnuFile_Click()
{
    GroupListPane& list = m_form.groupList();
    const bool canChange = !list.isAllPhotosRow(list.CurrentGroupRow);
    m_form.mnuFileRemove.Enabled = canChange;
    m_form.mnuFileRenameGroup.Enabled = canChange;
}

// Removing photographs from the group stays available even there.
void MainMenus::mnuEdit_Click()
{
    GroupListPane& list = m_form.groupList();
    m_form.mnuEditMove.Enabled = !list.isAllPhotosRow(list.CurrentGroupRow);
}

void MainMenus::mnuFileCreate_Click()
{
    m_form.groupCommands().CreateAlbumGroup(CreateEmpty);
}

void MainMenus::mnuFileRemove_Click()
{
    m_form.groupCommands().DeleteAlbumGroup();
}

void MainMenus::mnuFileRenameGroup_Click()
{
    m_form.groupCommands().RenameAlbumGroup();
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
    LinkMidi2Group();
}

void MainMenus::LinkMidi2Group()
{
    m_form.dialogs().showMidiLink();
}

void MainMenus::mnuFileExit_Click()
{
    // The form goes with its last handler; the desktop stays.
    Desktop& desktop = m_form.desktop();
    m_form.unload();
    desktop.endProgram();
}

void MainMenus::mnuEditSearchAppend_Click()
{
    m_form.cmdCreateAlbumGroup_Click();
}

void MainMenus::mnuEditWaveLink_Click()
{
    LinkWav2Photos();
}

void MainMenus::LinkWav2Photos()
{
    m_form.dialogs().showWavLink();
}

// Whether there is such a page isn't looked at.
void MainMenus::mnuHelpContents_Click()
{
    ShellOpenDocument(m_album.paths.ProgramFolder + "\\help\\index.html", NormalWindow);
}

void MainMenus::mnuHelpAbout_Click()
{
    m_form.dialogs().showAbout();
}

void MainMenus::mnuGroupNewGroup_Click()
{
    m_form.groupCommands().CreateAlbumGroup(CreateEmpty);
}

void MainMenus::mnuGroupRemove_Click()
{
    m_form.groupCommands().DeleteAlbumGroup();
}

void MainMenus::mnuGroupRenameGroup_Click()
{
    m_form.groupCommands().RenameAlbumGroup();
}

void MainMenus::mnuGroupMidi_Click()
{
    LinkMidi2Group();
}

void MainMenus::mnuGroupImport_Click()
{
    m_form.dialogs().showImport();
}

void MainMenus::mnuGroupExport_Click()
{
    m_form.dialogs().showExport();
}

void MainMenus::mnuGroupSearchAppend_Click()
{
    m_form.cmdCreateAlbumGroup_Click();
}

} // namespace trovarium
