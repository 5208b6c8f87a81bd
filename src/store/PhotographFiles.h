// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace trovarium {

struct AlbumPaths;
class FileService;

// Whether `name` can be a photograph's. A list or an information file from somebody else may have a name with a
// separator, "." or "..", which would lead to a file elsewhere.
bool isPhotographName(std::string_view name);

// The paths of the files of the photograph `name`. "File not found" if it can't be a photograph's name.
std::string photographPath(const AlbumPaths& paths, std::string_view name);
std::string thumbnailPath(const AlbumPaths& paths, std::string_view name);
std::string infoFilePath(const AlbumPaths& paths, std::string_view name);
std::string clipPath(const AlbumPaths& paths, std::string_view name);

// Moves folder + name to "Removed\" in `folder`, which ends in a backslash. A file that has this name there is renamed
// to one with a number. "File not found" when the file is absent.
void setAside(FileService& files, const std::string& folder, const std::string& name);
// The same with the caller's `rename`, which is called for each of the one or two renamings.
using Renaming = std::function<void(const std::string& from, const std::string& to)>;
void setAside(FileService& files, const std::string& folder, const std::string& name, const Renaming& rename);

} // namespace trovarium
