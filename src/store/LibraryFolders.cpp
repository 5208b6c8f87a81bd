// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/LibraryFolders.h"

#include "platform/files/FileService.h"
#include "platform/system/Shell.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Dates.h"
#include "runtime/Failure.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/GroupFile.h"
#include "store/Log.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

namespace trovarium {

namespace {

// The date of an absent file: before that of any file.
constexpr Instant NoDate{std::chrono::sys_days{std::chrono::year{1899} / 12 / 30}};

std::string& element(FieldArray& fields, std::size_t index)
{
    if (index >= fields.size())
        throw Failure(FailureKind::SubscriptOutOfRange);
    return fields[index];
}

void trim(std::string& field)
{
    field = std::string(trimmed(field));
}

// The setting may have slashes; MakeNestedFolders needs the program's form.
std::string installedCopy(const Album& album)
{
    return fromNativePath(
        album.Settings().GetOWSetting("Trovarium", "Installation", "Path", defaultInstallationPath()));
}

// Information files and lists move to the installed copy, into a folder named after the medium, so that edits are kept.
void moveTexts(Album& album, Desktop& desktop)
{
    AlbumPaths& paths = album.paths;
    std::string name;
    attempt([&] { name = GetMediaFolderName(album, paths.ProgramFolder); });
    std::string base;
    attempt([&] { base = installedCopy(album); });
    paths.InfoPath = base + "\\" + name + "\\Photo_Info\\";
    attempt([&] { MakeNestedFolders(album, paths.InfoPath); });
    attempt([&] { CopyNewerFiles(album, paths.ProgramFolder + "\\Photo_Info\\*.*", paths.InfoPath); });

    attempt([&] { paths.SlideGroupPath = installedCopy(album) + "\\" + name + "\\Photo_Slidegroups\\"; });
    if (paths.SlideGroupPath.empty()) {
        desktop.prompts().messageBox("Critical Error-SubCheckDirPath: SlideGroup path is blank!", Message::Error, "");
        desktop.endProgram(1);
    }
    attempt([&] { MakeNestedFolders(album, paths.SlideGroupPath); });
    attempt([&] { CopyNewerFiles(album, paths.ProgramFolder + "\\Photo_SlideGroups\\*.*", paths.SlideGroupPath); });
}

constexpr std::string_view AgreedLinks = "OutsideFolders"; // the settings' section, a target for each link

// Of the folders that the program writes into; it only creates the one of the help pages.
std::vector<FolderLink> outsideFolders(const Album& album)
{
    const std::string& library = album.paths.AppPath;
    std::vector<FolderLink> links = album.files.linksOut(library,
        {"Photos", "Photo_Thumbnails", "Photo_Info", "Photo_SlideGroups", "Photo_Audio", "Photo_Midi"}, library);
    for (const std::string_view folder : {"\\Photos", "\\Photo_Info", "\\Photo_Audio", "\\Photo_Midi"}) {
        const auto inside = album.files.linksOut(library + std::string(folder), {"Removed", "Removed_Photos"}, library);
        links.insert(links.end(), inside.begin(), inside.end());
    }
    return links;
}

// For the message box: an album may hold a target of many lines, or a very long one.
std::string onOneLine(const std::string& path)
{
    constexpr std::size_t MostCharacters = 200;
    std::string text = firstCharacters(toNativePath(path), MostCharacters);
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < ' '; }, '?');
    return text;
}

} // namespace

void makeLibraryFolders(Album& album)
{
    for (const std::string_view folder : {"\\Photos", "\\Photo_Thumbnails", "\\Photo_Info", "\\Photo_SlideGroups",
             "\\Photo_Audio", "\\Photo_Midi", "\\Help"})
        attempt([&] { album.files.makeFolder(album.paths.AppPath + std::string(folder)); });
}

void readFolderSettings(Album& album)
{
    AlbumPaths& paths = album.paths;
    const auto read = [&](std::string& target, std::string_view key, std::string_view folder) {
        attempt([&] {
            target = album.Settings().GetOWSetting(
                "Trovarium", "SourceFolders", key, paths.AppPath + "\\" + std::string(folder) + "\\");
        });
    };
    read(paths.PhotoPath, "Photos", "Photos");
    read(paths.ThumbnailPath, "Thumbnails", "Photo_Thumbnails");
    read(paths.InfoPath, "Info", "Photo_Info");
    read(paths.SlideGroupPath, "SlideGroups", "Photo_SlideGroups");
    read(paths.AudioPath, "AudioClips", "Photo_Audio");
    read(paths.MidiPath, "MidiMusic", "Photo_Midi");
}

void removeOwnLinks(Album& album)
{
    const AlbumPaths& paths = album.paths;
    for (const std::string& file : {paths.AppPath + "\\Trovarium.Log", paths.AppPath + "\\LogFile.tmp",
             paths.AppPath + "\\test.txt", paths.SlideGroupPath + "temp.group"})
        attempt([&] { album.files.removeLink(file); });
    for (const std::string_view list : {AllPhotosGroup, ScratchGroup})
        attempt([&] { album.files.removeLink(groupListPath(album, list)); });
}

bool mayWorkOutside(Album& album, Desktop& desktop)
{
    std::vector<FolderLink> links = outsideFolders(album);
    attempt([&] {
        std::erase_if(links, [&](const FolderLink& link) {
            return album.Settings().GetOWSetting("Trovarium", AgreedLinks, link.path, "") == link.target;
        });
    });
    if (links.empty())
        return true;
    std::string list;
    for (const FolderLink& link : links)
        list += onOneLine(link.path) + " -> " + onOneLine(link.target) + "\r";
    const Answer answer = desktop.prompts().messageBox("Folders of this album lie outside of it:\r\r" + list
            + "\rTrovarium reads, changes and removes files there. Press 'YES' to open the album. Press 'NO' if you "
              "don't know these folders.",
        Message::Warning, "Folders Outside the Album");
    if (answer != Answer::Yes)
        return false;
    for (const FolderLink& link : links)
        attempt([&] { album.Settings().SetOWSetting("Trovarium", AgreedLinks, link.path, link.target); });
    return true;
}

