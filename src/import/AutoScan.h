#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

struct Album;
class frmImport;

// Fills the list of the import dialog with all files of the checked types in a folder and its subfolders. During the
// scan the same button cancels it.
class AutoScan {
public:
    AutoScan(frmImport& form, Album& album);

    void cmdAutoScan_Click();
    // Ends a running scan at its next entry.
    void stop() { ScanStopped = true; }

    // Adds the full path of every file below `path` that matches `pattern`, a folder's files before those of its
    // subfolders. Events run between entries, where a stop is tested for. A failure is logged and ends its folder.
    void FindFiles(std::string path, std::string_view pattern);

private:
    void cancel();
    void scanTypes();
    void splitPaths();
    bool findFolders(const std::string& path, std::vector<std::string>& folders);
    bool findMatches(const std::string& path, std::string_view pattern);

    frmImport& m_form;
    Album& m_album;
    bool ScanStopped = false;
};

} // namespace trovarium
