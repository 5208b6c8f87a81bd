// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "about/frmAbout.h"
#include "browser/frmGroups.h"
#include "browser/frmMain.h"
#include "check/frmFirstTime.h"
#include "check/frmSplash.h"
#include "check/frmThumbnail.h"
#include "export/frmExport.h"
#include "import/frmImport.h"
#include "links/frmAddMidiWav.h"
#include "platform/files/FolderLock.h"
#include "platform/toolkit/Form.h"
#include "search/frmSearch.h"
#include "viewer/VideoControls.h"
#include "viewer/frmFullScreen.h"
#include "viewer/frmSSP.h"

#include <string>
#include <string_view>

namespace trovarium {

struct Album;
class Desktop;

// Holds the one instance of each form, connects them, and starts the program.
class Program {
public:
    // `programPath` is the folder of the program.
    Program(Desktop& desktop, Album& album, std::string programPath);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // Starts up, from the settings to the main window. Failures are skipped, but a broken settings store ends the
    // program. The caller then runs the event loop.
    void Main();

    FormHolder<frmMain>& mainWindow() { return m_main; }
    FormHolder<frmSplash>& splash() { return m_splash; }

private:
    void settleProgramFolder();
    void requireLibrary();
    void requireSlideGroupPath();
    Dialogs dialogs();

    Desktop& m_desktop;
    Album& m_album;
    std::string m_programPath;
    FolderLock m_lock;
    VideoControls m_video;
    FormHolder<frmSplash> m_splash;
    FormHolder<frmThumbnail> m_thumbnailBuilder;
    FormHolder<frmFirstTime> m_firstTime;
    FormHolder<frmMain> m_main;
    FormHolder<frmGroups> m_groups;
    FormHolder<frmExport> m_export;
    FormHolder<frmFullScreen> m_fullScreen;
    FormHolder<frmSSP> m_slideShow;
    FormHolder<frmSearch> m_search;
    FormHolder<frmImport> m_import;
    FormHolder<frmAddMidiWav> m_links;
    FormHolder<frmAbout> m_about;
};

// Unloads every loaded form whose name differs from `ExceptName`.
void UnloadAllForms(Desktop& desktop, std::string_view ExceptName);

} // namespace trovarium
