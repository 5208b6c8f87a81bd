// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/FileService.h"
#include "runtime/Failure.h"

#include <string_view>
#include <utility>

namespace trovarium {

// Opens a file under a free number, runs `body` with the number and closes it. After any failure, also in `body`, the
// file is closed and the result is false: no message, no log line.
template <class Body>
bool withFileQuietly(FileService& files, std::string_view path, OpenMode mode, Body&& body)
{
    int number = 0;
    try {
        number = files.freeFile();
        files.open(path, mode, number);
        std::forward<Body>(body)(number);
        files.close(number);
        return true;
    } catch (const Failure&) {
        attempt([&] { files.close(number); });
        return false;
    }
}

} // namespace trovarium
