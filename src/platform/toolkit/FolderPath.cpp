#include "platform/toolkit/FolderPath.h"

#include "platform/files/FileService.h"
#include "platform/system/UserFolders.h"

namespace trovarium {

std::string folderPath(std::string_view path)
{
    while (path.size() > 1 && (path.back() == '\\' || path.back() == '/'))
        path.remove_suffix(1);
    return fromNativePath(path);
}

std::string startFolder()
{
    const std::string home = homeFolder();
    return home.empty() ? "/" : folderPath(home);
}

std::string folderAbove(const std::string& folder)
{
    const std::size_t cut = folder.rfind('\\');
    return cut == std::string::npos ? "/" : folder.substr(0, cut);
}

std::string_view folderName(std::string_view folder)
{
    if (folder == "/")
        return folder;
    const std::size_t cut = folder.rfind('\\');
    return folder.substr(cut == std::string_view::npos ? 1 : cut + 1);
}

bool liesIn(std::string_view folder, std::string_view above)
{
    if (above == "/")
        return folder.substr(0, 1) == "/";
    return folder.substr(0, above.size()) == above && (folder.size() == above.size() || folder[above.size()] == '\\');
}

} // namespace trovarium
