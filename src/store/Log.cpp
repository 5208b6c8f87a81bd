// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/Log.h"

#include "platform/files/FileService.h"
#include "runtime/Dates.h"
#include "runtime/Failure.h"
#include "runtime/Text.h"
#include "store/Album.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace trovarium {

namespace {

constexpr std::int64_t LargestLog = 80'000;       // bytes
constexpr std::size_t TrimmedCharacters = 10'000; // at least, line ends not counted
// Limits for a log that is not our own: an album from somebody else may have one.
constexpr std::size_t HeaderCharacters = 100;
constexpr std::int64_t LargestTrimmed = 1 << 26; // bytes, the longest line that can be read

void createLog(FileService& files, std::string_view path)
{
    const int number = files.freeFile();
    files.open(path, OpenMode::Output, number);
    files.print(number, "Created " + logCreatedStamp(now()));
    files.close(number);
}

// Drops the oldest lines after the header, with a temporary file. At least `excess` bytes go, so that a log of any size
// is short enough afterwards.
void trimLog(FileService& files, std::string_view path, std::string_view temporaryPath, std::size_t excess)
{
    const int log = files.freeFile();
    files.open(path, OpenMode::Input, log);
    const int temporary = files.freeFile();
    files.open(temporaryPath, OpenMode::Output, temporary);

    constexpr std::size_t LineEndBytes = 2;
    const std::string header = files.lineInput(log);
    const std::string kept = firstCharacters(header, HeaderCharacters);
    files.print(temporary, kept);
    std::size_t characters = 0;
    std::size_t bytes = header.size() - kept.size();
    while (!files.endOfFile(log) && (characters < TrimmedCharacters || bytes < excess)) {
        const std::string line = files.lineInput(log);
        characters += characterCount(line);
        bytes += line.size() + LineEndBytes;
    }
    while (!files.endOfFile(log))
        files.print(temporary, files.lineInput(log));

    files.close(log);
    files.close(temporary);
    files.copy(temporaryPath, path); // a kill leaves the old log or the new one
    files.remove(temporaryPath);
}

} // namespace

void WriteLogLine(Album& album, std::string_view logFilePath, std::string_view message)
try {
    FileService& files = album.files;
    if (!files.exists(logFilePath))
        createLog(files, logFilePath);
    const std::int64_t size = files.length(logFilePath);
    if (size > LargestTrimmed)
        createLog(files, logFilePath);
    else if (size > LargestLog)
        trimLog(files, logFilePath, album.paths.ProgramFolder + "\\LogFile.tmp",
            static_cast<std::size_t>(size - LargestLog));

    const int number = files.freeFile();
    files.open(logFilePath, OpenMode::Append, number);
    files.print(number, logLineStamp(now()).append(": ").append(message));
    files.close(number);
} catch (const Failure&) {
    // On purpose this closes the files of the procedure that reports, too.
    album.files.closeAll();
}

void logFailure(Album& album, std::string_view procedure, const Failure& failure)
{
    std::string message = "An error has occurred in '";
    message.append(procedure).append("'. Error = ").append(failure.description());
    WriteLogLine(album, album.paths.AppPath + "\\Trovarium.Log", message);
}

} // namespace trovarium
