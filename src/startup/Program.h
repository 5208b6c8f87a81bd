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
#include "platform/toolkit/FormSlot.h"
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

    // Starts up, from the settings to the main window. Failures are skipped, but a broken settings store ends the
    // program. The caller then runs the event loop.
    void Main();

    FormSlot<frmMain>& mainWindow() { return m_main; }
    FormSlot<frmSplash>& splash() { return m_splash; }

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
    FormSlot<frmSplash> m_splash;
    FormSlot<frmThumbnail> m_thumbnailBuilder;
    FormSlot<frmFirstTime> m_firstTime;
    FormSlot<frmMain> m_main;
    FormSlot<frmGroups> m_groups;
    FormSlot<frmExport> m_export;
    FormSlot<frmFullScreen> m_fullScreen;
    FormSlot<frmSSP> m_slideShow;
    FormSlot<frmSearch> m_search;
    FormSlot<frmImport> m_import;
    FormSlot<frmAddMidiWav> m_links;
    FormSlot<frmAbout> m_about;
};

// Unloads every loaded form whose name differs from `ExceptName`.
void UnloadAllForms(Desktop& desktop, std::string_view ExceptName);

} // namespace trovarium
