// SPDX-License-Identifier: GPL-3.0-or-later

#include "viewer/PhotoDisplay.h"

#include "browser/Selection.h"
#include "browser/ThumbnailPages.h"
#include "browser/frmMain.h"
#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Lock.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/InfoFile.h"
#include "store/Log.h"
#include "viewer/AudioControls.h"
#include "viewer/InfoBox.h"
#include "viewer/SlideShow.h"
#include "viewer/VideoControls.h"

#include <vector>

namespace trovarium {

namespace {

constexpr std::int16_t SmallestReduction = 20; // 1/20

// In pixels of the frame.
constexpr float VideoLeft = 20;
constexpr float VideoWidth = 497;
constexpr float VideoHeight = 373;

// ".MOV" is compared with five characters and so never matches: such a file counts as a picture.
bool playsAsVideo(std::string_view path)
{
    const std::string tail = upper(right(path, 5));
    const std::string_view extension = right(tail, 4);
    return extension == ".AVI" || extension == ".MPG" || tail == ".MOV";
}

} // namespace

std::int16_t reductionThatFits(float width, float height, float frameWidth, float frameHeight)
{
    for (std::int16_t i = 1; i <= SmallestReduction; ++i) {
        const auto divisor = static_cast<float>(i);
        const float reducedWidth = width / divisor;
        const float reducedHeight = height / divisor;
        if (reducedWidth < frameWidth && reducedHeight < frameHeight)
            return i;
    }
    return 0;
}

PhotoDisplay::PhotoDisplay(frmMain& form, Album& album)
    : WindowPart(form, album)
{
    on(form.pctNext.Click, this, &PhotoDisplay::pctNext_Click);
    on(form.pctPrev.Click, this, &PhotoDisplay::pctPrev_Click);
    on(form.mnuViewNext.Click, this, &PhotoDisplay::mnuViewNext_Click);
    on(form.mnuViewPrevious.Click, this, &PhotoDisplay::mnuViewPrevious_Click);
}

void PhotoDisplay::SetImageIndex(std::int32_t Index)
{
    m_album.view.PreviousIndex = m_album.view.CurrentIndex;
    m_album.view.CurrentIndex = Index;
}

bool PhotoDisplay::DisplayPhoto(std::int32_t Index, bool Show)
try {
    bool videoOnShow = false;
    if (Index <= m_album.group.GroupList.upperBound())
        load(Index, videoOnShow);
    m_form.desktop().DoEvents();
    if (Show) {
        show(videoOnShow);
        expectNeighbours(Index);
        return true;
    }
    if (videoOnShow) {
        m_form.picVideoWindow.Visible = false;
        m_form.parkVideo();
        m_form.video().VideoCommand("stop");
    } else {
        m_form.imgbox.Visible = false;
    }
    m_form.pages().ShowThumbnailBoxes(true);
    return true;
} catch (const Failure& failure) {
    if (failure.kind() == FailureKind::InvalidPicture) {
        m_form.slideShow().letScreenSleep(); // nobody may be there to answer
        m_form.desktop().prompts().messageBox("Invalid image file. Unable to open", Message::Error, "Error");
    }
    m_form.desktop().Screen().MousePointer = DefaultPointer;
    return false;
}

void PhotoDisplay::load(std::int32_t Index, bool& videoOnShow)
{
    m_form.desktop().Screen().MousePointer = HourglassPointer;
    const std::string infoFileName = m_album.group.GroupList(Index) + ".info";
    const std::string path = GetPhotoLink(m_album, infoFileName);
    // A second read, for the path that others use.
    m_album.view.CurrentPhotoFile = GetPhotoLink(m_album, infoFileName);
    // Before anything is loaded, even if that fails.
    SetImageIndex(Index);
    videoOnShow = playsAsVideo(path);
    if (videoOnShow)
        loadVideo(path);
    else
        loadPicture(path);
    if (m_form.infoBox().LoadImageInfo(Index))
        m_form.infoBox().LoadInfoBox();
    m_form.desktop().Screen().MousePointer = DefaultPointer;
}

void PhotoDisplay::loadVideo(const std::string& path)
{
    m_album.view.IsVideo = true;
    PictureBox& window = m_form.picVideoWindow;
    window.Left = VideoLeft;
    window.Top = (m_form.pctWindow.ScaleHeight() - VideoHeight) * 0.5F;
    window.Width = VideoWidth;
    window.Height = VideoHeight;
    m_form.video().OpenVideo(path, window);
    m_loadedFile = path;
    m_form.video().VideoCommand("play");
}

void PhotoDisplay::loadPicture(const std::string& path)
{
    m_album.view.IsVideo = false;
    PictureBox& holder = m_form.pctBox(0);
    holder.Picture = m_form.desktop().pictures().load(path);
    m_loadedFile = path;
    const float width = holder.Width();
    const float height = holder.Height();
    holder.Left = (m_form.pctWindow.ScaleWidth() - width) * 0.5F;
    holder.Top = (m_form.pctWindow.ScaleHeight() - height) * 0.5F;
    m_album.info.ImageWidth = toInt16(width);
    m_album.info.ImageHeight = toInt16(height);
    m_album.view.ZoomLevel = 1;
    fitPicture(width, height);
}

// A picture more than twenty times as large as the frame isn't shown: the previous one stays.
void PhotoDisplay::fitPicture(float width, float height)
{
    const float frameWidth = m_form.pctWindow.ScaleWidth();
    const float frameHeight = m_form.pctWindow.ScaleHeight();
    Image& imgbox = m_form.imgbox;
    const std::int16_t reduction = reductionThatFits(width, height, frameWidth, frameHeight);
    if (reduction != 0) {
        m_form.lbZoom.Caption = "Zoom  1/" + formatWhole(reduction);
        m_album.view.ZoomLevel = static_cast<std::int16_t>(-reduction);
        imgbox.Visible = false;
        imgbox.Width = width / static_cast<float>(reduction);
        imgbox.Height = height / static_cast<float>(reduction);
        imgbox.Left = (frameWidth - imgbox.Width()) * 0.5F;
        imgbox.Top = (frameHeight - imgbox.Height()) * 0.5F;
        imgbox.Picture = m_form.pctBox(0).Picture();
        m_form.desktop().DoEvents();
    }
}

void PhotoDisplay::show(bool videoOnShow)
{
    if (!m_form.optInfoPosition(InfoBox::AlwaysUp).Value())
        m_form.infoBox().ShowInfoBox(Up::No, Edit::No);
    m_form.txtTitle.SetFocus(); // where typing continues during an edit
    m_form.pages().ShowThumbnailBoxes(false);
    if (videoOnShow) {
        m_form.picVideoWindow.Visible = true;
        m_form.video().VideoCommand("play");
    } else {
        m_form.imgbox.Visible = true;
        m_form.picVideoWindow.Visible = false;
        m_form.parkVideo();
        m_form.video().VideoCommand("stop");
    }
    m_form.VScroll1.Enabled = false;
}

bool PhotoDisplay::NextPhoto()
try {
    bool isShown = false;
    ViewState& view = m_album.view;
    if (m_form.slideShow().ShowSelectedOnly) {
        // Leaves the index on the selected photograph; the step below still adds one.
        const std::int16_t last = toInt16(m_album.group.GroupList.upperBound() - 1);
        for (int i = toInt16(view.CurrentIndex); i <= last; ++i) {
            SetImageIndex(i + 1);
            if (m_album.group.GroupSelect(i + 1) == 1)
                break;
        }
    }
    if (view.ViewMode == ViewThumbnails) {
        openFromThumbnails();
        // From the thumbnails, the current photograph is shown and not the next one.
        SetImageIndex(view.CurrentIndex - 1);
        view.ViewMode = ViewPhoto;
    }
    m_form.desktop().DoEvents();
    if (view.CurrentIndex < m_album.group.GroupList.upperBound())
        isShown = DisplayPhoto(view.CurrentIndex + 1, true);
    m_form.pages().SetCountLabel(view.CurrentIndex);
    playClipOfSlide();
    return isShown;
} catch (const Failure& failure) {
    logFailure(m_album, "NextPhoto", failure);
    return false;
}

bool PhotoDisplay::PrevPhoto()
try {
    bool isShown = false;
    ViewState& view = m_album.view;
    if (view.ViewMode == ViewThumbnails) {
        openFromThumbnails();
        view.ViewMode = ViewPhoto;
    }
    m_form.desktop().DoEvents();
    if (view.CurrentIndex >= 2)
        isShown = DisplayPhoto(view.CurrentIndex - 1, true);
    m_form.pages().SetCountLabel(view.CurrentIndex);
    playClipOfSlide();
    return isShown;
} catch (const Failure& failure) {
    logFailure(m_album, "PrevPhoto", failure);
    return false;
}

void PhotoDisplay::openFromThumbnails()
{
    m_form.selection().imgThumbnail_DblClick(
        m_album.view.CurrentIndex - 1 - (m_form.pages().CurrentPage - 1) * ThumbnailPages::CellCount);
}

void PhotoDisplay::playClipOfSlide()
{
    if (m_album.view.SlideShowRunning && m_album.view.SlideAudioClips) {
        m_form.audio().StopWav();
        m_form.audio().playClipOf(m_album.group.GroupList(m_album.view.CurrentIndex));
    }
}

// Prefetches the photographs before and after this one. Failures are ignored: they are reported when the user gets
// there.
void PhotoDisplay::expectNeighbours(std::int32_t Index)
{
    std::vector<std::string> paths;
    for (const std::int32_t neighbour : {Index + 1, Index - 1}) {
        if (neighbour < 1 || neighbour > m_album.group.GroupList.upperBound())
            continue;
        std::string path = photographIfKnown(m_album, m_album.group.GroupList(neighbour));
        if (!path.empty() && !playsAsVideo(path))
            paths.push_back(std::move(path));
    }
    m_form.desktop().pictures().expect(std::move(paths));
}

void PhotoDisplay::pctNext_Click()
{
    press(m_form.pctNext, &PhotoDisplay::NextPhoto);
}

void PhotoDisplay::pctPrev_Click()
{
    press(m_form.pctPrev, &PhotoDisplay::PrevPhoto);
}

// During a step, another click or key only ends a show: a step inside a step would show the texts of one photograph
// with the picture of another.
void PhotoDisplay::press(PictureButton& button, Step step)
{
    button.Picture = m_form.pctBrightSmall.Picture();
    m_form.slideShow().StopSlideShow();
    if (!m_isStepping) {
        const Lock whileStepping(m_isStepping);
        (this->*step)();
    }
    button.Picture = m_form.pctDarkSmall.Picture();
    m_form.desktop().returnToText(); // even if there was no next one
}

} // namespace trovarium
