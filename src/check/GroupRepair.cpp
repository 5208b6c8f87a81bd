#include "check/GroupRepair.h"

#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Failure.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/PhotographFiles.h"
#include "store/QuietFile.h"

#include <cstddef>
#include <string>
#include <vector>

namespace trovarium {

namespace {

constexpr int FatalExit = 1;
constexpr std::size_t LinesBetweenEvents = 4096;

// An empty line costs no look at the disk, nor the failure that it would end in: an album may bring millions of them.
// An empty information file counts as missing. Any other failure than that it is absent tells nothing of the
// photograph, and goes to the caller.
bool hasInfoFile(const Album& album, const std::string& name)
try {
    if (!isPhotographName(name))
        return false;
    return album.files.length(infoFilePath(album.paths, name)) > 0;
} catch (const Failure& failure) {
    if (failure.kind() != FailureKind::FileNotFound && failure.kind() != FailureKind::PathNotFound)
        throw;
    return false;
}

// The list is replaced in one act, and only after the disk has the new one: neither a full disk nor a loss of power
// leaves the folder without it.
void repairList(Album& album, Desktop& desktop, const std::string& list, Meanwhile meanwhile)
{
    FileService& files = album.files;
    std::string living;
    const bool isRead = withFileQuietly(files, list, OpenMode::Input, [&](int number) {
        for (std::size_t count = 1; !files.endOfFile(number) && !album.AutoCheckBypass; ++count) {
            const std::string line = files.lineInput(number);
            if (hasInfoFile(album, line))
                living.append(encodeLine(line)).append("\r\n");
            if (count % LinesBetweenEvents != 0)
                continue;
            if (meanwhile == Meanwhile::RunEvents)
                desktop.DoEvents();
            else
                desktop.repaintOnly();
        }
    });
    if (isRead && !album.AutoCheckBypass)
        attempt([&] { files.writeFileAtomically(list, living, Sync::Yes); });
}

} // namespace

void RemoveMissingPhotosFromGroup(Album& album, Desktop& desktop, Meanwhile meanwhile)
{
    attempt([&] { desktop.Screen().MousePointer = HourglassPointer; });
    const std::string& folder = album.paths.SlideGroupPath;
    if (folder.empty()) {
        desktop.prompts().messageBox(
            "Critical Error-SubRemoveMissingPhotosFromGroup: SlideGroup path is blank!", Message::Error, "");
        desktop.endProgram(FatalExit);
    }
    std::vector<std::string> lists;
    // Without the information files every line would look like a missing photograph. Where a setting has lost its last
    // separator the folder is there, and yet no name behind it leads into it. Hardly a name fits "?", so that none is
    // sorted.
    attempt([&] {
        album.files.listExisting(album.paths.InfoPath + "?");
        if (fromNativePath(album.paths.InfoPath).ends_with('\\'))
            lists = album.files.list(folder + "*.lst");
    });
    for (const std::string& list : lists) {
        if (album.AutoCheckBypass)
            break;
        // One that an earlier version left behind when it was killed; it is nobody's group.
        if (equalInCapitals(list, "TmpGroup.lst"))
            attempt([&] { album.files.remove(folder + list); });
        else
            repairList(album, desktop, folder + list, meanwhile);
    }
    attempt([&] { desktop.Screen().MousePointer = DefaultPointer; });
}

} // namespace trovarium
