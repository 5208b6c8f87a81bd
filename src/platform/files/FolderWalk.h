#pragma once

#include "platform/files/FileService.h"
#include "platform/files/NamePattern.h"

#include <string>
#include <vector>

namespace trovarium {

// The entries of a native folder that the program sees and whose names match, sorted as lists are: no hidden names, no
// pipes and the like, no links to folders, but "." and "..". Asks for nothing but the folder itself wherever that tells
// what its entries are.
std::vector<FolderEntry> entriesOf(const std::string& folder, const NamePattern& pattern);

// Removes what killed runs left in a native folder of the files that they were making.
void removeLeftOversIn(const std::string& folder);

} // namespace trovarium
