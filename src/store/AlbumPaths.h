#pragma once

#include <string>

namespace trovarium {

// Where the library lies; final after `CheckDirPaths`. The six folders end in a backslash and are used by
// plain concatenation.
struct AlbumPaths {
    std::string ProgramFolder; // never ends in a backslash
    std::string AppPath;       // the same, base of the log and the default folders
    std::string PhotoPath;
    std::string ThumbnailPath;
    std::string InfoPath;
    std::string SlideGroupPath;
    std::string AudioPath;
    std::string MidiPath;
};

} // namespace trovarium
