// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace trovarium {

struct Album;
class Desktop;

// Creates the seven folders of a library in AppPath. Failures are ignored.
void makeLibraryFolders(Album& album);

// Reads the six folder settings. After a failure a path is unchanged.
void readFolderSettings(Album& album);

// Removes symbolic links in the place of the files that the program writes without being asked: an album from somebody
// else could make it overwrite other files with them.
void removeOwnLinks(Album& album);

// Whether the program may work on a library with folders that are symbolic links and lead out of it: it would change
// files there that belong to no album. Asks the user once for each link and target, and nothing without such a link.
bool mayWorkOutside(Album& album, Desktop& desktop);

// Tests whether the program's folder can be written; if not, information files and group lists move to a
// folder of the installed copy.
void CheckDirPaths(Album& album, Desktop& desktop);

// Removes the hidden files that killed runs left in the library's folders. To be called after the check, which has
// listed the folders of photographs, information files and lists: they aren't read again.
void removeLeftOvers(Album& album);

// True when no file can be written in `path`; then `ReadOnlyLibrary` is set too. Leaves nothing behind.
bool IsFolderReadOnly(Album& album, std::string_view path);

// "CD-" and the size of all photographs below `path` in bytes: the same medium has the same name.
std::string GetMediaFolderName(Album& album, std::string_view path);

// Copies the files that match `sourcePattern` and are newer than their namesakes in `destFolder`, or have none
// there. Failures are ignored. Always true.
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
