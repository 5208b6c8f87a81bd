#pragma once

namespace trovarium {

struct Album;
class frmMain;

// What stands behind the entries of the menu bar and of the pop-up menu of a group row, and when one of them is
// enabled. Entries of the viewer and of the commands on photographs are wired where their operations stand.
class MainMenus {
public:
    MainMenus(frmMain& form, Album& album);

    // The enabling rules, worked out when the menu opens.
    void mnuFile_Click();
    void mnuEdit_Click();

    void mnuFileCreate_Click();
    void mnuFileRemove_Click();
    void mnuFileRenameGroup_Click();
    void mnuFileImport_Click();
    void mnuFileExport_Click();
    void mnuFileMidi_Click();
    void mnuFileExit_Click();
    void mnuEditSearchAppend_Click();
    void mnuEditWaveLink_Click();
    void mnuHelpContents_Click();
    void mnuHelpAbout_Click();

    void mnuGroupNewGroup_Click();
    void mnuGroupRemove_Click();
    void mnuGroupRenameGroup_Click();
    void mnuGroupMidi_Click();
    void mnuGroupImport_Click();
    void mnuGroupExport_Click();
    void mnuGroupSearchAppend_Click();

private:
    void LinkMidi2Group();
    void LinkWav2Photos();

    frmMain& m_form;
    Album& m_album;
};

} // namespace trovarium
