#include "platform/system/Shell.h"

#include "platform/files/FileService.h"
#include "platform/system/UserFolders.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace trovarium {

namespace {

std::string workingFolder()
{
    std::array<char, PATH_MAX> buffer{};
    const char* folder = ::getcwd(buffer.data(), buffer.size());
    return folder == nullptr ? "" : folder;
}

std::string absolute(const std::string& path)
{
    return !path.empty() && path.front() == '/' ? path : workingFolder() + "/" + path;
}

bool isProgram(const std::string& path)
{
    struct stat status { };
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

bool isLink(const std::string& path)
{
    struct stat status { };
    return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

std::string lookedUp(std::string_view name)
{
    const char* variable = std::getenv("PATH");
    std::string_view folders = variable == nullptr ? "" : variable;
    for (;;) {
        const std::size_t end = std::min(folders.find(':'), folders.size());
        // An empty entry is the working folder.
        std::string program =
            absolute(std::string(folders.substr(0, end)) + (end == 0 ? "./" : "/") + std::string(name));
        if (isProgram(program))
            return program;
        if (end == folders.size())
            return {};
        folders.remove_prefix(end + 1);
    }
}

std::string ownImage()
{
    std::array<char, PATH_MAX> buffer{};
    const ssize_t length = ::readlink("/proc/self/exe", buffer.data(), buffer.size());
    return length <= 0 ? "" : std::string(buffer.data(), static_cast<std::size_t>(length));
}

// Without ".", and without ".." where no link stands before it: behind a link it means the folder above
// the link's target.
std::string tidied(std::string_view path)
{
    std::vector<std::string> prefixes{""};
    while (!path.empty()) {
        path.remove_prefix(1);
        const std::size_t end = std::min(path.find('/'), path.size());
        const std::string_view part = path.substr(0, end);
        path.remove_prefix(end);
        if (part.empty() || part == ".")
            continue;
        if (part == ".." && !isLink(prefixes.back()) && !prefixes.back().ends_with("/..")) {
            if (prefixes.size() > 1)
                prefixes.pop_back();
            continue;
        }
        prefixes.push_back(prefixes.back() + "/" + std::string(part));
    }
    return prefixes.back();
}

} // namespace

std::string programPath(std::string_view argument0)
{
    std::string program;
    if (argument0.find('/') != argument0.npos)
        program = absolute(std::string(argument0));
    else if (!argument0.empty())
        program = lookedUp(argument0);
    if (!isProgram(program))
        program = ownImage();
    program = tidied(program);
    const std::size_t slash = program.rfind('/');
    if (slash == program.npos || slash == 0)
        return "/";
    return fromNativePath(program.substr(0, slash));
}

void workInRoot()
{
    [[maybe_unused]] const int result = ::chdir("/"); // there is always one
}

std::string defaultInstallationPath()
{
    // Tidied, since a doubled separator would end the walk that makes its levels.
    return fromNativePath(tidied(userFolder("XDG_DATA_HOME", ".local/share") + "/OmbrelaneWorks/Trovarium"));
}

} // namespace trovarium
