// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace trovarium {

struct Album;

// "  All Photos  ": the group of all photographs. Only this name marks it.
inline constexpr std::string_view AllPhotosGroupName = "  All Photos  ";
inline constexpr std::string_view AllPhotosGroup = "  All Photos  .lst";
// A scratch list that earlier versions left behind when they were killed. No group may have its name.
inline constexpr std::string_view ScratchGroupName = "TmpGroup";
inline constexpr std::string_view ScratchGroup = "TmpGroup.lst";
bool isAllPhotosGroup(std::string_view name); // compared in capitals

// A list file's name up to its first ".".
std::string groupNameOf(std::string_view fileName);

// The path of a list file with the name as it is on the disk: a library from a case-insensitive file system may have
// "Trip.LST" for "Trip.lst". To be used wherever a list is written, renamed, deleted or tested for.
std::string groupListPath(const Album& album, std::string_view fileName);

// Whether there is such a list, in upper or lower case. A disk that doesn't answer is a failure.
bool hasGroupList(const Album& album, std::string_view fileName);

// The same for a list that is about to be written. The list of all photographs is the program's own: a symbolic link
// in its place is removed.
std::string writableGroupList(const Album& album, std::string_view fileName);

void renameGroupList(const Album& album, const std::string& from, const std::string& to);
// Renames the music of the group of this list; false if it has none, or it can't be.
bool renameMusic(const Album& album, const std::string& from, const std::string& to);

// The following work on group list files; `fileName` has its extension. On any failure they close what they opened and
// return false: no message, no log line. Those that use the selection do nothing unless the group `isWhole`.

// Reads the list into album.group.GroupList and clears GroupSelect to the same length. After a failure GroupList has
// what was read so far, and GroupSelect is unchanged. The caller sets the other values of the group.
bool readGroupList(Album& album, std::string_view fileName);

// Whether the list file of the group on show is unchanged since it was read. If not, it must not be overwritten from
// memory.
bool isGroupAsRead(const Album& album);

// Appends the selected lines, also to a new list. If the list of the group on show is gone, it isn't created again.
bool AddToGroup(Album& album, std::string_view fileName);

// Drops the selected lines that are still at the same position, with "temp.group" as the temporary file.
bool RemoveFromGroupFile(Album& album, std::string_view fileName);

// Moves the selected photographs as one block: +n after position n, -n before position n. A position
// beyond the last photograph means the last one. The list is written whole or not at all. Gives the new position of
// the first of them, 0 after a failure.
std::int32_t ReorderGroupFile(Album& album, std::string_view fileName, std::int32_t dropPosition);

// Replaces each of the ten characters that a file name can't hold by "_"; true if nothing had to be changed.
bool CheckGroupName(std::string& name);

} // namespace trovarium
