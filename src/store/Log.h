// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace trovarium {

struct Album;
class Failure;

// Adds one line with the time before it. A log beyond 80,000 bytes loses its oldest lines first. A failure
// in here closes every file number that anyone has open, and nothing is reported.
void WriteLogLine(Album& album, std::string_view logFilePath, std::string_view message);

// Logs a failure that ended a procedure: "An error has occurred in '...'. Error = ...".
void logFailure(Album& album, std::string_view procedure, const Failure& failure);

} // namespace trovarium
