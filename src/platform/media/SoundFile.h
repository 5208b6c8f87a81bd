#pragma once

#include "platform/media/SdlLibrary.h"

#include <cstdint>
#include <string>
#include <sys/stat.h>

namespace trovarium {

// A regular file of at most `largest` bytes, to be read; null for anything else: a pipe would block for ever.
inline SDL_RWops* openSoundFile(const SdlLibrary& sdl, const std::string& native, std::int64_t largest)
{
    struct stat status = {};
    if (stat(native.c_str(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > largest)
        return nullptr;
    return sdl.rwFromFile(native.c_str(), "rbe"); // closed in a program that is started meanwhile
}

} // namespace trovarium
