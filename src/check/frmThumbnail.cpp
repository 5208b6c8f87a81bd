// SPDX-License-Identifier: GPL-3.0-or-later

#include "check/frmThumbnail.h"

#include "check/VideoPlayer.h"
#include "platform/files/FileService.h"
#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/ProgressBar.h"
#include "runtime/Dates.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "store/InfoFile.h"
#include "store/LibraryFolders.h"
#include "store/PhotographFiles.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <deque>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace trovarium {

namespace {

constexpr float LongerSide = 100; // of a thumbnail, in pixels
constexpr float ClipWidth = 100;
constexpr float ClipHeight = 75;
constexpr int ReadingTime = 300; // milliseconds, for the form to appear and to be read
constexpr std::size_t FilesAhead = 8;

// In whole pixels, at least one.
float shorterSide(float pixels)
{
    return std::max(1.0F, std::round(pixels));
}

// The files of the photographs of a list, in its order. The picture service decodes the next few while the current one
// is painted and saved.
class PhotographQueue {
public:
    PhotographQueue(Album& album, PictureService& pictures, const CheckedArray<std::string>& list)
        : m_album(album)
        , m_pictures(pictures)
        , m_list(list)
    {
    }
    ~PhotographQueue() { m_pictures.expect({}); }
    PhotographQueue(const PhotographQueue&) = delete;
    PhotographQueue& operator=(const PhotographQueue&) = delete;

    std::string next()
    {
        while (m_ahead.size() <= FilesAhead && m_lookedUp < m_list.upperBound())
            m_ahead.push_back(GetPhotoLink(m_album, SplitPath(m_list(++m_lookedUp)).FileName + ".info"));
        std::vector<std::string> expected;
        for (const std::string& path : m_ahead)
            if (!path.empty() && !isVideoFile(path))
                expected.push_back(path);
        m_pictures.expect(std::move(expected), static_cast<int>(LongerSide));
        std::string path = std::move(m_ahead.front());
        m_ahead.pop_front();
        return path;
    }

private:
    Album& m_album;
    PictureService& m_pictures;
    const CheckedArray<std::string>& m_list;
    std::deque<std::string> m_ahead;
    int m_lookedUp = 0;
};

} // namespace

bool SetFileDateTime(FileService& files, std::string_view FilePath, std::string_view DateText)
{
    const std::optional<Instant> date = dateFromText(DateText);
    bool isSet = false;
    attempt([&] {
        if (date && files.exists(FilePath)) {
            files.setModified(FilePath, *date);
            isSet = true;
        }
    });
    return isSet;
}

frmThumbnail::frmThumbnail(Desktop& desktop, Album& album, VideoPlayer& video)
    : Form(desktop,
        {.Name = "frmThumbnail",
            .Caption = "Create Thumbnails",
            .Width = 6300,
            .Height = 2670,
            .Scale = ScaleMode::Pixels})
    , m_album(album)
    , m_video(video)
{
    Picture = desktop.pictures().artwork("background");
    Icon = desktop.pictures().artwork("icon");
    imgSize.AccessibleName = "Thumbnail";
    lbFilename.FontSize = 15;
    lbFilename.Bold = true;
    lbFilename.NarrowToFit = true;
    lbFilename.Elision = Elision::Start; // the end of the path is the name
    pctProgress.AccessibleName = "Progress";
    pctProgress.AccessibleValue = 0;
    shpProgress.BorderColor = SoftWhite;
    pctProgress.BackColor = BarGray;
    pctSize.AutoSize = true;

    on(Activate, this, &frmThumbnail::Form_Activate);
    on(Unload, this, &frmThumbnail::Form_Unload);
}

void frmThumbnail::SetMissingList(const CheckedArray<std::string>& List)
{
    MissingList = List;
}

