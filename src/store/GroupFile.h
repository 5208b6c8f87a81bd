#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace trovarium {

struct Album;

// "  All Photos  ": the group of all photographs. Only this name marks it.
inline constexpr std::string_view AllPhotosGroupName = "  All Photos  ";
inline constexpr std::string_view AllPhotosGroup = "  All Photos  .lst";
// The name of a scratch list, which is nobody's group.
inline constexpr std::string_view ScratchGroupName = "TmpGroup";
bool isAllPhotosGroup(std::string_view name); // compared in capitals

// What stands before the first "." of a list file's name.
std::string groupNameOf(std::string_view fileName);

// The path of a list file as it stands on the disk: a library from a file system without case has "Trip.LST" where
// the program asks for "Trip.lst". For all that writes, deletes or asks for a list.
std::string groupListPath(const Album& album, std::string_view fileName);

// Whether there is such a list, in any case of letters. A look that fails is a failure.
bool hasGroupList(const Album& album, std::string_view fileName);

// The same for a list that is about to be written. That of all photographs is the program's own: a link in its place
// goes, wherever it leads.
std::string writableGroupList(const Album& album, std::string_view fileName);

// Failures go to the caller, as for every rename: it never replaces another list.
void renameGroupList(Album& album, std::string_view from, std::string_view to);

// The work on group list files; `fileName` has its extension. All catch any failure, close what they opened
// and give false: no message, no log line. What goes by the selection does nothing while the group is not whole.

// Reads the list into album.group.GroupList and clears GroupSelect to the same length. False leaves in
// GroupList what was read so far, and GroupSelect as it was. The other values of the group are the caller's.
bool readGroupList(Album& album, std::string_view fileName);

// Whether the list of the group on show is still the file that was read. Nothing is written from what stands in memory
// when somebody else has changed the list since, or deleted it.
bool isGroupAsRead(const Album& album);

// Appends the selected lines, to a new list too. That of the group on show is not made anew when it is gone.
bool AddToGroup(Album& album, std::string_view fileName);

// Drops the selected lines that still stand at the same position, by way of "temp.group".
bool RemoveFromGroupFile(Album& album, std::string_view fileName);

// Moves the selected photographs as one block: +n behind position n, -n in front of position n. A position
// beyond the last photograph is taken as the last one. The list is written whole or not at all.
bool ReorderGroupFile(Album& album, std::string_view fileName, std::int32_t dropPosition);

// Replaces each of the ten characters that a file name can't hold by "_"; true if nothing had to be changed.
bool CheckGroupName(std::string& name);

} // namespace trovarium
