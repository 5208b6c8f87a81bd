// SPDX-License-Identifier: GPL-3.0-or-later

#include "startup/Program.h"

#include "check/RepairPasses.h"
#include "platform/files/FileService.h"
#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Failure.h"
#include "store/Album.h"
#include "store/Deployment.h"
#include "store/LibraryFolders.h"
#include "store/Log.h"

#include <memory>
#include <utility>

namespace trovarium {

namespace {

constexpr int FatalExit = 1;

} // namespace

Program::Program(Desktop& desktop, Album& album, std::string programPath)
    : m_desktop(desktop)
    , m_album(album)
    , m_programPath(std::move(programPath))
    , m_video(desktop, album)
    , m_splash(desktop, [this] { return std::make_unique<frmSplash>(m_desktop, m_album); })
    , m_thumbnailBuilder(desktop, [this] { return std::make_unique<frmThumbnail>(m_desktop, m_album, m_video); })
    , m_firstTime(desktop, [this] { return std::make_unique<frmFirstTime>(m_desktop); })
    , m_main(desktop, [this] { return std::make_unique<frmMain>(m_desktop, m_album, m_video, dialogs()); })
    , m_groups(desktop, [this] { return std::make_unique<frmGroups>(m_desktop, m_album, m_main()); })
    , m_export(desktop, [this] { return std::make_unique<frmExport>(m_desktop, m_album); })
    , m_fullScreen(desktop, [this] { return std::make_unique<frmFullScreen>(m_desktop, m_album, m_main()); })
    , m_slideShow(desktop, [this] { return std::make_unique<frmSSP>(m_desktop, m_album, m_main()); })
    , m_search(desktop, [this] { return std::make_unique<frmSearch>(m_desktop, m_album, m_main()); })
    , m_import(desktop,
          [this] { return std::make_unique<frmImport>(m_desktop, m_album, m_main(), m_search, m_thumbnailBuilder); })
    , m_links(desktop,
          [this] {
              return std::make_unique<frmAddMidiWav>(
                  m_desktop, m_album, m_main(), [this]() -> Form& { return m_import(); });
          })
    , m_about(desktop, [this] { return std::make_unique<frmAbout>(m_desktop, m_album); })
{
    desktop.pictures().PackageMissing = [this](std::string_view package) {
        WriteLogLine(m_album, m_album.paths.AppPath + "\\Trovarium.Log",
            "Some pictures can't be shown without the package '" + std::string(package) + "'");
    };
}

Program::~Program()
{
    m_desktop.pictures().PackageMissing = nullptr;
}

// The order matters: lock the library, folders, settings, test for a read-only library, splash screen, check, repair of
// the groups, main window.
void Program::Main()
try {
    attempt([&] { m_album.settingsStore = std::make_unique<COWReg>(); });
    attempt([&] { m_desktop.Screen().MousePointer = ArrowHourglassPointer; });
    attempt([&] { settleProgramFolder(); });
    attempt([&] { requireLibrary(); });
    attempt([&] { makeLibraryFolders(m_album); });
    attempt([&] { readFolderSettings(m_album); });
    attempt([&] { requireSlideGroupPath(); });
    attempt([&] { removeOwnLinks(m_album); });
    attempt([&] { CheckDirPaths(m_album, m_desktop); });
    attempt([&] { m_splash().show(); });
    attempt([&] { m_desktop.DoEvents(); });
    // A click on the splash screen sets the flag while the check lets events run.
    if (!m_album.AutoCheckBypass)
        attempt([&] { RepairPasses(m_album, m_splash(), m_thumbnailBuilder).CheckFolderContents(); });
    if (!m_album.AutoCheckBypass)
        attempt([&] { RemoveMissingPhotosFromGroup(m_album, m_desktop, Meanwhile::RunEvents); });
    attempt([&] { removeLeftOvers(m_album); });
    attempt([&] { m_desktop.DoEvents(); });
    attempt([&] { m_main().show(); });
    attempt([&] { m_splash().unload(); });
    attempt([&] { m_desktop.Screen().MousePointer = DefaultPointer; });
} catch (const Failure& failure) {
    // Not reached as long as every step above is in an attempt.
    logFailure(m_album, "Main", failure);
    m_desktop.Screen().MousePointer = DefaultPointer;
    m_desktop.prompts().messageBox("Unexpected problem. Must exit. Check log file at "
            + toNativePath(m_album.paths.AppPath + "\\Trovarium.Log")
            + "\rPlease email log file to: " + std::string(SupportAddress),
        Message::Error, "");
    m_desktop.endProgram(FatalExit);
}

void Program::settleProgramFolder()
{
    AlbumPaths& paths = m_album.paths;
    paths.ProgramFolder = m_programPath;
    if (paths.ProgramFolder.ends_with('\\'))
        paths.ProgramFolder.pop_back();
    paths.AppPath = paths.ProgramFolder;
}

// Before anything is written: the library may be open already, or have folders that are links to outside.
void Program::requireLibrary()
{
    const std::string& library = m_album.paths.AppPath;
    bool isOurs = true;
    attempt([&] { isOurs = m_lock.take(library); });
    if (!isOurs) {
        m_desktop.prompts().messageBox("This album is open already: " + toNativePath(library), Message::Error, "");
        m_desktop.endProgram();
    }
    bool mayOpen = false; // also false if the test fails
    attempt([&] { mayOpen = mayWorkOutside(m_album, m_desktop); });
    if (!mayOpen)
        m_desktop.endProgram();
}

// A broken settings store gives empty paths; testing one is enough.
void Program::requireSlideGroupPath()
{
    if (!m_album.paths.SlideGroupPath.empty())
        return;
    m_desktop.prompts().messageBox("Critical Error-SubMain: SlideGroup path is blank!", Message::Error, "");
    m_desktop.endProgram(FatalExit);
}

Dialogs Program::dialogs()
{
    return {
        .showFirstTime = [this] { m_firstTime().showModal(); },
        .showGroups = [this](int mode) { m_groups().showFor(mode); },
        .showExport = [this] { m_export().showModal(); },
        // The main window may have been closed in events before.
        .showFullScreen =
            [this] {
                if (m_main.isLoaded())
                    m_fullScreen().show();
            },
        .showSlideShow = [this] { m_slideShow().showModal(); },
        .showSearch = [this] { m_search().showModal(); },
        .showImport = [this] { m_import().showModal(); },
        .showMidiLink = [this] { m_links().LinkMidi2Group(); },
        .showWavLink = [this] { m_links().LinkWav2Photos(); },
        .showAbout = [this] { m_about().showModal(); },
        .unloadAllForms = [this] { UnloadAllForms(m_desktop, "frmMain"); },
        .importOffered = [this](const OfferedFiles& files) { m_import().showFilled(files); },
    };
}

// Backwards, since unload removes a form from the list; it may remove others too, so the index is checked.
void UnloadAllForms(Desktop& desktop, std::string_view ExceptName)
{
    for (int index = desktop.formsCount() - 1; index >= 0; --index) {
        if (index < desktop.formsCount() && desktop.formsItem(index).Name() != ExceptName)
            desktop.formsItem(index).unload();
    }
}

} // namespace trovarium
