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

// Does what has been changed in the link dialog, row by row: copies a sound to the name that links it to its
// owner, or takes it away. What was there goes to "Removed".
class LinkRun {
public:
    LinkRun(frmAddMidiWav& form, Album& album, frmMain& main, std::function<Form&()> importForm);

    // Starts a run. While one goes on, asks it to stop behind the row in hand.
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
    std::map<std::string, std::string> m_moved; // where the run has put chosen sources
};

} // namespace trovarium
