// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/ThumbnailPages.h"

#include "browser/GroupListPane.h"
#include "browser/Selection.h"
#include "browser/frmMain.h"
#include "platform/media/MediaService.h"
#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Desktop.h"
#include "runtime/Lock.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "store/GroupFile.h"
#include "store/InfoFile.h"
#include "store/Log.h"
#include "store/PhotographFiles.h"
#include "viewer/InfoBox.h"
#include "viewer/VideoControls.h"

#include <algorithm>
#include <utility>

namespace trovarium {

namespace {

// In pixels. The file in a thumbnail's place may hold a larger picture.
constexpr int CellSide = 100;

constexpr const char* CellTip = "Double-click to view."; // until the mouse moves over the photograph

} // namespace

ThumbnailPages::ThumbnailPages(frmMain& form, Album& album)
    : WindowPart(form, album)
{
    // So that there is no page 0 before the first group is read.
    form.VScroll1.Max = 1;
    form.VScroll1.Min = 1;
    form.VScroll1.Value = 1;
    form.imgThumbnail.forEach([](int, Image& image) { image.ToolTipText = CellTip; });
    on(form.VScroll1.Change, this, &ThumbnailPages::VScroll1_Change);
}

bool ThumbnailPages::LoadGroupFile(std::string_view FileName)
try {
    if (!readGroupList(m_album, FileName))
        return false;
    GroupOnShow& group = m_album.group;
    setUpScrollBar();
    group.PhotoCount = group.GroupList.upperBound();
    group.CurrentGroupName = groupNameOf(FileName);
    SetCountLabel(m_album.view.CurrentIndex);
    return true;
} catch (const Failure&) {
    return false;
}

// Lowering Max clamps Value, which turns back to a page that still exists.
void ThumbnailPages::setUpScrollBar()
{
    const int upperBound = m_album.group.GroupList.upperBound();
    VScroll& bar = m_form.VScroll1;
    if (upperBound <= CellCount) {
        bar.Enabled = false;
        bar.Max = 1;
    } else {
        bar.Min = 1;
        bar.Max = (upperBound + CellCount - 1) / CellCount;
        bar.Enabled = true;
    }
    bar.Refresh();
}

bool ThumbnailPages::LoadSlideGroup(std::string_view FileName)
try {
    const bool isOther = groupNameOf(FileName) != m_album.group.CurrentGroupName;
    if (LoadGroupFile(FileName)) {
        GroupListPane& list = m_form.groupList();
        list.CurrentGroupRow = list.FindGroupRow(FileName);
        if (isOther || CurrentPage == 0)
            CurrentPage = 1;
        ShowThumbnails(CurrentPage);
    }
    return true;
} catch (const Failure& failure) {
    logFailure(m_album, "LoadSlideGroup", failure);
    return false;
}

bool ThumbnailPages::reload()
{
    const bool read = LoadGroupFile(m_album.group.currentGroupFile());
    ShowThumbnails(CurrentPage);
    return read;
}

bool ThumbnailPages::ShowThumbnails(const std::int32_t& Page)
{
    takeBackFrame();
    attempt([&] { m_form.VScroll1.Visible = true; });
    m_form.desktop().DoEvents();
    CurrentPage = Page;
    for (int cell = 0; cell < CellCount; ++cell) {
        const std::int32_t position = (Page - 1) * CellCount + cell + 1;
        if (position > m_album.group.GroupList.upperBound())
            emptyCell(cell);
        else
            fillCell(cell, position);
        m_form.desktop().DoEvents();
    }
    attempt([&] {
        m_form.lbStatusPage.Caption =
            "Page " + numberText(std::int64_t{Page}) + " of " + numberText(std::int64_t{m_form.VScroll1.Max()});
    });
    return true;
}

// Hides the photograph or film in the frame.
void ThumbnailPages::takeBackFrame()
{
    attempt([&] { m_form.imgbox.Visible = false; });
    attempt([&] { m_form.picVideoWindow.Visible = false; });
    attempt([&] { m_form.parkVideo(); });
    attempt([&] { m_form.video().VideoCommand("stop"); });
}

// Clears the cell first: a missing or damaged thumbnail must not leave the old picture.
void ThumbnailPages::fillCell(int cell, std::int32_t position)
{
    Image& image = m_form.imgThumbnail(cell);
    Label& label = m_form.lbThumbnailFile(cell);
    attempt([&] { image.Picture = Picture(); });
    attempt([&] {
        image.Picture = m_form.desktop().pictures().loadReduced(
            thumbnailPath(m_album.paths, m_album.group.GroupList(position)), CellSide);
    });
    attempt(
        [&] { image.sharpenFrom([this, name = m_album.group.GroupList(position)] { return photographOf(name); }); });
    attempt([&] { image.ToolTipText = CellTip; });
    attempt([&] { image.AccessibleName = m_album.group.GroupList(position); });
    attempt([&] { image.Visible = true; });
    attempt([&] { label.Caption = m_album.group.GroupList(position); });
    attempt([&] { label.Visible = true; });
    if (isVideoFile(image.AccessibleName()))
        m_form.desktop().media().expectFilm();
}

// Empty for a clip.
std::string ThumbnailPages::photographOf(const std::string& name)
{
    std::string path = photographIfKnown(m_album, name);
    return isVideoFile(path) ? "" : path;
}

void ThumbnailPages::emptyCell(int cell)
{
    Image& image = m_form.imgThumbnail(cell);
    Label& label = m_form.lbThumbnailFile(cell);
    attempt([&] { image.Picture = Picture(); });
    attempt([&] { image.ToolTipText = CellTip; });
    attempt([&] { image.AccessibleName = ""; });
    attempt([&] { image.Visible = false; });
    attempt([&] { label.Caption = ""; });
    attempt([&] { label.Visible = false; });
}

void ThumbnailPages::showCurrent()
{
    m_album.view.ViewMode = ViewThumbnails;
    VScroll& bar = m_form.VScroll1;
    const std::int32_t page = std::clamp((m_album.view.CurrentIndex - 1) / CellCount + 1, 1, bar.Max());
    const bool isBusy = std::exchange(PageChangeBusy, true); // the page is drawn below, even if Value doesn't change
    bar.Value = page;
    PageChangeBusy = isBusy;
    CurrentPage = page;
    ShowThumbnails(CurrentPage);
    m_form.selection().ShowGroupListSelect();
    bar.Enabled = m_album.group.GroupList.upperBound() > CellCount;
    // An edit may have begun in the events above.
    if (const int cell = currentCell(); cell >= 0 && !m_form.infoBox().isEdited())
        m_form.imgThumbnail(cell).SetFocus();
}

bool ThumbnailPages::ShowThumbnailBoxes(bool Show)
try {
    for (int cell = 0; cell < CellCount; ++cell) {
        m_form.imgThumbnail(cell).Visible = Show;
        m_form.lbThumbnailFile(cell).Visible = Show;
        if (Show)
            m_album.view.ViewMode = ViewThumbnails;
    }
    if (!Show && m_form.VScroll1.hasFocus())
        m_form.pctWindow.SetFocus(); // or the focus would move to an arbitrary control
    m_form.VScroll1.Visible = Show;
    return true;
} catch (const Failure& failure) {
    logFailure(m_album, "ShowThumbnailBoxes", failure);
    return false;
}

void ThumbnailPages::SetCountLabel(std::int32_t Index)
{
    const GroupOnShow& group = m_album.group;
    std::string place = "0 of 0";
    if (group.PhotoCount >= 1)
        place = numberText(std::int64_t{Index}) + " of " + numberText(std::int64_t{group.PhotoCount});
    attempt([&] { m_form.lbStatusCount.Caption = "Photo " + place; });
    attempt([&] { m_form.lbCount.Caption = "Group [" + group.CurrentGroupName + "] Viewing " + place; });
}

int ThumbnailPages::currentCell() const
{
    const int cell = m_album.view.CurrentIndex - positionOf(0);
    return cell >= 0 && cell < CellCount && m_form.imgThumbnail(cell).Visible() ? cell : -1;
}

void ThumbnailPages::VScroll1_Change()
try {
    if (PageChangeBusy)
        return;
    const Lock whileChanging(PageChangeBusy);
    m_form.VScroll1.Enabled = false;
    CurrentPage = m_form.VScroll1.Value();
    ShowThumbnails(CurrentPage);
    m_form.selection().ShowGroupListSelect();
    m_form.VScroll1.Enabled = true;
} catch (const Failure& failure) {
    logFailure(m_album, "VScroll1_Change", failure);
}

} // namespace trovarium
