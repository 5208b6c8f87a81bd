#include "store/InfoFile.h"

#include "platform/files/FileService.h"
#include "runtime/Failure.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/Log.h"
#include "store/PhotographFiles.h"
#include "store/QuietFile.h"

#include <array>
#include <cstddef>
#include <tuple>
#include <vector>

namespace trovarium {

namespace {

using InfoLines = std::array<std::string, 10>;

// Whole or not at all: a file that was begun would be an empty one, and its photograph would be out of all groups.
bool writeInfoFile(FileService& files, std::string_view path, const InfoLines& values, Sync sync)
{
    // The mixed case is the format.
    static constexpr std::array<std::string_view, std::tuple_size_v<InfoLines>> Keys{"PhotoPath", "TITLE",
        "PHOTOGRAPHER", "YEAR", "PEOPLE", "PLACE", "EVENT", "KEYWORDS", "ImageWidth", "ImageHeight"};
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < Keys.size(); ++i)
        lines.push_back(std::string(Keys[i]).append("=").append(values[i]));
    return !attempt([&] { files.writeLines(path, lines, sync); });
}

// Stores the value of one line; a key that is none of the ten is passed over.
void takeField(std::string_view key, std::string_view value, PhotoInfo& info)
{
    struct TextField {
        std::string_view key;
        std::string PhotoInfo::*field;
    };
    static constexpr std::array<TextField, 8> TextFields{{
        {"EVENT", &PhotoInfo::Event},
        {"KEYWORDS", &PhotoInfo::Keywords},
        {"PEOPLE", &PhotoInfo::People},
        {"PHOTOGRAPHER", &PhotoInfo::Photographer},
        {"PLACE", &PhotoInfo::Place},
        {"TITLE", &PhotoInfo::Title},
        {"YEAR", &PhotoInfo::Year},
        {"PHOTOPATH", &PhotoInfo::PhotoLink},
    }};
    for (const TextField& known : TextFields) {
        if (key == known.key) {
            info.*known.field = value;
            return;
        }
    }
    if (key == "IMAGEWIDTH")
        info.ImageWidth = toInt16(leadingNumber(value));
    else if (key == "IMAGEHEIGHT")
        info.ImageHeight = toInt16(leadingNumber(value));
}

// What stands behind the key and the one character after it, whatever that is.
std::string linkOfLine(std::string_view text, std::size_t keyLength)
{
    std::string_view behindKey = text.substr(keyLength);
    return std::string(behindKey.substr(firstCharacters(behindKey, 1).size()));
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
        found = upper(left(text, Key.size())) == Key;
        if (found)
            link = linkOfLine(text, Key.size());
    }
    files.close(number);
    return found;
}

// Where "N.info" lies; "File not found" where N is no photograph's name.
std::string pathOf(const Album& album, std::string_view infoFileName)
{
    constexpr std::string_view Ending = ".info";
    const bool hasEnding = equalInCapitals(right(infoFileName, Ending.size()), Ending);
    if (!isPhotographName(hasEnding ? withoutLast(infoFileName, Ending.size()) : infoFileName))
        throw Failure(FailureKind::FileNotFound);
    return album.paths.InfoPath + std::string(infoFileName);
}

// Any other failure than that it is absent tells nothing of the file.
bool isAbsent(const FileService& files, std::string_view path)
{
    const auto failure = attempt([&] { files.length(path); });
    return failure && (failure->kind() == FailureKind::FileNotFound || failure->kind() == FailureKind::PathNotFound);
}

// An import writes the full path of its copy. In an album that was moved, or put back, the copy lies here now.
void followMove(const Album& album, std::string_view name, std::string& link)
{
    if (!isAbsent(album.files, link))
        return;
    attempt([&] {
        const std::string copy = photographPath(album.paths, name);
        album.files.length(copy);
        link = copy;
    });
}

} // namespace

bool readInfoFile(Album& album, std::string_view infoFileName, PhotoInfo& info, OddSize oddSize)
try {
    info.Event.clear();
    info.Keywords.clear();
    info.People.clear();
    info.Photographer.clear();
    info.Place.clear();
    info.Title.clear();
    info.Year.clear();

    FileService& files = album.files;
    return withFileQuietly(files, pathOf(album, infoFileName), OpenMode::Input, [&](int number) {
        while (!files.endOfFile(number)) {
            const std::string text = files.lineInput(number);
            const std::size_t equals = text.find('=');
            if (equals == std::string::npos)
                continue;
            const auto beyond =
                attempt([&] { takeField(upper(left(text, equals)), std::string_view(text).substr(equals + 1), info); });
            if (beyond && oddSize == OddSize::Ends)
                throw Failure(*beyond);
        }
    });
} catch (const Failure&) {
    return false;
}

bool SaveImageInfo(Album& album, std::string_view infoFileName, const PhotoInfo& info)
try {
    // Where it was read: a library from a file system without case has its names in any case.
    const std::string path = album.files.resolveExistingName(pathOf(album, infoFileName));
    return writeInfoFile(album.files, path,
        {info.PhotoLink, info.Title, info.Photographer, info.Year, info.People, info.Place, info.Event, info.Keywords,
            numberText(std::int64_t{info.ImageWidth}), numberText(std::int64_t{info.ImageHeight})},
        Sync::Yes);
} catch (const Failure&) {
    return false;
}

bool CreateInfoFile(FileService& files, std::string_view infoFilePath, std::string_view photoLinkValue)
{
    // Nobody's words yet, and a first start makes thousands.
    return writeInfoFile(files, infoFilePath, {std::string(photoLinkValue), std::string(infoFilePath)}, Sync::No);
}

bool isFirstTitle(std::string_view title, std::string_view infoFileName)
{
    const std::size_t length = infoFileName.size();
    return title.size() > length && title[title.size() - length - 1] == '\\'
        && equalInCapitals(right(title, length), infoFileName);
}

// The program's path and `ProgramFolder` are one text here: the root of the file system is "/", which is no
// backslash that would be taken off. `PhotoPath` has no say but for a full path that leads nowhere, so a moved "Photos"
// folder holds no other copies.
std::string GetPhotoLink(Album& album, std::string_view infoFileName)
{
    constexpr std::size_t InfoSuffix = 5; // ".info"
    const std::string& programPath = album.paths.ProgramFolder;
    std::string result;
    try {
        const std::string path = pathOf(album, infoFileName);
        if (album.files.length(path) != 0 && readLink(album.files, path, result)) {
            // A person may have written the link with the separators of the system.
            result = fromNativePath(result);
            if (result.starts_with('\\'))
                result.insert(0, programPath + "\\");
            else if (!result.empty())
                followMove(album, withoutLast(infoFileName, InfoSuffix), result);
        } else {
            result = programPath + "\\Photos\\" + std::string(withoutLast(infoFileName, InfoSuffix));
        }
    } catch (const Failure& failure) {
        // A file that is open stays open: no tail of this kind closes one.
        logFailure(album, "GetPhotoLink", failure);
    }
    return result;
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
