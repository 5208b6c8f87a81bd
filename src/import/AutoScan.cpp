// SPDX-License-Identifier: GPL-3.0-or-later

#include "import/AutoScan.h"

#include "browser/FileTransfer.h"
#include "import/frmImport.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/OfferedFiles.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/LibraryFolders.h"
#include "store/Log.h"

#include <string_view>
#include <utility>

namespace trovarium {

namespace {

// One after the other, so the list is grouped by type.
constexpr std::string_view Patterns[] = {"*.jpg", "*.bmp", "*.gif", "*.wmf", "*.mpg", "*.mov", "*.avi"};
constexpr int MostEntries = 32000; // from here on no further type is scanned
constexpr int EndOfFolder = 32001; // from here on no further file is added
constexpr std::string_view ScanCaption = "&Auto-Scan (and sub-folders)";

} // namespace

AutoScan::AutoScan(frmImport& form, Album& album)
    : m_form(form)
    , m_album(album)
{
    on(form.cmdAutoScan.Click, this, &AutoScan::cmdAutoScan_Click);
}

void AutoScan::cmdAutoScan_Click()
{
    if (m_form.DialogBusy) {
        cancel();
        return;
    }
    begin();
    std::vector<Folder> folders(1);
    scanTypes(folders);
    m_form.List1.Enabled = false;
    m_form.List2.Enabled = false;
    splitPaths();
    m_form.List1.Enabled = true;
    m_form.List2.Enabled = true;
    end();
}

void AutoScan::scanOffered(const OfferedFiles& files)
{
    std::vector<Folder> folders;
    std::vector<std::string> refused = files.others;
    begin();
    addOffered(files, folders, refused);
    scanTypes(folders);
    // At once, so that a cancelled list is whole too. What was added by hand meanwhile has its folder.
    for (int i = 0; i < m_form.List1.ListCount(); ++i) {
        if (m_form.List1.List(i).find('\\') != std::string::npos)
            splitPath(i);
    }
    const bool wasCancelled = ScanStopped;
    end();
    // Once the list is full, the folders weren't searched, as was told.
    const bool isFull = m_form.List1.ListCount() >= MostEntries;
    for (const Folder& folder : folders) {
        if (folder.found == 0 && !isFull)
            refused.push_back(SplitPath(folder.path).FileName);
    }
    if (!wasCancelled && !refused.empty())
        tellRefused(refused, files.paths.size() + files.others.size());
}

void AutoScan::begin()
{
    m_form.cmdAutoScan.Caption = "&Cancel";
    ScanStopped = false;
    m_form.DialogBusy = true;
    m_form.MousePointer = ArrowHourglassPointer;
}

void AutoScan::end()
{
    m_form.cmdAutoScan.Caption = std::string(ScanCaption);
    ScanStopped = true;
    m_form.DialogBusy = false;
    m_form.MousePointer = DefaultPointer;
}

// Called in the events of the scan, which then ends by itself.
void AutoScan::cancel()
{
    m_form.cmdAutoScan.Caption = std::string(ScanCaption);
    ScanStopped = true;
    m_form.DialogBusy = false;
    m_form.cmdAutoScan.MousePointer = DefaultPointer;
}

// Doesn't test for a cancel between types: each of the rest then ends at its first entry.
void AutoScan::scanTypes(std::vector<Folder>& folders)
{
    std::int32_t fileCount = 0;
    std::int32_t dirCount = 0;
    ListBox& list = m_form.List1;
    for (const std::string_view type : Patterns) {
        if (findNoCase(m_form.File1.Pattern(), type) == std::string::npos || list.ListCount() >= MostEntries)
            continue;
        for (Folder& folder : folders) {
            const int before = list.ListCount();
            std::string path = folder.path.empty() ? m_form.Dir1.Path() : folder.path;
            FindFiles(path, std::string(type), fileCount, dirCount, list, ScanStopped);
            folder.found += list.ListCount() - before;
        }
        m_form.lbCount.Caption = numberText(list.ListCount());
        if (list.ListCount() >= MostEntries)
            tellFull();
    }
}

void AutoScan::tellFull()
{
    m_form.desktop().prompts().messageBox("Notice: File count for located media has been exceeded. Some of the "
                                          "specified folders may have not been completely searched.",
        Message::Notice, "");
}

// Covers all entries: one that was added by hand is only a name, and loses its folder here. The count label ends at the
// last index. After a cancel the remaining entries stay full paths.
void AutoScan::splitPaths()
{
    const int count = m_form.List1.ListCount();
    for (int i = 0; i < count; ++i) {
        m_form.lbCount.Caption = numberText(i);
        splitPath(i);
        m_form.desktop().DoEvents();
        if (ScanStopped)
            return;
    }
}

void AutoScan::splitPath(int i)
{
    SplitPathResult parts = SplitPath(m_form.List1.List(i));
    m_form.List1.setList(i, std::move(parts.FileName));
    m_form.List2.setList(i, std::move(parts.Folder));
}

void AutoScan::addOffered(const OfferedFiles& files, std::vector<Folder>& folders, std::vector<std::string>& refused)
{
    for (const std::string& path : files.paths) {
        if (m_form.List1.ListCount() >= MostEntries) {
            tellFull();
            return;
        }
        bool isFolder = false;
        attempt([&] { isFolder = m_album.files.folderExists(path); });
        if (isFolder) {
            folders.push_back({path});
        } else if (canShow(m_album, m_form.desktop(), path)) {
            m_form.unsettleList();
            // A file in the root as a scan lists it.
            m_form.List1.AddItem(path.find('\\') == std::string::npos ? "/\\" + path.substr(1) : path);
        } else {
            refused.push_back(SplitPath(path).FileName);
        }
        m_form.desktop().DoEvents();
        if (ScanStopped)
            return;
    }
}

void AutoScan::tellRefused(const std::vector<std::string>& refused, std::size_t all)
{
    const std::string where = refused.size() == 1
        ? refused.front()
        : numberText(refused.size()) + " of the " + numberText(all) + " files and folders";
    m_form.desktop().prompts().messageBox("Nothing to import was found in " + where + ".", Message::Notice, "");
}

std::int64_t AutoScan::FindFiles(std::string& path, const std::string& pattern, std::int32_t& fileCount,
    std::int32_t& dirCount, ListBox& list, const bool& stopFlag)
{
    std::int64_t total = 0;
    try {
        if (!path.ends_with('\\'))
            path += '\\';
        std::vector<std::string> folders;
        m_album.files.requireFolder(path);
        std::vector<FolderEntry> entries = m_album.files.listAll(path, pattern);
        if (!findFolders(path, entries, folders, dirCount, stopFlag)
            || !findMatches(path, entries, total, fileCount, list, stopFlag))
            return total;
        entries = {}; // before those of the folders below need their room
        // "/" + name for a folder in the root, although a file in the root is listed as "/\\name".
        const std::string above = path == "/\\" ? "/" : path;
        // Every folder is entered even if the list is full: the limit is a soft one.
        for (const std::string& name : folders) {
            std::string below = above + name + "\\";
            total += FindFiles(below, pattern, fileCount, dirCount, list, stopFlag);
        }
    } catch (const Failure& failure) {
        logFailure(m_album, "FindFiles", failure);
    }
    return total;
}

// False when the scan was stopped.
bool AutoScan::findFolders(const std::string& path, const std::vector<FolderEntry>& entries,
    std::vector<std::string>& folders, std::int32_t& dirCount, const bool& stopFlag)
{
    for (const FolderEntry& entry : entries) {
        const auto failure = attempt([&] {
            if (entry.name == ".." || entry.name == "." || entry.name == "?"
                || (m_album.files.attributes(path + entry.name, entry.kind) & DirectoryAttribute) == 0)
                return;
            folders.push_back(entry.name);
            ++dirCount;
        });
        // Case-sensitive: for ".SYS" the failure counts.
        if (failure && !entry.name.ends_with(".sys"))
            throw Failure(*failure);
        if (stopFlag)
            return false;
        m_form.desktop().DoEvents();
    }
    return true;
}

// False when the scan was stopped or the list is full.
bool AutoScan::findMatches(const std::string& path, const std::vector<FolderEntry>& entries, std::int64_t& total,
    std::int32_t& fileCount, ListBox& list, const bool& stopFlag)
{
    for (const FolderEntry& entry : entries) {
        if (!entry.length)
            continue;
        std::string file = path + entry.name;
        total += m_album.files.length(file, *entry.length);
        ++fileCount;
        m_form.unsettleList();
        list.AddItem(std::move(file));
        if (list.ListCount() >= EndOfFolder || stopFlag)
            return false;
        m_form.desktop().DoEvents();
    }
    return true;
}

} // namespace trovarium
