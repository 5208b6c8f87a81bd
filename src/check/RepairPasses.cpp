#include "check/RepairPasses.h"

#include "check/frmSplash.h"
#include "check/frmThumbnail.h"
#include "platform/files/FileService.h"
#include "platform/files/Prefetch.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/FormSlot.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/GroupFile.h"
#include "store/InfoFile.h"
#include "store/LibraryFolders.h"
#include "store/Log.h"
#include "store/PhotographFiles.h"

#include <algorithm>
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

// Up to ten, or a tenth of the album, are photographs that somebody took away; more may be a disk that is away.
constexpr int FewMissing = 10;

bool areFew(int missing, int all)
{
    return missing <= std::max(FewMissing, all / 10);
}

bool isSeen(const FileService& files, const std::string& path)
{
    return !attempt([&] { files.length(path); });
}

// A thumbnail bears its photograph's own date, so a newer one is as out of date as an older one.
bool isOutOfDate(const Album& album, const std::string& photograph)
{
    const FileService& files = album.files;
    std::string thumbnail;
    bool missing = true;
    attempt([&] {
        thumbnail = thumbnailPath(album.paths, SplitPath(photograph).FileName);
        missing = files.length(thumbnail) < 1;
    });
    if (missing)
        return true;
    std::optional<Instant> thumbDate;
    std::optional<Instant> photoDate;
    attempt([&] { thumbDate = files.modified(thumbnail); });
    attempt([&] { photoDate = files.modified(photograph); });
    // What is read answers to its name in another case too: that may be the thumbnail of another photograph
    // of the same second.
    bool isItsOwn = false;
    attempt([&] { isItsOwn = files.exists(thumbnail); });
    return thumbDate != photoDate || !isItsOwn;
}

} // namespace

RepairPasses::RepairPasses(Album& album, frmSplash& splash, FormSlot<frmThumbnail>& thumbnailBuilder)
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

// The names on the list, less `ending`, in that folder.
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
    const PrefetchScope prefetch(listed(m_album.paths.InfoPath), listed(m_album.paths.PhotoPath, InfoEnding));
    for (int index = 0; index < count; ++index) {
        // A copy: events run before the next turn.
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
    const PrefetchScope prefetch(listed(m_album.paths.InfoPath), listed(m_album.paths.ThumbnailPath, InfoEnding));
    for (int index = 0; index < count; ++index) {
        const std::string name = m_splash.File1.List(index);
        const std::string link = GetPhotoLink(m_album, name);
        // What lies on a disk that is away keeps its thumbnail, unless somebody is asked.
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
        // One that can't be seen may hold a person's words: its failure ends the pass. The link is the same wherever
        // the settings put the photographs.
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

// Listed once, and only for the first photograph that lacks its own: a first start makes thousands.
RepairPasses::NamesInCapitals RepairPasses::infoFilesInCapitals() const
{
    NamesInCapitals names;
    for (const std::string& name : m_album.files.list(m_album.paths.InfoPath + "*.info"))
        names.emplace(upper(name), name);
    return names;
}

// Such a file is this photograph's when it leads to it.
bool RepairPasses::hasOneOfOtherCase(const std::string& name, const NamesInCapitals& infoFiles) const
{
    const auto [first, last] = infoFiles.equal_range(upper(name + std::string(InfoEnding)));
    return std::any_of(first, last, [&](const auto& infoFile) {
        return m_album.files.isSameFile(GetPhotoLink(m_album, infoFile.second), photographPath(m_album.paths, name));
    });
}

// Each statement steps over its own failure, so the tail stays unreached. The list is written whole: a folder that
// can't be listed, a full disk and a kill in the middle leave the old one.
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
    logFailure(m_album, "Create_AllPhotos_Group", failure);
}

// A walk over a single file divides zero by zero here, and fails.
void RepairPasses::updateProgress(int index, int count, float base)
{
    const float done = divideSingle(static_cast<float>(index), static_cast<float>(count - 1));
    m_splash.UpdateSplashProgress(done * PassShare + base, 1);
}

bool RepairPasses::isAgreed(bool AutoFix, Message kind, std::string_view text, std::string_view title)
{
    return AutoFix || m_splash.desktop().prompts().messageBox(text, kind, title) == Answer::Yes;
}

} // namespace trovarium
