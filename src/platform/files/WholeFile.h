#pragma once

#include "platform/files/Descriptor.h"
#include "platform/files/FileService.h"
#include "platform/files/Paths.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace trovarium {

// Where a path leads: itself, or the end of the links that stand in its place, whether a file is there or not.
NativePath linkEnd(std::string native);

// "Path/File access error" for what is no regular file.
std::string readWhole(const Descriptor& file);

// Gives a file its bytes in one act: a kill or a full disk leaves `old`, or no file where there was none. Owner and
// rights stay. `whenWhole` is called when nothing but that act is left to do.
void writeFileAtomically(const NativePath& place, const std::optional<struct stat>& old, std::string_view bytes,
    Sync sync, const std::function<void()>& whenWhole);

} // namespace trovarium
