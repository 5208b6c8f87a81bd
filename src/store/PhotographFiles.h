#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace trovarium {

struct AlbumPaths;
class FileService;

// Whether `name` can stand for a photograph. A name that is empty, "." or "..", or holds a separator would lead to a
// file elsewhere: a list or an information file from somebody else may hold one.
bool isPhotographName(std::string_view name);

// The files of the photograph `name`. "File not found" for what is no photograph's name.
std::string photographPath(const AlbumPaths& paths, std::string_view name);
std::string thumbnailPath(const AlbumPaths& paths, std::string_view name);
std::string infoFilePath(const AlbumPaths& paths, std::string_view name);
std::string clipPath(const AlbumPaths& paths, std::string_view name);

// Moves folder + name to the folder "Removed\" inside `folder`, which ends in a backslash, and makes that if need be.
// What has the name there gets a number first. A file that can't be moved stays; "File not found" when it is absent.
void setAside(FileService& files, const std::string& folder, const std::string& name);
// The same, for who must know what moves where: `rename` does each of the one or two renamings.
using Renaming = std::function<void(const std::string& from, const std::string& to)>;
void setAside(FileService& files, const std::string& folder, const std::string& name, const Renaming& rename);

} // namespace trovarium
