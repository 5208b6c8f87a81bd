// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "runtime/LongRun.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace trovarium {

struct Album;
class frmExport;

// Copies the listed photographs, their thumbnails and their information to the chosen folder.
class ExportRun {
public:
    ExportRun(frmExport& form, Album& album);

    void cmdExport_Click();
    // Ends the run after the current photograph and closes the dialog.
    void endAndClose() { m_closes = true; }

private:
    void exportAll();
    bool isEnded() const;
    void exportPhotograph(const std::string& name);
    bool takes(int item) const;
    void removeOldCopies();
    std::string copyPath(std::string_view mark, std::string_view ending = {}) const;
    const std::string& source();
    bool isOriginal(const std::string& path);
    bool isTaken(const std::string& path, const std::string& source = {}) const;
    void copy(const std::string& source, const std::string& target, bool isDeletable = true);
    void take(const std::string& source, const std::string& target, bool isDeletable = true);
    void copyPhotograph();
    void exportInfo();
    void showProgress(int done, int count);
    void tellErrors();
    void end();

    struct Copy {
        std::string source, target;
    };

    frmExport& m_form;
    Album& m_album;
    LongRun m_run;
    std::string m_destination;           // folder, with a backslash at the end
    std::string m_name;                  // of the current photograph
    std::optional<std::string> m_source; // its file, once it was looked up
    std::map<std::string, Copy> m_taken; // copies made by this run except thumbnails; key: target in upper case
    int m_left = 0;                      // photographs beyond the limit of a run
    bool m_closes = false;
};

} // namespace trovarium
