#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace trovarium {

struct Album;
class ListBox;
class frmImport;

// Fills the list of the import dialog with every file of the checked types in a folder and all folders below it.
// While it runs its button is the one that cancels it.
class AutoScan {
public:
    AutoScan(frmImport& form, Album& album);

    void cmdAutoScan_Click();
    // Lets a scan that runs end at its next entry.
    void stop() { ScanStopped = true; }

    // Adds the full path of every file below `path` that matches `pattern`, the files of a folder before those of
    // its sub-folders; gives the bytes of all that it found. A backslash is added to `path`. `stopFlag` is looked
    // at between entries, where events run. A failure is logged and ends the folder that it comes up in.
    std::int64_t FindFiles(std::string& path, const std::string& pattern, std::int32_t& fileCount,
        std::int32_t& dirCount, ListBox& list, const bool& stopFlag);

private:
    void cancel();
    void scanTypes();
    void splitPaths();
    bool findFolders(
        const std::string& path, std::vector<std::string>& folders, std::int32_t& dirCount, const bool& stopFlag);
    bool findMatches(const std::string& path, const std::string& pattern, std::int64_t& total, std::int32_t& fileCount,
        ListBox& list, const bool& stopFlag);

    frmImport& m_form;
    Album& m_album;
    bool ScanStopped = false;
};

} // namespace trovarium
