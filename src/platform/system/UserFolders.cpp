// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/system/UserFolders.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <mntent.h>
#include <pwd.h>
#include <unistd.h>
#include <utility>

namespace trovarium {

std::string homeFolder()
{
    const char* home = std::getenv("HOME");
    if (home == nullptr || home[0] != '/') {
        const passwd* entry = getpwuid(getuid());
        home = entry != nullptr ? entry->pw_dir : nullptr;
    }
    std::string folder = home != nullptr ? home : "";
    while (folder.size() > 1 && folder.back() == '/')
        folder.pop_back();
    return folder;
}

std::string userFolder(const char* variable, std::string_view belowHome)
{
    const char* folder = std::getenv(variable);
    if (folder != nullptr && folder[0] == '/')
        return folder;
    const std::string home = homeFolder();
    return home.empty() ? home : home + "/" + std::string(belowHome);
}

bool isOnMedium(std::string_view folder)
{
    constexpr std::string_view Roots[] = {"/media/", "/run/media/", "/mnt/"};
    return std::any_of(std::begin(Roots), std::end(Roots),
        [&](std::string_view root) { return folder.size() > root.size() && folder.starts_with(root); });
}

std::vector<std::string> mountedMedia()
{
    const std::string home = homeFolder();
    std::vector<std::string> folders;
    const std::unique_ptr<FILE, int (*)(FILE*)> mounts(setmntent("/proc/self/mounts", "re"), &endmntent);
    while (const mntent* entry = mounts ? getmntent(mounts.get()) : nullptr) {
        std::string folder = entry->mnt_dir;
        if (isOnMedium(folder) && folder != home && std::find(folders.begin(), folders.end(), folder) == folders.end())
            folders.push_back(std::move(folder));
    }
    return folders;
}

} // namespace trovarium
