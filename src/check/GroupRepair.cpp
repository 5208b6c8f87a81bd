#include "check/GroupRepair.h"

#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Failure.h"
#include "store/Album.h"

#include <string>
#include <vector>

namespace trovarium {

namespace {

constexpr int FatalExit = 1;

// An empty information file counts as missing. Any other failure than that it is absent tells nothing of the
// photograph, and goes to the caller.
bool hasInfoFile(const Album& album, const std::string& name)
try {
    return album.files.length(album.paths.InfoPath + name + ".info") > 0;
} catch (const Failure& failure) {
    if (failure.kind() != FailureKind::FileNotFound && failure.kind() != FailureKind::PathNotFound)
        throw;
    return false;
}

// Writes the lines of `list` that name an information file to `scratch`; a failure leaves by the caller's
// handler with both files closed.
void copyLivingLines(Album& album, const std::string& list, const std::string& scratch)
{
    FileService& files = album.files;
    const int input = files.freeFile();
    files.open(list, OpenMode::Input, input);
    int output = 0;
    const auto failure = attempt([&] {
        output = files.freeFile();
        files.open(scratch, OpenMode::Output, output);
        while (!files.endOfFile(input)) {
            const std::string line = files.lineInput(input);
            if (hasInfoFile(album, line))
                files.print(output, line);
        }
        files.close(output);
        files.close(input);
    });
    if (failure) {
        attempt([&] { files.close(output); });
        attempt([&] { files.close(input); });
        throw Failure(failure->kind());
    }
}

void repairList(Album& album, const std::string& list, const std::string& scratch)
{
    // The list is replaced in one act, and only after the disk has the new one: neither a full disk nor a loss of
    // power leaves the folder without it.
    attempt([&] {
        copyLivingLines(album, list, scratch);
        album.files.replaceContent(list, scratch);
    });
    attempt([&] { album.files.remove(scratch); });
}

} // namespace

void RemoveMissingPhotosFromGroup(Album& album, Desktop& desktop)
{
    attempt([&] { desktop.Screen().MousePointer = HourglassPointer; });
    const std::string& folder = album.paths.SlideGroupPath;
    if (folder.empty()) {
        desktop.prompts().messageBox(
            "Critical Error-SubRemoveMissingPhotosFromGroup: SlideGroup path is blank!", Buttons::Ok, "");
        desktop.endProgram(FatalExit);
    }
    std::vector<std::string> lists;
    // Without the information files every line would look like a missing photograph. Where a setting has lost its last
    // separator the folder is there, and yet no name behind it leads into it. Hardly a name fits "?", so that none is
    // sorted.
    attempt([&] {
        album.files.listExisting(album.paths.InfoPath + "?");
        if (fromNativePath(album.paths.InfoPath).ends_with('\\'))
            lists = album.files.list(folder + "*.*");
    });
    for (const std::string& list : lists) {
        if (album.AutoCheckBypass)
            break;
        repairList(album, folder + list, folder + "TmpGroup.lst");
    }
    attempt([&] { desktop.Screen().MousePointer = DefaultPointer; });
}

} // namespace trovarium
