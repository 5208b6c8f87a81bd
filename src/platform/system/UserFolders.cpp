#include "platform/system/UserFolders.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

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

} // namespace trovarium
