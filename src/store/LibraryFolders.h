#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace trovarium {

struct Album;
class FileService;
class Desktop;

// The seven folders of a library under AppPath; one that exists is no failure that matters.
void makeLibraryFolders(Album& album);

// The six folder settings, in their order. One that fails leaves its path as it was.
void readFolderSettings(Album& album);

// Tests whether the program's folder can be written; if not, information files and group lists move to a
// folder of the installed copy.
void CheckDirPaths(Album& album, Desktop& desktop);

bool IsFolderReadOnly(Album& album, std::string_view path);
std::string GetMediaFolderName(Album& album, std::string_view path);
bool CopyNewerFiles(Album& album, std::string_view sourcePattern, std::string_view destFolder);
bool MakeNestedFolders(FileService& files, std::string_view path);

inline constexpr int MaxNestedFolders = 20;
using FieldArray = std::array<std::string, MaxNestedFolders + 1>;
void ParseFields(std::string_view text, std::string_view delimiters, FieldArray& fields, std::int16_t maxFields);

struct SplitPathResult {
    std::string Folder; // with its backslash
    std::string FileName;
};
SplitPathResult SplitPath(std::string_view fullPath); // at the last backslash

} // namespace trovarium
