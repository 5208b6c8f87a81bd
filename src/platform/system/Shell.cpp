#include "platform/system/Shell.h"

#include "platform/files/PathResolver.h"
#include "platform/files/Paths.h"
#include "platform/system/UserFolders.h"

#include <algorithm>
#include <array>
#include <climits>
#include <sys/auxv.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace trovarium {

namespace {

constexpr const char* OwnImage = "/proc/self/exe";

std::string absolute(const std::string& path)
{
    std::array<char, PATH_MAX> folder{};
    if (path.starts_with('/') || ::getcwd(folder.data(), folder.size()) == nullptr)
        return path;
    return folder.data() + ("/" + path);
}

bool isOwnProgram(const std::string& path)
{
    struct stat program { };
    struct stat own { };
    return ::stat(path.c_str(), &program) == 0 && ::stat(OwnImage, &own) == 0 && isOneFile(program, own);
}

bool isLink(const std::string& path)
{
    struct stat status { };
    return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

std::string ownImage()
{
    std::array<char, PATH_MAX> buffer{};
    const ssize_t length = ::readlink(OwnImage, buffer.data(), buffer.size());
    return length <= 0 ? "" : std::string(buffer.data(), static_cast<std::size_t>(length));
}

// Removes "." and "..", but for a ".." behind a symbolic link: that means the folder above the link's target.
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

std::string programPath()
{
    const auto* startedAs = reinterpret_cast<const char*>(::getauxval(AT_EXECFN));
    return programPath(startedAs != nullptr ? startedAs : "");
}

std::string programPath(const std::string& startedAs)
{
    std::string program = absolute(startedAs);
    program = tidied(isOwnProgram(program) ? program : ownImage());
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
    // Tidied: MakeNestedFolders stops at a doubled separator.
    return fromNativePath(tidied(userFolder("XDG_DATA_HOME", ".local/share") + "/OmbrelaneWorks/Trovarium"));
}

} // namespace trovarium
