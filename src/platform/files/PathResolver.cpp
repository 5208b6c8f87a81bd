#include "platform/files/PathResolver.h"

#include "runtime/Failure.h"
#include "runtime/Text.h"

#include <optional>
#include <sys/stat.h>

namespace trovarium {

bool isFolder(const std::string& native)
{
    struct stat status = {};
    return stat(native.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string PathResolver::folder(const std::string& native)
{
    if (isFolder(native))
        return native;
    const NativePath parts = splitNative(withoutEndSlashes(native));
    if (parts.leaf.empty())
        throw Failure(FailureKind::PathNotFound);
    const std::string parent = folder(parts.folder);
    const bool dots = parts.leaf == "." || parts.leaf == "..";
    const std::optional<std::string> name = dots ? parts.leaf : m_listings.readableName(parent, parts.leaf);
    std::string found = name ? joinNative(parent, *name) : std::string();
    if (!name || !isFolder(found))
        throw Failure(FailureKind::PathNotFound);
    return found;
}

NativePath PathResolver::exact(const std::string& native)
{
    NativePath place = splitNative(native);
    struct stat status = {};
    const bool ascii = isAscii(place.leaf);
    if (!ascii && lstat(native.c_str(), &status) == 0)
        return place;
    place.folder = folder(place.folder);
    if (!ascii)
        place.leaf = m_listings.sameName(place.folder, place.leaf).value_or(place.leaf);
    return place;
}

std::string PathResolver::readable(const std::string& native)
{
    const NativePath place = splitNative(native);
    if (place.leaf.empty())
        throw Failure(FailureKind::FileNotFound);
    const std::string found = folder(place.folder);
    const std::optional<std::string> name = m_listings.readableName(found, place.leaf);
    if (!name)
        throw Failure(FailureKind::FileNotFound);
    return joinNative(found, *name);
}

} // namespace trovarium
