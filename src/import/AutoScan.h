// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace trovarium {

struct Album;
struct FolderEntry;
class ListBox;
class frmImport;
struct OfferedFiles;

// Fills the list of the import dialog with all files of the checked types in a folder and its subfolders. During a scan
// its button cancels it.
class AutoScan {
public:
    AutoScan(frmImport& form, Album& album);

    void cmdAutoScan_Click();

    // Adds the files that can be imported, and all of the checked types in the folders and below them. Tells how many
    // of what was offered gave no entry, unless it was cancelled.
    void scanOffered(const OfferedFiles& files);

    // Ends a running scan at its next entry.
    void stop() { ScanStopped = true; }

    // Adds the full path of every file below `path` that matches `pattern`, a folder's files before those of its
    // subfolders. Returns the sum of their sizes in bytes. Adds a backslash to `path`. Events run between entries,
    // where `stopFlag` is tested. A failure is logged and ends its folder.
    std::int64_t FindFiles(std::string& path, const std::string& pattern, std::int32_t& fileCount,
        std::int32_t& dirCount, ListBox& list, const bool& stopFlag);

private:
    // Where to search, and how many entries it gave.
    struct Folder {
        std::string path; // empty for the one that the dialog shows
        int found = 0;
    };

    void begin();
    void end();
    void cancel();
    void scanTypes(std::vector<Folder>& folders);
    void tellFull();
    void splitPaths();
    void splitPath(int i);
    void addOffered(const OfferedFiles& files, std::vector<Folder>& folders, std::vector<std::string>& refused);
    void tellRefused(const std::vector<std::string>& refused, std::size_t all);
    bool findFolders(const std::string& path, const std::vector<FolderEntry>& entries,
        std::vector<std::string>& folders, std::int32_t& dirCount, const bool& stopFlag);
    bool findMatches(const std::string& path, const std::vector<FolderEntry>& entries, std::int64_t& total,
        std::int32_t& fileCount, ListBox& list, const bool& stopFlag);

    frmImport& m_form;
    Album& m_album;
    bool ScanStopped = false;
};

} // namespace trovarium
