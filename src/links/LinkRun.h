#pragma once

#include "runtime/LongRun.h"

#include <functional>
#include <string>

namespace trovarium {

struct Album;
class Form;
class frmAddMidiWav;
class frmMain;

// Does what has been changed in the link dialog, row by row: copies a sound to the name that links it to its
// owner, or deletes it.
class LinkRun {
public:
    LinkRun(frmAddMidiWav& form, Album& album, frmMain& main, std::function<Form&()> importForm);

    // Starts a run. While one goes on, asks it to stop behind the row in hand.
    void cmdImport_Click();

private:
    void linkAll();
    void link(int row);
    std::string destinationOf(int row) const;
    void note(int row, std::string_view error);
    void end();

    frmAddMidiWav& m_form;
    Album& m_album;
    frmMain& m_main;
    std::function<Form&()> m_importForm;
    LongRun m_run;
    std::string ImportErrors;
};

} // namespace trovarium
