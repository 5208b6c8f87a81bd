// SPDX-License-Identifier: GPL-3.0-or-later

#include "check/RepairPasses.h"

#include "check/frmSplash.h"
#include "check/frmThumbnail.h"
#include "platform/files/FileService.h"
#include "platform/files/Prefetch.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Failure.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/GroupFile.h"
#include "store/InfoFile.h"
#include "store/LibraryFolders.h"
#include "store/Log.h"
#include "store/PhotographFiles.h"
#include "store/QuietFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace trovarium {

namespace {

constexpr std::string_view InfoEnding = ".info";

// The library's share of the bar at which each pass begins.
constexpr float PassShare = 0.25F;
constexpr float PhotoPassBase = 0;
constexpr float ThumbnailPassBase = 0.25F;
constexpr float InfoPassBase = 0.5F;
constexpr float GroupPassBase = 0.75F;

// Up to ten, or a tenth of the album, were probably deleted by the user. If more are missing, a disk may be absent.
constexpr int FewMissing = 10;

bool areFew(int missing, int all)
{
    return missing <= std::max(FewMissing, all / 10);
}

bool isSeen(const FileService& files, const std::string& path)
{
    return !attempt([&] { files.length(path); });
}

// A thumbnail has its photograph's date, so that not only an older one is out of date, but a newer one too. It must
// have exactly its name: one that differs in case may belong to another photograph of the same second.
bool isOutOfDate(const Album& album, const std::string& photograph)
{
    std::optional<FileStamp> thumbnail;
    attempt([&] { thumbnail = album.files.exactStamp(thumbnailPath(album.paths, SplitPath(photograph).FileName)); });
    if (!thumbnail || thumbnail->size < 1)
        return true;
    std::optional<FileStamp> original;
    attempt([&] { original = album.files.stamp(photograph); });
    return !original || original->changedSeconds != thumbnail->changedSeconds;
}

constexpr int FatalExit = 1;
constexpr std::size_t LinesBetweenEvents = 4096;

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

RepairPasses::RepairPasses(Album& album, frmSplash& splash, FormHolder<frmThumbnail>& thumbnailBuilder)
    : m_album(album)
    , m_splash(splash)
    , m_thumbnailBuilder(thumbnailBuilder)
{
}

void RepairPasses::CheckFolderContents()
try {
    const bool AutoFix = toBoolean(m_album.Settings().GetOWSetting("Trovarium", "Options", "AutoFix", "True"));
    if (!m_album.AutoCheckBypass)
        PhotoFilesExist(AutoFix);
    if (!m_album.AutoCheckBypass)
        ThumbnailFilesExist(AutoFix);
    if (!m_album.AutoCheckBypass)
        InfoFilesExist(AutoFix);
    if (!m_album.AutoCheckBypass)
        Create_AllPhotos_Group(AllPhotosGroup);
    m_splash.UpdateSplashProgress(1, 1);
} catch (const Failure& failure) {
    logFailure(m_album, "CheckFolderContents", failure);
}

// The paths in `folder` of the names in File1, without `ending`.
std::vector<std::string> RepairPasses::listed(const std::string& folder, std::string_view ending) const
{
    std::vector<std::string> paths;
    for (int index = 0; index < m_splash.File1.ListCount(); ++index) {
        std::string_view name = m_splash.File1.List(index);
        name.remove_suffix(std::min(name.size(), ending.size()));
        paths.push_back(folder + std::string(name));
    }
    return paths;
}

void RepairPasses::PhotoFilesExist(bool AutoFix)
try {
    CheckedArray<std::string> unmatched;
    const std::int16_t count = m_splash.listAnew(m_album.paths.InfoPath);
    const PrefetchScope prefetch(
        listed(m_album.paths.InfoPath), PrefetchScope::SmallFiles, listed(m_album.paths.PhotoPath, InfoEnding));
    for (int index = 0; index < count; ++index) {
        // A copy: events may change the list.
        const std::string name = m_splash.File1.List(index);
        if (!CheckPhotoLink(m_album, GetPhotoLink(m_album, name)))
            unmatched.append(name);
        updateProgress(index, count, PhotoPassBase);
        if (m_album.AutoCheckBypass)
            return;
    }
    if (unmatched.upperBound() == 0)
        return;

    const bool answersItself = AutoFix && areFew(unmatched.upperBound(), count);
    if (!isAgreed(answersItself, Message::Warning,
            "Trovarium has detected " + formatWhole(unmatched.upperBound())
                + " INFO file(s) without corresponding photo/image file(s).\rMove the INFO files to the 'Removed' "
                  "folder?",
            "Missing Photo/Image File(s)"))
        return;
    if (!isAgreed(answersItself, Message::Warning, "Are you sure?", "Removed unassociated INFO file(s)"))
        return;
    for (int index = 1; index <= unmatched.upperBound(); ++index)
        attempt([&] { setAside(m_album.files, m_album.paths.InfoPath, unmatched(index)); });
} catch (const Failure& failure) {
    logFailure(m_album, "PhotoFilesExist", failure);
}

void RepairPasses::ThumbnailFilesExist(bool AutoFix)
try {
    CheckedArray<std::string> missingList;
    const std::int16_t count = m_splash.listAnew(m_album.paths.InfoPath);
    const PrefetchScope prefetch(
        listed(m_album.paths.InfoPath), PrefetchScope::SmallFiles, listed(m_album.paths.ThumbnailPath, InfoEnding));
    for (int index = 0; index < count; ++index) {
        const std::string name = m_splash.File1.List(index);
        const std::string link = GetPhotoLink(m_album, name);
        // The photograph may be on an absent disk: its thumbnail isn't replaced without asking.
        if (!m_album.ReadOnlyLibrary && isOutOfDate(m_album, link) && (!AutoFix || isSeen(m_album.files, link)))
            missingList.append(std::string(withoutLast(name, InfoEnding.size())));
        updateProgress(index, count, ThumbnailPassBase);
        if (m_album.AutoCheckBypass)
            return;
    }
    if (missingList.upperBound() == 0)
        return;

    if (!isAgreed(AutoFix, Message::Question,
            "Trovarium has detected " + formatWhole(missingList.upperBound())
                + " photo/image file(s) with missing or out-of-date corresponding thumbnail(s). Press 'YES' create "
                  "thumbnail(s). Press 'NO' to ignore.",
            "Build Thumbnails"))
        return;
    attempt([&] { m_thumbnailBuilder().load(); });
    attempt([&] { m_thumbnailBuilder().SetMissingList(missingList); });
    attempt([&] { m_thumbnailBuilder().showModal(); });
} catch (const Failure& failure) {
    logFailure(m_album, "ThumbnailFilesExist", failure);
}

void RepairPasses::InfoFilesExist(bool /*AutoFix*/)
try {
    const std::int16_t count = m_splash.listAnew(m_album.paths.PhotoPath);
    std::optional<NamesInCapitals> inCapitals;
    for (int index = 0; index < count; ++index) {
        const std::string name = m_splash.File1.List(index);
        const std::string infoFile = infoFilePath(m_album.paths, name);
        // A failure ends the pass: the information file may be there with what a person wrote. The link doesn't depend
        // on the settings.
        if (!m_album.files.exists(infoFile)) {
            if (!inCapitals)
                inCapitals = infoFilesInCapitals();
            if (!hasOneOfOtherCase(name, *inCapitals))
                CreateInfoFile(m_album.files, infoFile, "\\Photos\\" + name);
        }
        updateProgress(index, count, InfoPassBase);
        if (m_album.AutoCheckBypass)
            return;
    }
} catch (const Failure& failure) {
    logFailure(m_album, "InfoFilesExist", failure);
}

// Called once, for the first photograph without an information file: a first start has thousands of them.
RepairPasses::NamesInCapitals RepairPasses::infoFilesInCapitals() const
{
    NamesInCapitals names;
    for (const std::string& name : m_album.files.list(m_album.paths.InfoPath + "*.info"))
        names.emplace(upper(name), name);
    return names;
}

// Whether one of the files that differ in case alone belongs to this photograph: its link leads to it.
bool RepairPasses::hasOneOfOtherCase(const std::string& name, const NamesInCapitals& infoFiles) const
{
    const auto [first, last] = infoFiles.equal_range(upper(name + std::string(InfoEnding)));
    return std::any_of(first, last, [&](const auto& infoFile) {
        return m_album.files.isSameFile(GetPhotoLink(m_album, infoFile.second), photographPath(m_album.paths, name));
    });
}

// Failures are stepped over. A folder that can't be listed, a full disk and a kill in the middle leave the old list.
void RepairPasses::Create_AllPhotos_Group(std::string_view GroupFileName)
try {
    std::int16_t count = 0;
    std::vector<std::string> names;
    if (attempt([&] { count = m_splash.listAnew(m_album.paths.InfoPath); }))
        return;
    for (int index = 0; index < count; ++index) {
        attempt([&] { names.emplace_back(withoutLast(m_splash.File1.List(index), InfoEnding.size())); });
        attempt([&] { updateProgress(index, count, GroupPassBase); });
    }
    attempt([&] { m_album.files.writeLines(writableGroupList(m_album, GroupFileName), names, Sync::No); });
} catch (const Failure& failure) {
    // Not reached as long as every step above is in an attempt.
    logFailure(m_album, "Create_AllPhotos_Group", failure);
}

// With a single file this divides zero by zero: "Overflow" ends the pass.
void RepairPasses::updateProgress(int index, int count, float base)
{
    const float done = divideSingle(static_cast<float>(index), static_cast<float>(count - 1));
    m_splash.UpdateSplashProgress(done * PassShare + base, 1);
}

bool RepairPasses::isAgreed(bool AutoFix, Message kind, std::string_view text, std::string_view title)
{
    return AutoFix || m_splash.desktop().prompts().messageBox(text, kind, title) == Answer::Yes;
}

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
    // Without the information files every line would look like a missing photograph. So their folder must be there (few
    // names match "?", which saves sorting them), and the path must end in a separator.
    attempt([&] {
        album.files.requireFolder(album.paths.InfoPath);
        album.files.list(album.paths.InfoPath + "?");
        if (fromNativePath(album.paths.InfoPath).ends_with('\\'))
            lists = album.files.list(folder + "*.lst");
    });
    for (const std::string& list : lists) {
        if (album.AutoCheckBypass)
            break;
        if (equalInCapitals(list, ScratchGroup))
            attempt([&] { album.files.remove(folder + list); });
        else
            repairList(album, desktop, folder + list, meanwhile);
    }
    attempt([&] { desktop.Screen().MousePointer = DefaultPointer; });
}

} // namespace trovarium
