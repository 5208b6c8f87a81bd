#include "platform/toolkit/FolderPath.h"

#include "platform/files/FileService.h"

namespace trovarium {

std::string folderPath(std::string_view path)
{
    while (path.size() > 1 && (path.back() == '\\' || path.back() == '/'))
        path.remove_suffix(1);
    return fromNativePath(path);
}

std::string folderAbove(const std::string& folder)
{
    const std::size_t cut = folder.rfind('\\');
    return cut == std::string::npos ? "/" : folder.substr(0, cut);
}

bool liesIn(std::string_view folder, std::string_view above)
{
    if (above == "/")
        return folder.substr(0, 1) == "/";
    return folder.substr(0, above.size()) == above && (folder.size() == above.size() || folder[above.size()] == '\\');
}

} // namespace trovarium
