#pragma once

#include <string>
#include <string_view>

namespace trovarium {

// A folder's path as the file controls keep it: in the program's form, with no separator at the end but
// for the root.
std::string folderPath(std::string_view path);

// Where folder list and file list begin: the user's folder, the root where there is none.
std::string startFolder();

// The folder that holds `folder`, which is in that form; the root holds itself.
std::string folderAbove(const std::string& folder);

// Its own name; the root's is "/".
std::string_view folderName(std::string_view folder);

// Is `folder` the folder `above` or anywhere in it? Both in that form.
bool liesIn(std::string_view folder, std::string_view above);

} // namespace trovarium
