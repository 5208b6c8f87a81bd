#include "platform/system/MountedMedia.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <memory>
#include <mntent.h>
#include <string_view>

namespace trovarium {

namespace {

// The folders that desktops and administrators mount them in.
constexpr std::string_view Roots[] = {"/media/", "/run/media/", "/mnt/"};

} // namespace

std::vector<std::string> mountedMedia(const char* table)
{
    std::vector<std::string> folders;
    const std::unique_ptr<FILE, int (*)(FILE*)> mounts(setmntent(table, "re"), endmntent);
    if (!mounts)
        return folders;
    while (const mntent* entry = getmntent(mounts.get())) {
        std::string folder = entry->mnt_dir;
        const bool isMedium = std::any_of(std::begin(Roots), std::end(Roots), [&](std::string_view root) {
            return folder.size() > root.size() && folder.compare(0, root.size(), root) == 0;
        });
        if (isMedium && std::find(folders.begin(), folders.end(), folder) == folders.end())
            folders.push_back(std::move(folder));
    }
    return folders;
}

} // namespace trovarium
