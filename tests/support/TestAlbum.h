#pragma once

#include "platform/files/FileService.h"
#include "runtime/Failure.h"
#include "store/Album.h"
#include "support/TemporaryFolder.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

// A library in a temporary folder, made and read as the start-up does it: "Library" with its seven folders and
// the paths to them, and beside it "settings" with a settings store of its own. Paths are in the program's form.
class TestAlbum {
public:
    TestAlbum(); // with a file service of its own
    explicit TestAlbum(FileService& files);

    Album& album() { return m_album; }
    AlbumPaths& paths() { return m_album.paths; }
    FileService& files() { return m_album.files; }
    const TemporaryFolder& folder() const { return m_folder; }
    std::string library() const;        // the folder of the program, no backslash at the end
    std::string settingsFolder() const; // native

    void setSetting(std::string_view section, std::string_view key, std::string_view value);

    // Whole files, byte for byte and past the file service.
    void put(std::string_view path, std::string_view bytes);
    std::string bytes(std::string_view path) const; // empty when absent
    bool isThere(std::string_view path) const;

    // A list file of these lines, and the group that it holds as the one on show, nothing selected.
    void putGroup(std::string_view fileName, const std::vector<std::string>& lines);
    std::vector<std::string> groupLines(std::string_view fileName) const; // none when absent
    void showGroup(const std::vector<std::string>& lines, const std::vector<int>& selectedPositions = {});

    // Every such operation on a path that ends so fails, from that one on, until the hook of the files is set anew.
    void failAt(
        FileOperation failing, std::string_view ending = {}, FailureKind kind = FailureKind::DeviceIo, int first = 1);
    std::string log() const { return bytes(library() + "\\Trovarium.Log"); }

    // Every file below the temporary folder with its bytes, by native path from there.
    std::map<std::string, std::string> allFiles() const;

private:
    void make();

    TemporaryFolder m_folder;
    std::unique_ptr<FileService> m_ownFiles;
    Album m_album;
};

// Takes the right to write below `folder` away: from the write test, the log, every print, delete, rename and
// new folder.
FaultHook readOnlyBelow(std::string folder);

// Each line with the line end of the library's files.
std::string joinedLines(const std::vector<std::string>& lines);

} // namespace trovarium