void CheckDirPaths(Album& album, Desktop& desktop)
try {
    if (IsFolderReadOnly(album, album.paths.ProgramFolder))
        moveTexts(album, desktop);
} catch (const Failure& failure) {
    logFailure(album, "CheckDirPaths", failure);
}

void removeLeftOvers(Album& album)
{
    const AlbumPaths& paths = album.paths;
    std::vector<std::string> folders{paths.AppPath + "\\", paths.ThumbnailPath, paths.AudioPath, paths.MidiPath};
    for (const std::string& folder : {paths.PhotoPath, paths.InfoPath, paths.AudioPath, paths.MidiPath})
        folders.push_back(folder + "Removed\\");
    // The check has listed these, unless it was skipped.
    std::vector<std::string> checked{paths.PhotoPath, paths.InfoPath, paths.SlideGroupPath};
    if (album.AutoCheckBypass)
        folders.insert(folders.end(), checked.begin(), checked.end());
    for (const std::string& folder : folders)
        attempt([&] { album.files.list(folder + "?"); }); // few names match, which saves sorting them
    if (!album.AutoCheckBypass)
        folders.insert(folders.end(), checked.begin(), checked.end());
    for (const std::string& folder : folders)
        attempt([&] { album.files.removeLeftOvers(folder); });
}

bool IsFolderReadOnly(Album& album, std::string_view path)
{
    if (path.empty())
        return false;
    std::string testFile(path);
    if (!testFile.ends_with('\\'))
        testFile += '\\';
    testFile += "test.txt";

    // A user's own file of that name must not be emptied or deleted, nor one that may be there.
    bool isOurs = false;
    attempt([&] { isOurs = !album.files.exists(testFile); });
    const std::optional<Failure> failure = attempt([&] {
        const int number = album.files.freeFile();
        album.files.open(testFile, isOurs ? OpenMode::Output : OpenMode::Append, number);
        album.files.close(number);
    });
    if (failure) {
        album.ReadOnlyLibrary = true;
        return true;
    }
    if (isOurs)
        attempt([&] { album.files.remove(testFile); });
    return false;
}

std::string GetMediaFolderName(Album& album, std::string_view path)
{
    constexpr double RandomNames = 1e6;
    std::string result;
    try {
        FixedRandom random;
        result = "CD-" + formatWhole(random.next() * RandomNames);
        const std::string photos = std::string(path) + "\\photos\\";
        std::int64_t total = 0;
        for (const std::string& name : album.files.list(photos + "*.*"))
            total += album.files.length(photos + name);
        result = "CD-" + numberText(total);
    } catch (const Failure&) {
        // A medium that can't be read keeps the random name.
    }
    return result;
}

bool CopyNewerFiles(Album& album, std::string_view sourcePattern, std::string_view destFolder)
try {
    FileService& files = album.files;
    const std::string folder = SplitPath(sourcePattern).Folder;
    std::vector<std::string> names;
    attempt([&] { names = files.list(sourcePattern); });
    for (const std::string& name : names) {
        const std::string source = folder + name;
        const std::string destination = std::string(destFolder) + name;
        Instant sourceDate = NoDate;
        Instant destinationDate = NoDate;
        attempt([&] { sourceDate = files.modified(source); });
        attempt([&] { destinationDate = files.modified(destination); });
        if ((destinationDate - sourceDate).count() < 0)
            attempt([&] { files.copy(source, destination); });
    }
    return true;
} catch (const Failure& failure) {
    // Not reached as long as every step above is in an attempt.
    logFailure(album, "Form_Click", failure);
    return true;
}

bool MakeNestedFolders(Album& album, std::string_view path)
try {
    FieldArray parts;
    ParseFields(album, path, "\\", parts, MaxNestedFolders);
    std::string current = parts[0];
    bool isMissing = false;
    for (std::size_t level = 1; level < MaxNestedFolders && !parts[level].empty(); ++level) {
        current += "\\" + parts[level];
        isMissing = isMissing || !album.files.folderExists(current + "\\");
        if (isMissing)
            album.files.makeFolder(current);
    }
    return true;
} catch (const Failure&) {
    return false;
}

void ParseFields(
    Album& album, std::string_view text, std::string_view delimiters, FieldArray& fields, std::int16_t maxFields)
try {
    for (std::int16_t i = 0; i < maxFields; ++i)
        element(fields, static_cast<std::size_t>(i)).clear();
    std::int16_t number = 0;
    for (const char character : text) {
        if (delimiters.find(character) != std::string_view::npos) {
            trim(element(fields, static_cast<std::size_t>(number)));
            ++number;
            if (number == maxFields)
                return;
        } else {
            element(fields, static_cast<std::size_t>(number)) += character;
        }
    }
    trim(element(fields, static_cast<std::size_t>(number)));
} catch (const Failure& failure) {
    logFailure(album, "Form_Click", failure);
}

SplitPathResult SplitPath(std::string_view fullPath)
{
    const std::size_t backslash = fullPath.rfind('\\');
    if (backslash == std::string_view::npos)
        return {"", std::string(fullPath)};
    return {std::string(fullPath.substr(0, backslash + 1)), std::string(fullPath.substr(backslash + 1))};
}

} // namespace trovarium
