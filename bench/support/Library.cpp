// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Library.h"

#include "platform/files/FileService.h"
#include "store/LibraryFolders.h"

#include <chrono>
#include <ctime>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace trovarium {

namespace {

double megabytesOf(const std::string& key)
{
    std::ifstream status("/proc/self/status");
    std::string word;
    double kilobytes = 0;
    while (status >> word) {
        if (word == key && status >> kilobytes)
            return kilobytes / 1024;
    }
    throw std::runtime_error("no " + key + " in the status of the process");
}

} // namespace

Answer NoAnswers::messageBox(std::string_view /*text*/, Message /*kind*/, std::string_view /*title*/)
{
    return Answer::No;
}

std::string NoAnswers::inputBox(std::string_view /*prompt*/, std::string_view /*title*/, std::string_view /*initial*/)
{
    return {};
}

Library::Library(Desktop& desktop, const std::string& nativeFolder)
    : m_desktop(desktop)
    , m_album(desktop.files())
{
    m_desktop.setPrompts(&m_answers);
    m_album.paths.ProgramFolder = fromNativePath(nativeFolder);
    m_album.paths.AppPath = m_album.paths.ProgramFolder;
    m_album.settingsStore = std::make_unique<COWReg>();
    m_album.Settings().SetOWSetting("Trovarium", "Options", "FirstTime", "False");
    m_album.Settings().SetOWSetting("Trovarium", "Options", "AutoFix", "False");
    makeLibraryFolders(m_album);
    readFolderSettings(m_album);
}

void untilIdle(Desktop& desktop)
{
    using namespace std::chrono_literals;
    constexpr std::clock_t Rest = CLOCKS_PER_SEC / 200;
    constexpr int RestsInARow = 4;
    for (int rests = 0; rests < RestsInARow;) {
        const std::clock_t before = std::clock();
        desktop.DoEvents();
        std::this_thread::sleep_for(50ms);
        rests = std::clock() - before < Rest ? rests + 1 : 0;
    }
}

double residentMegabytes()
{
    return megabytesOf("VmRSS:");
}

double mostResidentMegabytes()
{
    return megabytesOf("VmHWM:");
}

} // namespace trovarium
