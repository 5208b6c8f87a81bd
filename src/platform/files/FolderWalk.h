#pragma once

#include "platform/files/FileService.h"
#include "platform/files/NamePattern.h"

#include <set>
#include <string>
#include <vector>

namespace trovarium {

// The entries of a native folder that the program sees and whose names match, sorted as lists are: no hidden names, no
// pipes and the like, no links to folders, but "." and "..". Asks for nothing but the folder itself wherever that tells
// what its entries are. What killed runs left of the files that they were making is added to `leftOvers`.
std::vector<FolderEntry> entriesOf(
    const std::string& folder, const NamePattern& pattern, std::set<std::string>& leftOvers);

// The names of those that are of this kind.
std::vector<std::string> namesOf(std::vector<FolderEntry> entries, FolderEntry::Kind kind);

} // namespace trovarium
