// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/GroupListPane.h"

#include "browser/Selection.h"
#include "browser/ThumbnailPages.h"
#include "browser/frmMain.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "runtime/Lock.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/GroupFile.h"
#include "store/Log.h"
#include "viewer/PhotoDisplay.h"
#include "viewer/SlideShow.h"

#include <algorithm>

namespace trovarium {

GroupListPane::GroupListPane(frmMain& form, Album& album)
    : WindowPart(form, album)
{
    on(form.pctAlbumList, &PictureBox::MouseDown, this, &GroupListPane::pctAlbumList_MouseDown);
    on(form.lbAlbumList, &Label::MouseDown, this, &GroupListPane::lbAlbumList_MouseDown);
    on(form.lbAlbumList, &Label::MouseMove, this, &GroupListPane::lbAlbumList_MouseMove);
    on(form.pctArrows, &PictureButton::Click, this, &GroupListPane::pctArrows_Click);
}

bool GroupListPane::LoadGroupNames()
try {
    m_form.lstSlideGroups.Clear();
    for (int row = 0; row < GroupRows; ++row)
        m_form.pctAlbumList(row).Visible = false;
    for (const std::string& fileName : m_album.files.list(m_album.paths.SlideGroupPath + "*.lst")) {
        std::string name = groupNameOf(fileName);
        if (!isAllPhotosGroup(name))
            m_form.lstSlideGroups.AddItem(std::move(name));
    }
    // A list without a name is hidden, and so missing in the listing above.
    attempt([&] {
        if (m_album.files.exists(groupListPath(m_album, ".lst")))
            m_form.lstSlideGroups.AddItem("");
    });
    // Always there, even without a file; the blanks in its name sort it first.
    m_form.lstSlideGroups.AddItem(std::string(AllPhotosGroupName));
    showRow(0, std::string(AllPhotosGroupName));
    for (int row = 0; row < GroupRows && FirstGroupRow + row < m_form.lstSlideGroups.ListCount(); ++row)
        showRow(row, m_form.lstSlideGroups.List(FirstGroupRow + row));
    CheckGroupScrollArrows();
    return true;
} catch (const Failure& failure) {
    logFailure(m_album, "LoadGroupNames", failure);
    return false;
}

void GroupListPane::reload()
{
    LoadGroupNames();
    if (FirstGroupRow == 0 || m_form.lstSlideGroups.ListCount() > GroupRows)
        return;
    FirstGroupRow = 0;
    LoadGroupNames();
}

bool GroupListPane::ScrollGroupNames(std::int32_t NewFirstRow)
try {
    if (GroupScrollBusy || NewFirstRow > m_form.lstSlideGroups.ListCount() - GroupRows || NewFirstRow < 0)
        return false;
    const Lock whileScrolling(GroupScrollBusy);
    for (int row = 0; row < GroupRows; ++row)
        showRow(row, m_form.lstSlideGroups.List(NewFirstRow + row));
    FirstGroupRow = NewFirstRow;
    CheckGroupScrollArrows();
    return true;
} catch (const Failure& failure) {
    logFailure(m_album, "ScrollGroupNames", failure);
    return false;
}

void GroupListPane::CheckGroupScrollArrows()
{
    m_form.pctArrows(0).Visible = FirstGroupRow >= 1;
    m_form.pctArrows(2).Visible = m_form.lstSlideGroups.ListCount() > FirstGroupRow + GroupRows;
}

// Counts the entries of the list but compares rows: in a list of more than eight, a name that is on no row fails at row
// 8. Callers pass the caption of a visible row.
std::int16_t GroupListPane::FindGroupRow(std::string_view FileName) const
{
    for (int i = 0; i < m_form.lstSlideGroups.ListCount(); ++i) {
        if (equalInCapitals(FileName, m_form.lbAlbumList(i).Caption() + ".lst"))
            return static_cast<std::int16_t>(i);
    }
    return -1;
}

bool GroupListPane::GroupExists(std::string_view Name) const
{
    if (Name.empty())
        return true;
    for (int i = 0; i < m_form.lstSlideGroups.ListCount(); ++i) {
        if (equalInCapitals(Name, m_form.lstSlideGroups.List(i)))
            return true;
    }
    return false;
}

// -1 if no visible row shows the group.
int GroupListPane::rowOf(std::string_view name) const
{
    for (int row = 0; row < GroupRows; ++row) {
        if (m_form.pctAlbumList(row).Visible() && m_form.lbAlbumList(row).Caption() == name)
            return row;
    }
    return -1;
}

int GroupListPane::rowAt(float x, float y) const
{
    for (int i = 0; i < GroupRows; ++i) {
        const PictureBox& row = m_form.pctAlbumList(i);
        if (x > row.Left() && x < row.Left() + row.Width() && y > row.Top() && y < row.Top() + row.Height())
            return i;
    }
    return -1;
}

void GroupListPane::reopenGroup()
try {
    const GroupOnShow& group = m_album.group;
    const std::string name = group.CurrentGroupName;
    if (name.empty()) {
        // No group could be read so far.
        if (m_form.pages().CurrentPage == 0)
            pctAlbumList_MouseDown(CurrentGroupRow, LeftButton, NoKeys, 0, 0);
        return;
    }
    markAsOpen(name);
    const bool read = m_form.pages().reload();
    m_album.view.ViewMode = ViewThumbnails;
    if (read && group.CurrentGroupName == name)
        m_form.selection().SetGroupListSelect(m_album.view.CurrentIndex, NoKeys);
} catch (const Failure& failure) {
    logFailure(m_album, "pctAlbumList_MouseDown", failure);
}

void GroupListPane::showGroup(const std::string& name, std::int32_t position, const std::vector<std::int32_t>& selected)
{
    scrollTo(name);
    markAsOpen(name);
    ThumbnailPages& pages = m_form.pages();
    if (pages.LoadGroupFile(name + ".lst"))
        m_form.selection().select(selected);
    m_form.photoDisplay().SetImageIndex(std::clamp(position, 1, std::max(m_album.group.GroupList.upperBound(), 1)));
    pages.SetCountLabel(m_album.view.CurrentIndex);
    pages.showCurrent();
}

void GroupListPane::scrollTo(const std::string& name)
{
    const ListBox& names = m_form.lstSlideGroups;
    for (int i = 0; i < names.ListCount() && rowOf(name) < 0; ++i) {
        if (names.List(i) == name)
            ScrollGroupNames(std::clamp(i, 0, std::max(names.ListCount() - GroupRows, 0)));
    }
}

void GroupListPane::markAsOpen(const std::string& name)
{
    m_form.slideShow().StopSlideShow();
    SelectedGroupName = name;
    m_form.selection().SetGroupListSelect(-1, NoKeys);
    if (const int row = rowOf(name); row >= 0) {
        CurrentGroupRow = static_cast<std::int16_t>(row);
        light(row);
    }
}

// Doesn't sort the list again.
void GroupListPane::renameEntry(const std::string& from, const std::string& to)
{
    if (const int row = rowOf(from); row >= 0) {
        m_form.lbAlbumList(row).Caption = to;
        m_form.pctAlbumList(row).AccessibleName = to;
    }
    ListBox& names = m_form.lstSlideGroups;
    for (int i = 0; i < names.ListCount(); ++i) {
        if (names.List(i) == from) {
            names.setList(i, to);
            return;
        }
    }
}

bool GroupListPane::isAllPhotosRow(int row) const
{
    return isAllPhotosGroup(m_form.lbAlbumList(row).Caption());
}

void GroupListPane::pctAlbumList_MouseDown(int Index, int Button, int /*Shift*/, float /*X*/, float /*Y*/)
try {
    const std::string before = m_album.group.CurrentGroupName;
    m_form.slideShow().StopSlideShow();
    SelectedGroupName = m_form.lbAlbumList(Index).Caption();
    const bool isOther = Button == LeftButton && SelectedGroupName != before;
    if (Button == LeftButton)
        openRow(Index, isOther);
    if (Button == RightButton)
        showGroupMenu(Index);
    // Even after a right press, though a photograph may still be in the frame.
    m_album.view.ViewMode = ViewThumbnails;
    // In another group the user has chosen nothing at this position.
    if (!isOther && m_album.group.CurrentGroupName == before)
        m_form.selection().SetGroupListSelect(m_album.view.CurrentIndex, NoKeys);
} catch (const Failure& failure) {
    logFailure(m_album, "pctAlbumList_MouseDown", failure);
}

void GroupListPane::openRow(int Index, bool isOther)
{
    m_form.selection().SetGroupListSelect(-1, NoKeys);
    if (isOther) {
        m_form.photoDisplay().SetImageIndex(1);
        m_form.VScroll1.Value = 1;
    }
    if (m_form.pages().LoadSlideGroup(m_form.lbAlbumList(Index).Caption() + ".lst"))
        light(Index);
}

// Highlights that row alone.
void GroupListPane::light(int row)
{
    for (int i = 0; i < GroupRows; ++i) {
        m_form.pctAlbumList(i).Picture = m_form.pctAlbumList(i == row ? BrightBar : DarkBar).Picture();
        m_form.pctAlbumList(i).AccessibleSelected = i == row;
    }
}

void GroupListPane::showGroupMenu(int Index)
{
    const bool canChange = !isAllPhotosRow(Index);
    m_form.mnuGroupRemove.Enabled = canChange;
    m_form.mnuGroupRenameGroup.Enabled = canChange;
    m_form.PopupMenu(m_form.mnuGroup);
}

void GroupListPane::showRow(int row, const std::string& name)
{
    m_form.lbAlbumList(row).Caption = name;
    m_form.pctAlbumList(row).AccessibleName = std::string(trimmed(name));
    m_form.pctAlbumList(row).Visible = true;
    m_form.pctAlbumList(row).Picture = m_form.pctAlbumList(DarkBar).Picture();
    m_form.pctAlbumList(row).AccessibleSelected = false;
}

void GroupListPane::lbAlbumList_MouseDown(int Index, int Button, int Shift, float X, float Y)
{
    pctAlbumList_MouseDown(Index, Button, Shift, X, Y);
}

void GroupListPane::lbAlbumList_MouseMove(int Index)
{
    m_form.lbAlbumList(Index).ToolTipText = m_form.lbAlbumList(Index).Caption() + " (Right-click for menu.)";
}

void GroupListPane::pctArrows_Click(int Index)
{
    const bool up = Index <= 1;
    PictureButton& pressed = m_form.pctArrows(up ? 1 : 3);
    pressed.Visible = true;
    m_form.desktop().DoEvents();
    ScrollGroupNames(FirstGroupRow + (up ? -1 : 1));
    pressed.Visible = false;
}

} // namespace trovarium
