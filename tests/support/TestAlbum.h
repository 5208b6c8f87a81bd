// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Desktop.h"
#include "runtime/Failure.h"
#include "store/Album.h"
#include "store/LibraryFolders.h"
#include "support/Robot.h"
#include "support/TemporaryFolder.h"

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace trovarium {

// Each line with the line end of the library's files.
inline std::string joinedLines(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

// A picture with a gradient as an uncompressed bitmap of 24 bits.
inline std::string plainBitmap(int width, int height)
{
    const int pixelBytes = (width * 3 + 3) / 4 * 4 * height;
    std::string bytes = "BM";
    // The last one before the pixels: a plane, and the bits of a pixel.
    for (const int value : {54 + pixelBytes, 0, 54, 40, width, height, 24 << 16 | 1})
        for (int shift = 0; shift < 32; shift += 8)
            bytes += static_cast<char>(value >> shift & 0xFF);
    bytes.append(24, '\0');
    for (int i = 0; i < pixelBytes; ++i)
        bytes += static_cast<char>(i % 251);
    return bytes;
}

// A library in a temporary folder, made and read as the start-up does it: "Library" with its seven folders and
// the paths to them, and beside it "settings" with a settings store of its own. Paths are in the program's form.
class TestAlbum {
public:
    explicit TestAlbum(FileService& files = testDesktop().files())
        : m_album(files)
    {
        std::filesystem::create_directory(toNativePath(library()));
        m_album.paths.ProgramFolder = library();
        m_album.paths.AppPath = library();
        m_album.settingsStore = std::make_unique<COWReg>(RegistryAccess(settingsFolder()));
        makeLibraryFolders(m_album);
        readFolderSettings(m_album);
    }

    Album& album() { return m_album; }
    AlbumPaths& paths() { return m_album.paths; }
    FileService& files() { return m_album.files; }
    const TemporaryFolder& folder() const { return m_folder; }
    std::string library() const { return m_folder.inside("Library"); } // the folder of the program
    std::string settingsFolder() const { return m_folder.native("settings"); }

    void setSetting(std::string_view section, std::string_view key, std::string_view value)
    {
        m_album.Settings().SetOWSetting("Trovarium", section, key, value);
    }

    // Whole files, byte for byte and past the file service.
    void put(std::string_view path, std::string_view bytes)
    {
        std::ofstream(toNativePath(path), std::ios::binary) << bytes;
    }
    std::string bytes(std::string_view path) const // empty when absent
    {
        std::ifstream stream(toNativePath(path), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    bool isThere(std::string_view path) const { return std::filesystem::exists(toNativePath(path)); }

    // A list file of these lines, and the group that it holds as the one on show.
    void putGroup(std::string_view fileName, const std::vector<std::string>& lines)
    {
        put(m_album.paths.SlideGroupPath + std::string(fileName), joinedLines(lines));
    }
    std::vector<std::string> groupLines(std::string_view fileName) const // none when absent
    {
        std::vector<std::string> lines;
        FileService files; // without the faults of the test
        attempt([&] {
            files.open(m_album.paths.SlideGroupPath + std::string(fileName), OpenMode::Input, 1);
            while (!files.endOfFile(1))
                lines.push_back(files.lineInput(1));
        });
        return lines;
    }
    void showGroup(const std::vector<std::string>& lines, const std::vector<int>& selectedPositions = {})
    {
        GroupOnShow& group = m_album.group;
        group.GroupList.clear();
        for (const std::string& line : lines)
            group.GroupList.append(line);
        group.GroupSelect.redimension(group.GroupList.upperBound());
        for (const int position : selectedPositions)
            group.GroupSelect(position) = 1;
        group.PhotoCount = group.GroupList.upperBound();
    }

    // Every such operation on a path that ends so fails, from that one on, until the hook of the files is set anew.
    void failAt(
        FileOperation failing, std::string_view ending = {}, FailureKind kind = FailureKind::DeviceIo, int first = 1)
    {
        files().setFaultHook([=, end = std::string(ending)](FileOperation operation, std::string_view path) mutable {
            if (operation == failing && path.ends_with(end) && --first <= 0)
                throw Failure(kind);
        });
    }
    std::string log() const { return bytes(library() + "\\Trovarium.Log"); }

    // Every file below the temporary folder with its bytes, by native path from there.
    std::map<std::string, std::string> allFiles() const
    {
        std::map<std::string, std::string> files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(m_folder.path()))
            if (entry.is_regular_file())
                files[entry.path().lexically_relative(m_folder.path())] = bytes(entry.path().string());
        return files;
    }

private:
    TemporaryFolder m_folder;
    Album m_album;
};

// Takes the right to write below `folder` away: from the write test, the log, every print, delete, rename and
// new folder.
inline FaultHook readOnlyBelow(std::string folder)
{
    return [folder = std::move(folder)](FileOperation operation, std::string_view path) {
        using enum FileOperation;
        const bool writes = operation == Print || operation == Delete || operation == Rename || operation == MakeFolder
            || (operation == Open && (path.ends_with("test.txt") || path.ends_with(".Log")));
        if (writes && path.starts_with(folder))
            throw Failure(FailureKind::PathFileAccess);
    };
}

} // namespace trovarium
