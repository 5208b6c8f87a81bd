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

void createLog(FileService& files, std::string_view path)
{
    const int number = files.freeFile();
    files.open(path, OpenMode::Output, number);
    files.print(number, "Created " + logCreatedStamp(now()));
    files.close(number);
}

// Drops the oldest lines behind the header by way of a temporary file.
void trimLog(FileService& files, std::string_view path, std::string_view temporaryPath)
{
    const int log = files.freeFile();
    files.open(path, OpenMode::Input, log);
    const int temporary = files.freeFile();
    files.open(temporaryPath, OpenMode::Output, temporary);

    files.print(temporary, files.lineInput(log));
    for (std::size_t dropped = 0; !files.endOfFile(log) && dropped < TrimmedCharacters;)
        dropped += characterCount(files.lineInput(log));
    while (!files.endOfFile(log))
        files.print(temporary, files.lineInput(log));

    files.close(log);
    files.close(temporary);
    files.copy(temporaryPath, path); // in one act: a kill leaves the old log or the new one
    files.remove(temporaryPath);
}

} // namespace

void WriteLogLine(Album& album, std::string_view logFilePath, std::string_view message)
try {
    FileService& files = album.files;
    if (!files.exists(logFilePath))
        createLog(files, logFilePath);
    if (files.length(logFilePath) > LargestLog)
        trimLog(files, logFilePath, album.paths.ProgramFolder + "\\LogFile.tmp");

    const int number = files.freeFile();
    files.open(logFilePath, OpenMode::Append, number);
    files.print(number, logLineStamp(now()).append(": ").append(message));
    files.close(number);
} catch (const Failure&) {
    // Wide on purpose: a file of the procedure that is just reporting is closed too.
    album.files.closeAll();
}

void logFailure(Album& album, std::string_view procedure, const Failure& failure)
{
    std::string message = "An error has occurred in '";
    message.append(procedure).append("'. Error = ").append(failure.description());
    WriteLogLine(album, album.paths.AppPath + "\\Trovarium.Log", message);
}

} // namespace trovarium
