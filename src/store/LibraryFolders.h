#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace trovarium {

struct Album;
class Desktop;

// The seven folders of a library under AppPath; one that exists is no failure that matters.
void makeLibraryFolders(Album& album);

// The six folder settings, in their order. One that fails leaves its path as it was.
void readFolderSettings(Album& album);

// Takes away the links that stand in the places of the files that the program writes of its own accord: an album from
// somebody else would have it write or read what they lead to.
void removeOwnLinks(Album& album);

// Tests whether the program's folder can be written; if not, information files and group lists move to a
// folder of the installed copy.
void CheckDirPaths(Album& album, Desktop& desktop);

// What a killed run left hidden in the library's folders while it wrote goes, quietly. Behind the check, which reads
// the folders of photographs, information files and lists: they needn't be read again for this.
void removeLeftOvers(Album& album);

// True when no file can be written in `path`; then `ReadOnlyLibrary` is set too. Leaves nothing behind.
bool IsFolderReadOnly(Album& album, std::string_view path);

// "CD-" and the size of all photographs below `path` in bytes: the same medium has the same name.
std::string GetMediaFolderName(Album& album, std::string_view path);

// Copies the files that match `sourcePattern` and are newer than their namesakes in `destFolder`, or have none
// there; a copy that fails is passed over. Always true.
bool CopyNewerFiles(Album& album, std::string_view sourcePattern, std::string_view destFolder);
// Makes every missing level of `path` up to the twentieth; false when one can't be made.
bool MakeNestedFolders(Album& album, std::string_view path);

inline constexpr int MaxNestedFolders = 20;
using FieldArray = std::array<std::string, MaxNestedFolders + 1>;
// Cuts `text` at each of the delimiters (ASCII) into at most `maxFields` trimmed fields, from element 0 on.
void ParseFields(
    Album& album, std::string_view text, std::string_view delimiters, FieldArray& fields, std::int16_t maxFields);

struct SplitPathResult {
    std::string Folder; // with its backslash
    std::string FileName;
};
SplitPathResult SplitPath(std::string_view fullPath); // at the last backslash

} // namespace trovarium
