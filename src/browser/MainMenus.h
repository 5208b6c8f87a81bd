// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/WindowPart.h"

namespace trovarium {

// The commands of the menus, and when one of them is enabled. The viewer's parts wire their own entries.
class MainMenus : public WindowPart {
public:
    MainMenus(frmMain& form, Album& album);

    // Update what is enabled when the menu opens.
    void mnuFile_Click();
    void mnuEdit_Click();

    // Show a dialog modally.
    void mnuFileImport_Click();
    void mnuFileExport_Click();
    void mnuFileMidi_Click();
    void mnuEditWaveLink_Click();
    void mnuGroupImport_Click() { mnuFileImport_Click(); }
    void mnuGroupExport_Click() { mnuFileExport_Click(); }
    void mnuGroupMidi_Click() { mnuFileMidi_Click(); }

    void mnuFileExit_Click();
    void mnuHelpContents_Click();

private:
    void wireGroupEntries();
    void wirePhotographEntries();
};

} // namespace trovarium