void frmThumbnail::CreateThumbnails(const CheckedArray<std::string>& List)
{
    if (IsBuilding)
        return;
    IsBuilding = true;
    desktop().DoEvents();
    MousePointer = ArrowHourglassPointer;
    StopThumbnails = false;
    desktop().wait(ReadingTime);

    std::int16_t count = 0;
    attempt([&] { count = toInt16(List.upperBound()); });
    {
        PhotographQueue photographs(m_album, desktop().pictures(), List);
        for (int index = 1; index <= count; ++index) {
            const std::string photograph = photographs.next();
            if (!isDecoded(photograph))
                break;
            createThumbnail(List(index), photograph);
            UpdateThumbnailProgress(static_cast<float>(index) / static_cast<float>(count), 1);
            if (StopThumbnails)
                break;
            desktop().DoEvents();
        }
    }
    desktop().wait(ReadingTime);
    IsBuilding = false;
    MousePointer = DefaultPointer;
    unload();
}

void frmThumbnail::UpdateThumbnailProgress(float Value, std::int16_t Maximum)
{
    growBar(desktop(), pctProgress, shpProgress, Value, Maximum);
}

// Runs events while it waits, so that the close box works. After a stop it waits for a second more: a thumbnail that
// isn't done then is left to the next check.
bool frmThumbnail::isDecoded(const std::string& photograph)
{
    constexpr int WaitStep = 10; // milliseconds
    constexpr int LastWait = 1000;
    while (!desktop().pictures().isDecoded(
        photograph, static_cast<int>(LongerSide), StopThumbnails ? LastWait : WaitStep)) {
        if (StopThumbnails)
            return false;
        desktop().DoEvents();
    }
    return true;
}

void frmThumbnail::createThumbnail(const std::string& listed, const std::string& photograph)
{
    if (isVideoFile(photograph))
        showFrame(photograph);
    else
        paintThumbnail(listed, photograph);
    desktop().DoEvents();
    std::string thumbnail;
    attempt([&] {
        thumbnail = thumbnailPath(m_album.paths, SplitPath(listed).FileName);
        m_album.files.removeLink(thumbnail); // a write would follow a link whose name ends in ".lst" or ".info"
        desktop().pictures().saveBitmap(imgSize.Image(), thumbnail);
    });
    // The photograph's own date is what tells the next check that this thumbnail is up to date.
    attempt([&] { SetFileDateTime(m_album.files, thumbnail, dateText(m_album.files.modified(photograph))); });
}

// Clears the box first: the picture before would pass for a frame of a clip that can't be played.
void frmThumbnail::showFrame(const std::string& clip)
{
    imgSize.Picture = trovarium::Picture();
    imgSize.Width = ClipWidth;
    imgSize.Height = ClipHeight;
    desktop().DoEvents();
    m_video.OpenVideo(clip, imgSize);
    desktop().DoEvents();
    m_video.VideoCommand("play");
    desktop().DoEvents();
    m_video.VideoCommand("pause");
}

void frmThumbnail::paintThumbnail(const std::string& listed, const std::string& photograph)
{
    const auto failure =
        attempt([&] { pctSize.Picture = desktop().pictures().loadReduced(photograph, static_cast<int>(LongerSide)); });
    desktop().DoEvents();
    if (failure)
        pctSize.Picture = trovarium::Picture();
    const float width = pctSize.Width();
    const float height = pctSize.Height();
    attempt([&] { m_ratio = divideSingle(width, height); });
    lbFilename.Caption = readablePath(listed);
    lbPhotoSize(0).Caption = "(width=" + numberText(width) + ")";
    lbPhotoSize(1).Caption = "(height=" + numberText(height) + ")";
    if (m_ratio < 1) {
        imgSize.Height = LongerSide;
        imgSize.Width = shorterSide(LongerSide * m_ratio);
    } else {
        imgSize.Width = LongerSide;
        imgSize.Height = shorterSide(LongerSide / m_ratio);
    }
    imgSize.Picture = trovarium::Picture();
    desktop().DoEvents();
    imgSize.Picture = pctSize.Picture();
}

void frmThumbnail::Form_Activate()
{
    MousePointer = ArrowPointer;
    CreateThumbnails(MissingList);
}

void frmThumbnail::Form_Unload()
{
    MousePointer = HourglassPointer;
    StopThumbnails = true;
    if (!IsBuilding)
        unload();
}

} // namespace trovarium
