// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/InfoFile.h"

#include "platform/files/FileService.h"
#include "runtime/Failure.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "store/Log.h"
#include "store/PhotographFiles.h"
#include "store/QuietFile.h"

#include <cstddef>
#include <vector>

namespace trovarium {

namespace {

constexpr std::size_t InfoSuffix = 5; // ".info"

struct TextField {
    std::string_view key;
    std::string PhotoInfo::*field;
};
// In the order of the file and with the case of its keys. Two lines for the sizes follow.
constexpr TextField TextFields[] = {
    {"PhotoPath", &PhotoInfo::PhotoLink},
    {"TITLE", &PhotoInfo::Title},
    {"PHOTOGRAPHER", &PhotoInfo::Photographer},
    {"YEAR", &PhotoInfo::Year},
    {"PEOPLE", &PhotoInfo::People},
    {"PLACE", &PhotoInfo::Place},
    {"EVENT", &PhotoInfo::Event},
    {"KEYWORDS", &PhotoInfo::Keywords},
};

// Atomically: an empty information file would take its photograph out of all groups.
bool writeInfoFile(FileService& files, std::string_view path, const PhotoInfo& info, const std::string& width,
    const std::string& height, Sync sync)
{
    std::vector<std::string> lines;
    for (const TextField& text : TextFields)
        lines.push_back(std::string(text.key).append("=").append(info.*text.field));
    lines.push_back("ImageWidth=" + width);
    lines.push_back("ImageHeight=" + height);
    return !attempt([&] { files.writeLines(path, lines, sync); });
}

// Stores the value of one line; other keys than the ten are ignored.
void takeField(std::string_view key, std::string_view value, PhotoInfo& info)
{
    for (const TextField& text : TextFields) {
        if (equalInCapitals(key, text.key))
            info.*text.field = value;
    }
    if (equalInCapitals(key, "ImageWidth"))
        info.ImageWidth = toInt16(leadingNumber(value));
    else if (equalInCapitals(key, "ImageHeight"))
        info.ImageHeight = toInt16(leadingNumber(value));
}

// The value of the first line that begins with the key of the link; empty and false without one.
bool readLink(FileService& files, std::string_view path, std::string& link)
{
    constexpr std::string_view Key = "PHOTOPATH";
    const int number = files.freeFile();
    files.open(path, OpenMode::Input, number);
    bool found = false;
    while (!found && !files.endOfFile(number)) {
        const std::string text = files.lineInput(number);
        found = equalInCapitals(text.substr(0, Key.size()), Key);
        if (!found)
            continue;
        // One character stands between key and value, whatever it is.
        const std::string_view rest = std::string_view(text).substr(Key.size());
        link = rest.substr(firstCharacters(rest, 1).size());
    }
    files.close(number);
    return found;
}

// The path of "N.info"; "File not found" if N can't be a photograph's name.
std::string pathOf(const Album& album, std::string_view infoFileName)
{
    constexpr std::string_view Ending = ".info";
    const bool hasEnding = equalInCapitals(right(infoFileName, Ending.size()), Ending);
    if (!isPhotographName(hasEnding ? withoutLast(infoFileName, Ending.size()) : infoFileName))
        throw Failure(FailureKind::FileNotFound);
    return album.paths.InfoPath + std::string(infoFileName);
}

// An import writes the full path of its copy. In an album that was moved the copy is in PhotoPath now.
void followMove(const Album& album, std::string_view infoFileName, std::string& link)
{
    const auto failure = attempt([&] { album.files.length(link); });
    if (!failure || !failure->isAbsence())
        return;
    attempt([&] {
        const std::string copy = photographPath(album.paths, withoutLast(infoFileName, InfoSuffix));
        album.files.length(copy);
        link = copy;
    });
}

} // namespace

bool readInfoFile(Album& album, std::string_view infoFileName, PhotoInfo& info, OddSize oddSize)
try {
    for (const TextField& text : TextFields) {
        if (text.field != &PhotoInfo::PhotoLink)
            (info.*text.field).clear();
    }
    FileService& files = album.files;
    return withFileQuietly(files, pathOf(album, infoFileName), OpenMode::Input, [&](int number) {
        while (!files.endOfFile(number)) {
            const std::string line = files.lineInput(number);
            const std::string_view text = line;
            const std::size_t equals = text.find('=');
            if (equals == std::string::npos)
                continue;
            const auto beyond = attempt([&] { takeField(text.substr(0, equals), text.substr(equals + 1), info); });
            if (beyond && oddSize == OddSize::Ends)
                throw Failure(*beyond);
        }
    });
} catch (const Failure&) {
    return false;
}

bool hasInfoFile(const Album& album, const std::string& name)
try {
    if (!isPhotographName(name))
        return false;
    return album.files.length(infoFilePath(album.paths, name)) > 0;
} catch (const Failure& failure) {
    if (!failure.isAbsence())
        throw;
    return false;
}

bool SaveImageInfo(Album& album, std::string_view infoFileName, const PhotoInfo& info)
try {
    // The file that was read, whose name may differ in case.
    const std::string path = album.files.resolveExistingName(pathOf(album, infoFileName));
    return writeInfoFile(album.files, path, info, numberText(info.ImageWidth), numberText(info.ImageHeight), Sync::Yes);
} catch (const Failure&) {
    return false;
}

bool CreateInfoFile(FileService& files, std::string_view infoFilePath, std::string_view photoLinkValue)
{
    // Not synced: nothing that a person wrote, and a first start creates thousands.
    PhotoInfo info;
    info.PhotoLink = photoLinkValue;
    info.Title = infoFilePath;
    return writeInfoFile(files, infoFilePath, info, "", "", Sync::No);
}

bool isFirstTitle(std::string_view title, std::string_view infoFileName)
{
    const std::size_t length = infoFileName.size();
    return title.size() > length && title[title.size() - length - 1] == '\\'
        && equalInCapitals(right(title, length), infoFileName);
}

// A relative link starts at the program's folder and not at `PhotoPath`, which is used only for a full path that leads
// to no file.
std::string GetPhotoLink(Album& album, std::string_view infoFileName)
{
    const std::string& programPath = album.paths.ProgramFolder;
    std::string result;
    try {
        const std::string path = pathOf(album, infoFileName);
        if (readLink(album.files, path, result)) {
            // A person may have written it with slashes.
            result = fromNativePath(result);
            if (result.starts_with('\\'))
                result.insert(0, programPath + "\\");
            else if (!result.empty())
                followMove(album, infoFileName, result);
        } else {
            result = programPath + "\\Photos\\" + std::string(withoutLast(infoFileName, InfoSuffix));
        }
    } catch (const Failure& failure) {
        // A file that readLink opened stays open.
        logFailure(album, "GetPhotoLink", failure);
    }
    return result;
}

std::string photographIfKnown(Album& album, const std::string& name)
{
    const std::string infoFileName = name + ".info";
    PhotoInfo unused;
    return readInfoFile(album, infoFileName, unused) ? GetPhotoLink(album, infoFileName) : "";
}

bool CheckPhotoLink(Album& album, std::string_view path)
try {
    if (path.starts_with('\\'))
        return album.files.length(album.paths.ProgramFolder + "\\" + std::string(path)) >= 1;
    return album.files.length(path) > 0;
} catch (const Failure& failure) {
    logFailure(album, "CheckPhotoLink", failure);
    return false;
}

bool isVideoFile(std::string_view path)
{
    const std::string extension = upper(right(path, 4));
    return extension == ".AVI" || extension == ".MOV" || extension == ".MPG";
}

} // namespace trovarium
