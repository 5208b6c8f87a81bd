// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/OfferedFiles.h"

#include <cstddef>
#include <string>
#include <vector>

namespace trovarium {

class FileService;

// The desktop's clipboard.

OfferedFiles filesOnClipboard();

// Puts the files on it, and the picture unless it is empty. Returns how many of the files there are; the rest is left
// out. If none is there, the clipboard stays as it is.
std::size_t copyToClipboard(
    const FileService& files, const std::vector<std::string>& paths, const Picture& picture = {});

} // namespace trovarium
