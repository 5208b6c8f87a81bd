// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "runtime/LongRun.h"

#include <functional>
#include <map>
#include <string>

namespace trovarium {

struct Album;
class Form;
class frmAddMidiWav;
class frmMain;

// Applies the changes of the link dialog row by row: copies a sound to the file name that links it to its owner, or
// removes it. An old sound moves to "Removed".
class LinkRun {
public:
    LinkRun(frmAddMidiWav& form, Album& album, frmMain& main, std::function<Form&()> importForm);

    // Starts a run. During a run it requests a stop after the current row.
    void cmdImport_Click();

private:
    void linkAll();
    void link(int row);
    void takeAway(const std::string& path);
    std::string destinationOf(int row) const;
    std::string sourceOf(int row) const;
    void note(int row, std::string_view error);
    void end();

    frmAddMidiWav& m_form;
    Album& m_album;
    frmMain& m_main;
    std::function<Form&()> m_importForm;
    LongRun m_run;
    std::string ImportErrors;
    std::map<std::string, std::string> m_moved; // sources that the run has moved, with their new paths
};

} // namespace trovarium
