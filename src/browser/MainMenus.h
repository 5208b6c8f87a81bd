#pragma once

namespace trovarium {

class frmMain;

// What stands behind the entries of the menu bar and of the pop-up menu of a group row, and when one of them is
// enabled. Entries of the viewer and of the commands on photographs are wired where their operations stand.
class MainMenus {
public:
    explicit MainMenus(frmMain& form);

    // The enabling rules, worked out when the menu opens.
    void mnuFile_Click();
    void mnuEdit_Click();

    void mnuFileCreate_Click();
    void mnuFileRemove_Click();
    void mnuFileRenameGroup_Click();
    void mnuFileImport_Click();
    void mnuFileExport_Click();
    void mnuFileExit_Click();
    void mnuEditSearchAppend_Click();

    void mnuGroupNewGroup_Click();
    void mnuGroupRemove_Click();
    void mnuGroupRenameGroup_Click();
    void mnuGroupImport_Click();
    void mnuGroupExport_Click();
    void mnuGroupSearchAppend_Click();

private:
    frmMain& m_form;
};

} // namespace trovarium
