#pragma once

#include "runtime/LongRun.h"

#include <string>

namespace trovarium {

struct Album;
class frmExport;

// Copies the listed photographs, their thumbnails and what is known of them to the chosen folder.
class ExportRun {
public:
    ExportRun(frmExport& form, Album& album);

    void cmdExport_Click();

private:
    void exportAll();
    void exportPhotograph(const std::string& name);
    void removeOldCopies(const std::string& name);
    bool isOriginal(const std::string& path) const;
    void copyPhotograph(const std::string& name);
    void exportInfo(const std::string& name);
    void showProgress(int done, int count);
    void end();

    frmExport& m_form;
    Album& m_album;
    LongRun m_run;
    std::string m_destination; // the folder and the backslash behind it
    std::string m_source;      // of the photograph in work
};

} // namespace trovarium
