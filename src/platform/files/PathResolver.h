#pragma once

#include "platform/files/FolderListings.h"
#include "platform/files/Paths.h"

#include <string>

namespace trovarium {

// Finds what a path that the system doesn't know as written means. All paths are native.
class PathResolver {
public:
    // A folder that exists, each part of its way as written or else without regard to case; "Path not found".
    std::string folder(const std::string& native);

    // The place that the exact name means, whether a file is there or not. Asks for no listing when the name
    // is ASCII or there as written. "Path not found" when the folder is missing.
    NativePath exact(const std::string& native);

    // A file that is only to be read and isn't there as written; "File not found".
    std::string readable(const std::string& native);

    FolderListings& listings() { return m_listings; }

private:
    FolderListings m_listings;
};

bool isFolder(const std::string& native);

} // namespace trovarium
