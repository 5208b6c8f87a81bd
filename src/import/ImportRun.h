// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Form.h"
#include "runtime/LongRun.h"
#include "store/GroupOnShow.h"
#include <string>
#include <string_view>

namespace trovarium {

struct Album;
class frmImport;
class frmMain;
class frmSearch;
class frmThumbnail;

// Imports the listed files: copies or links each, creates its information file, then builds the thumbnails and appends
// the photographs to the group on show and to that of all photographs.
class ImportRun {
public:
    ImportRun(frmImport& form, Album& album, frmMain& main, FormHolder<frmSearch>& search,
        FormHolder<frmThumbnail>& thumbnailBuilder);

    // Starts a run. During a run it requests a stop after the current file; the next click withdraws the request.
    void cmdImport_Click();
    // DialogBusy can't be used: a scan sets it too, and the Auto-Scan button clears it even during an import.
    bool isRunning() const { return m_isRunning; }

private:
    void importAll();
    bool isChecked(int option) const;
    std::string sourceOf(int i) const;
    bool isSource(const std::string& path, int i) const;
    void importEntry(int i);
    void chooseName(int i);
    void takeNumber();
    bool isUnusable(int i) const;
    bool makeRoom(int i);
    void setOldAside(int i);
    void importFile(int i);
    void copy(const std::string& source, const std::string& target);
    void note(std::string_view name, std::string_view error);
    void showProgress(int i);
    void buildThumbnails();
    void appendToGroups();
    void end();

    frmImport& m_form;
    Album& m_album;
    frmMain& m_main;
    FormHolder<frmSearch>& m_search;
    FormHolder<frmThumbnail>& m_thumbnailBuilder;
    bool m_isRunning = false;

    // Of the current run.
    LongRun m_run;
    int NumberFormat = 0; // digits of the first automatic number; later ones may have more
    // Full paths in the library, from index 1 on; of links too, for which there is no file.
    CheckedArray<std::string> ImportedFiles;
    std::string ImportErrors;
    bool RunCancelled = false;
    std::string DestName; // stays that of the file before if setting it fails
};

} // namespace trovarium
