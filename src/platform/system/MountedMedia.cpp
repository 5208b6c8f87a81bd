#include "platform/system/MountedMedia.h"

#include "platform/system/UserFolders.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>
#include <utility>

namespace trovarium {

namespace {

// The folders that desktops and administrators mount them in.
constexpr std::string_view Roots[] = {"/media/", "/run/media/", "/mnt/"};

bool isMedium(std::string_view folder)
{
    return std::any_of(std::begin(Roots), std::end(Roots),
        [&](std::string_view root) { return folder.size() > root.size() && folder.substr(0, root.size()) == root; });
}

// A blank stands in the table as \040, in octal, and so does what else would part its fields.
std::string unescaped(std::string_view field)
{
    std::string text;
    for (std::size_t index = 0; index < field.size(); ++index) {
        if (field[index] == '\\' && index + 3 < field.size()) {
            text += static_cast<char>(
                (field[index + 1] - '0') * 64 + (field[index + 2] - '0') * 8 + (field[index + 3] - '0'));
            index += 3;
        } else {
            text += field[index];
        }
    }
    return text;
}

} // namespace

std::vector<std::string> mountedMedia(const std::string& table)
{
    const std::string home = homeFolder();
    std::vector<std::string> folders;
    std::ifstream mounts(table);
    std::string device;
    std::string field;
    std::string rest;
    while (mounts >> device >> field && std::getline(mounts, rest)) {
        std::string folder = unescaped(field);
        if (isMedium(folder) && folder != home && std::find(folders.begin(), folders.end(), folder) == folders.end())
            folders.push_back(std::move(folder));
    }
    return folders;
}

} // namespace trovarium
