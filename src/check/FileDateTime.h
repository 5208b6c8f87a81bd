#pragma once

#include <string_view>

namespace trovarium {

class FileService;

// Sets the modification time of a file, and no other of its times, from the text form of a date. False when
// there is no such file, the text is no date, or the time can't be set.
bool SetFileDateTime(FileService& files, std::string_view FilePath, std::string_view DateText);

} // namespace trovarium
