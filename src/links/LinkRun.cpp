// SPDX-License-Identifier: GPL-3.0-or-later

#include "links/LinkRun.h"

#include "browser/frmMain.h"
#include "links/frmAddMidiWav.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/ProgressBar.h"
#include "platform/toolkit/Prompts.h"
#include "store/Album.h"
#include "store/LibraryFolders.h"
#include "store/Log.h"
#include "store/PhotographFiles.h"

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace trovarium {

namespace {

constexpr std::string_view Idle = "&Make it so";
constexpr float BarMargin = 30;          // twips, for the borders at both ends
constexpr std::size_t WavMarkLength = 8; // bytes before the photograph's name in its row

} // namespace

LinkRun::LinkRun(frmAddMidiWav& form, Album& album, frmMain& main, std::function<Form&()> importForm)
    : m_form(form)
    , m_album(album)
    , m_main(main)
    , m_importForm(std::move(importForm))
{
    on(form.cmdImport.Click, this, &LinkRun::cmdImport_Click);
}

// Changes the mouse pointer of the import dialog, which isn't visible.
void LinkRun::cmdImport_Click()
{
    if (m_form.cmdImport.Caption() == "Cancel") {
        m_form.cmdImport.Caption = std::string(Idle);
        return;
    }
    m_form.cmdImport.Caption = "Cancel";
    if (m_form.DialogBusy)
        return;
    m_form.DialogBusy = true;
    ImportErrors.clear();
    m_moved.clear();
    m_importForm().MousePointer = HourglassPointer;
    fillBar(m_form.pctProgress, m_form.shpProgress, 0);
    m_run.stepOver();
    m_run.run([&] {
        linkAll();
        m_run.jumpToEnd();
        if (!ImportErrors.empty())
            m_form.desktop().prompts().messageBox(
                "Error(s) occurred with the following files during import process.\r\r" + ImportErrors, Message::Error,
                "");
    });
    end();
}

void LinkRun::linkAll()
{
    const int count = m_form.List1.ListCount();
    for (int row = 0; row < count; ++row) {
        m_form.lbProgress.Caption = "Import-Link Progress";
        if (m_form.List2.Selected(row)) {
            link(row);
            if (m_form.cmdImport.Caption() == Idle)
                break;
        }
        const float share = static_cast<float>(row + 1) / static_cast<float>(count);
        fillBar(m_form.pctProgress, m_form.shpProgress, share * (m_form.pctProgress.ScaleWidth() + BarMargin));
        m_form.desktop().DoEvents();
        // The dialog may have been closed with the program.
        if (!m_form.isLoaded())
            break;
    }
}

// Once an old sound was to be removed, even a missing one, a failure ends the run. So does every cleared row, since
// copying its empty source fails.
void LinkRun::link(int row)
{
    FileService& files = m_album.files;
    const std::string dest = destinationOf(row);
    const std::string source = sourceOf(row);
    if (m_form.chkOptions(0).Value() == 1 || source.empty()) {
        m_run.stepOver();
        m_run.statement([&] {
            if (!files.isSameFile(source, dest))
                takeAway(dest);
        });
        m_run.jumpToEnd();
    }
    bool isDone = false;
    const std::optional<Failure> end = attempt([&] {
        m_run.statement([&] {
            if (files.exists(dest)) {
                note(row, "File already exists");
                return;
            }
            isDone = source.empty();
            files.copy(source, dest);
            isDone = true;
        });
    });
    if (isDone)
        m_form.settle(row);
    else if (end) // not reported anywhere else
        logFailure(m_album, "cmdImport_Click", *end);
    if (end)
        throw Failure(*end);
    if (m_run.standing())
        note(row, m_run.standing()->description());
    m_run.clear();
}

// Moves it to "Removed". A later row that has it as its source reads it there, so that two sounds can be swapped.
void LinkRun::takeAway(const std::string& path)
{
    const SplitPathResult parts = SplitPath(path);
    setAside(m_album.files, parts.Folder, parts.FileName, [&](const std::string& from, const std::string& to) {
        std::vector<std::string> chosen;
        for (int row = 0; row < m_form.List2.ListCount(); ++row) {
            if (m_form.List2.Selected(row) && m_album.files.isSameFile(sourceOf(row), from))
                chosen.push_back(m_form.List2.List(row));
        }
        m_album.files.rename(from, to);
        for (const std::string& source : chosen)
            m_moved[source] = to;
    });
}

std::string LinkRun::destinationOf(int row) const
{
    if (m_form.LinkIsMidi)
        return m_album.paths.MidiPath + m_main.lstSlideGroups.List(row) + ".mid";
    return clipPath(m_album.paths, m_form.List1.List(row).substr(WavMarkLength));
}

std::string LinkRun::sourceOf(int row) const
{
    const std::string& chosen = m_form.List2.List(row);
    const auto moved = m_moved.find(chosen);
    return moved == m_moved.end() ? chosen : moved->second;
}

void LinkRun::note(int row, std::string_view error)
{
    ImportErrors.append(m_form.List1.List(row)).append("    Error=").append(error).append("\r");
}

void LinkRun::end()
{
    m_form.cmdImport.Caption = std::string(Idle);
    m_form.lbProgress.Caption = "Done";
    fillBar(m_form.pctProgress, m_form.shpProgress, 0);
    m_form.DialogBusy = false;
    m_importForm().MousePointer = DefaultPointer;
}

} // namespace trovarium
