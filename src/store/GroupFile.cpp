// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/GroupFile.h"

#include "platform/files/FileService.h"
#include "runtime/Failure.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/QuietFile.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace trovarium {

namespace {

std::vector<std::string> selectedLines(const GroupOnShow& group, std::int32_t first, std::int16_t last)
{
    std::vector<std::string> lines;
    for (std::int32_t i = first; i <= last; ++i) {
        if (group.GroupSelect(i) == 1)
            lines.push_back(group.GroupList(i));
    }
    return lines;
}

// The position after which the block is inserted, 0 for the front.
std::int16_t blockPosition(std::int32_t dropPosition, std::int16_t last)
{
    std::int64_t position = std::abs(std::int64_t{dropPosition});
    if (dropPosition < 0)
        --position;
    return static_cast<std::int16_t>(std::min<std::int64_t>(position, last));
}

} // namespace

bool isAllPhotosGroup(std::string_view name)
{
    return upper(name) == "  ALL PHOTOS  ";
}

std::string groupNameOf(std::string_view fileName)
{
    return std::string(fileName.substr(0, fileName.find('.')));
}

std::string groupListPath(const Album& album, std::string_view fileName)
{
    return album.files.resolveExistingName(album.paths.SlideGroupPath + std::string(fileName));
}

bool hasGroupList(const Album& album, std::string_view fileName)
{
    return album.files.exists(groupListPath(album, fileName));
}

std::string writableGroupList(const Album& album, std::string_view fileName)
{
    std::string path = groupListPath(album, fileName);
    if (isAllPhotosGroup(groupNameOf(fileName)))
        album.files.removeLink(path);
    return path;
}

void renameGroupList(const Album& album, const std::string& from, const std::string& to)
{
    album.files.rename(groupListPath(album, from), groupListPath(album, to));
}

bool renameMusic(const Album& album, const std::string& from, const std::string& to)
{
    const auto music = [&](const std::string& list) { return album.paths.MidiPath + groupNameOf(list) + ".mid"; };
    return !attempt([&] { album.files.rename(music(from), music(to)); });
}

bool readGroupList(Album& album, std::string_view fileName)
{
    FileService& files = album.files;
    GroupOnShow& group = album.group;
    group.GroupList.clear();
    group.isWhole =
        withFileQuietly(files, album.paths.SlideGroupPath + std::string(fileName), OpenMode::Input, [&](int number) {
            group.stamp = files.stamp(number);
            while (!files.endOfFile(number))
                group.GroupList.append(files.lineInput(number));
        });
    if (group.isWhole)
        group.GroupSelect.redimension(group.GroupList.upperBound());
    return group.isWhole;
}

bool isGroupAsRead(const Album& album)
{
    const std::string path = album.paths.SlideGroupPath + album.group.currentGroupFile();
    bool isSame = false;
    attempt([&] { isSame = album.files.stamp(path) == album.group.stamp; });
    return isSame && album.group.isWhole;
}

// Element 0 stands for no photograph. If it is selected, an empty line is written: this is intended.
bool AddToGroup(Album& album, std::string_view fileName)
try {
    const GroupOnShow& group = album.group;
    if (!group.isWhole || (equalInCapitals(fileName, group.currentGroupFile()) && !hasGroupList(album, fileName)))
        return false;
    const std::vector<std::string> lines = selectedLines(group, 0, toInt16(group.GroupSelect.upperBound()));
    return withFileQuietly(album.files, writableGroupList(album, fileName), OpenMode::Append, [&](int number) {
        for (const std::string& line : lines)
            album.files.print(number, line);
    });
} catch (const Failure&) {
    return false;
}

bool RemoveFromGroupFile(Album& album, std::string_view fileName)
{
    FileService& files = album.files;
    const GroupOnShow& group = album.group;
    if (!group.isWhole)
        return false;
    const std::string scratchPath = album.paths.SlideGroupPath + "temp.group";
    int input = 0;
    int output = 0;
    try {
        const std::string path = writableGroupList(album, fileName);
        input = files.freeFile();
        files.open(path, OpenMode::Input, input);
        output = files.freeFile();
        files.open(scratchPath, OpenMode::Output, output);
        std::int16_t n = 0;
        while (!files.endOfFile(input)) {
            n = toInt16(n + 1);
            const std::string name = files.lineInput(input);
            const bool dropped = n <= group.GroupSelect.upperBound() && group.GroupSelect(n) == 1
                && equalInCapitals(name, group.GroupList(n));
            if (!dropped)
                files.print(output, name);
        }
        files.close(output);
        files.close(input);
        files.replaceContent(path, scratchPath);
        attempt([&] { files.remove(scratchPath); });
        return true;
    } catch (const Failure&) {
        attempt([&] { files.close(output); });
        attempt([&] { files.close(input); });
        attempt([&] { files.remove(scratchPath); });
        return false;
    }
}

std::int32_t ReorderGroupFile(Album& album, std::string_view fileName, std::int32_t dropPosition)
try {
    const GroupOnShow& group = album.group;
    if (!group.isWhole)
        return 0;
    const std::int16_t last = toInt16(group.GroupList.upperBound());
    const std::int16_t position = blockPosition(dropPosition, last);
    const std::vector<std::string> block = selectedLines(group, 1, last);
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::int32_t i = 0; i <= last; ++i) {
        if (i > 0 && group.GroupSelect(i) == 0)
            lines.push_back(group.GroupList(i));
        if (i != position)
            continue;
        start = lines.size();
        lines.insert(lines.end(), block.begin(), block.end());
    }
    album.files.writeLines(writableGroupList(album, fileName), lines, Sync::Yes);
    return static_cast<std::int32_t>(start) + 1;
} catch (const Failure&) {
    return 0;
}

bool CheckGroupName(std::string& name)
{
    const std::string before = name;
    for (std::size_t at = 0; (at = name.find_first_of("\"|.<>?*:/\\", at)) != std::string::npos;)
        name[at] = '_';
    return name == before;
}

} // namespace trovarium
