#include "support/TestAlbum.h"

#include "store/LibraryFolders.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

namespace trovarium {

namespace fs = std::filesystem;

namespace {

std::string readWhole(const fs::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace

TestAlbum::TestAlbum()
    : m_ownFiles(std::make_unique<FileService>())
    , m_album(*m_ownFiles)
{
    make();
}

TestAlbum::TestAlbum(FileService& files)
    : m_album(files)
{
    make();
}

void TestAlbum::make()
{
    fs::create_directory(toNativePath(library()));
    m_album.paths.ProgramFolder = library();
    m_album.paths.AppPath = library();
    m_album.settingsStore = std::make_unique<COWReg>(RegistryAccess(settingsFolder()));
    makeLibraryFolders(m_album);
    readFolderSettings(m_album);
}

std::string TestAlbum::library() const
{
    return m_folder.inside() + "\\Library";
}

std::string TestAlbum::settingsFolder() const
{
    return toNativePath(m_folder.inside()) + "/settings";
}

void TestAlbum::setSetting(std::string_view section, std::string_view key, std::string_view value)
{
    m_album.Settings().SetOWSetting("Trovarium", section, key, value);
}

void TestAlbum::put(std::string_view path, std::string_view bytes)
{
    std::ofstream stream(toNativePath(path), std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string TestAlbum::bytes(std::string_view path) const
{
    return readWhole(toNativePath(path));
}

bool TestAlbum::isThere(std::string_view path) const
{
    return fs::exists(toNativePath(path));
}

void TestAlbum::putGroup(std::string_view fileName, const std::vector<std::string>& lines)
{
    put(m_album.paths.SlideGroupPath + std::string(fileName), joinedLines(lines));
}

std::vector<std::string> TestAlbum::groupLines(std::string_view fileName) const
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

void TestAlbum::showGroup(const std::vector<std::string>& lines, const std::vector<int>& selectedPositions)
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

void TestAlbum::failAt(FileOperation failing, std::string_view ending, FailureKind kind, int first)
{
    files().setFaultHook([=, end = std::string(ending)](FileOperation operation, std::string_view path) mutable {
        if (operation == failing && path.ends_with(end) && --first <= 0)
            throw Failure(kind);
    });
}

std::map<std::string, std::string> TestAlbum::allFiles() const
{
    const fs::path root = toNativePath(m_folder.inside());
    std::map<std::string, std::string> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root)) {
        if (entry.is_regular_file())
            files[fs::relative(entry.path(), root).string()] = readWhole(entry.path());
    }
    return files;
}

FaultHook readOnlyBelow(std::string folder)
{
    return [folder = std::move(folder)](FileOperation operation, std::string_view path) {
        const bool writes = operation == FileOperation::Print || operation == FileOperation::Delete
            || operation == FileOperation::Rename || operation == FileOperation::MakeFolder
            || (operation == FileOperation::Open && (path.ends_with("test.txt") || path.ends_with(".Log")));
        if (writes && path.starts_with(folder))
            throw Failure(FailureKind::PathFileAccess);
    };
}

std::string joinedLines(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

} // namespace trovarium
