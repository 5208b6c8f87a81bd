// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/PhotographFiles.h"

#include "platform/files/FileService.h"
#include "runtime/Failure.h"
#include "store/Album.h"

#include <cstddef>

namespace trovarium {

namespace {

std::string inside(const std::string& folder, std::string_view name, std::string_view ending = {})
{
    if (!isPhotographName(name))
        throw Failure(FailureKind::FileNotFound);
    return folder + std::string(name).append(ending);
}

// "a (2).jpg" for "a.jpg".
std::string numbered(const std::string& path, std::size_t nameAt, int number)
{
    const std::size_t dot = path.rfind('.');
    const std::size_t end = dot == std::string::npos || dot <= nameAt ? path.size() : dot;
    return path.substr(0, end) + " (" + std::to_string(number) + ")" + path.substr(end);
}

} // namespace

bool isPhotographName(std::string_view name)
{
    return !name.empty() && name != "." && name != ".." && name.find_first_of("\\/") == std::string_view::npos;
}

std::string photographPath(const AlbumPaths& paths, std::string_view name)
{
    return inside(paths.PhotoPath, name);
}

std::string thumbnailPath(const AlbumPaths& paths, std::string_view name)
{
    return inside(paths.ThumbnailPath, name);
}

std::string infoFilePath(const AlbumPaths& paths, std::string_view name)
{
    return inside(paths.InfoPath, name, ".info");
}

std::string clipPath(const AlbumPaths& paths, std::string_view name)
{
    return inside(paths.AudioPath, name, ".wav");
}

void setAside(FileService& files, const std::string& folder, const std::string& name)
{
    setAside(files, folder, name, [&](const std::string& from, const std::string& to) { files.rename(from, to); });
}

void setAside(FileService& files, const std::string& folder, const std::string& name, const Renaming& rename)
{
    const std::string file = inside(folder, name);
    const std::string removed = folder + "Removed\\";
    const std::string aside = removed + name;
    if (!files.exists(file))
        throw Failure(FailureKind::FileNotFound);
    attempt([&] { files.makeFolder(folder + "Removed"); });
    if (files.exists(aside)) {
        int number = 2;
        while (files.exists(numbered(aside, removed.size(), number)))
            ++number;
        rename(aside, numbered(aside, removed.size(), number));
    }
    rename(file, aside);
}

} // namespace trovarium
