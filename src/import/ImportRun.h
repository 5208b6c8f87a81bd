#pragma once

#include "platform/toolkit/Form.h"

namespace trovarium {

struct Album;
class frmImport;
class frmMain;
class frmSearch;
class frmThumbnail;

// Takes the listed files into the library: a copy of each or a link to it, a fresh information file, then the
// thumbnails and the entries in the group on show and in that of all photographs.
class ImportRun {
public:
    ImportRun(frmImport& form, Album& album, frmMain& main, FormHolder<frmSearch>& search,
        FormHolder<frmThumbnail>& thumbnailBuilder);

    // Starts a run. While one runs, asks it to stop behind the file in hand, and the next press takes that back.
    void cmdImport_Click();
    // The dialog's guard doesn't tell: a scan sets it too, and a press of Auto-Scan clears it in the middle of a run.
    bool isRunning() const { return m_isRunning; }

private:
    class Files;

    void buildThumbnails(const Files& files);
    void appendToGroups(const Files& files);
    void end();

    frmImport& m_form;
    Album& m_album;
    frmMain& m_main;
    FormHolder<frmSearch>& m_search;
    FormHolder<frmThumbnail>& m_thumbnailBuilder;
    bool m_isRunning = false;
};

} // namespace trovarium
