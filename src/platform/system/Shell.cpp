// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/system/Shell.h"

#include "platform/files/Paths.h"
#include "platform/system/UserFolders.h"

#include <algorithm>
#include <filesystem>
#include <sys/auxv.h>
#include <unistd.h>
#include <vector>

namespace trovarium {

namespace {

constexpr const char* OwnImage = "/proc/self/exe";

// Removes "." and "..", but for a ".." behind a symbolic link: that means the folder above the link's target.
std::string tidied(std::string_view path)
{
    std::vector<std::string> prefixes{""};
    std::error_code none;
    while (!path.empty()) {
        path.remove_prefix(1);
        const std::size_t end = std::min(path.find('/'), path.size());
        const std::string_view part = path.substr(0, end);
        path.remove_prefix(end);
        if (part.empty() || part == ".")
            continue;
        if (part == ".." && !std::filesystem::is_symlink(prefixes.back(), none) && !prefixes.back().ends_with("/..")) {
            if (prefixes.size() > 1)
                prefixes.pop_back();
            continue;
        }
        prefixes.push_back(prefixes.back() + "/" + std::string(part));
    }
    return prefixes.back();
}

} // namespace

std::string programPath()
{
    const auto* startedAs = reinterpret_cast<const char*>(::getauxval(AT_EXECFN));
    return programPath(startedAs != nullptr ? startedAs : "");
}

std::string programPath(const std::string& startedAs)
{
    std::error_code none;
    std::filesystem::path program = std::filesystem::absolute(startedAs, none);
    if (!std::filesystem::equivalent(program, OwnImage, none))
        program = std::filesystem::read_symlink(OwnImage, none);
    return fromNativePath(splitNative(tidied(program.native())).folder);
}

void workInRoot()
{
    [[maybe_unused]] const int result = ::chdir("/"); // there is always one
}

std::string defaultInstallationPath()
{
    // Tidied: MakeNestedFolders stops at a doubled separator.
    return fromNativePath(tidied(userFolder("XDG_DATA_HOME", ".local/share") + "/OmbrelaneWorks/Trovarium"));
}

} // namespace trovarium
