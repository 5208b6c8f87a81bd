#include "browser/GroupListPane.h"

#include "browser/Selection.h"
#include "browser/ThumbnailPages.h"
#include "browser/WindowPlan.h"
#include "browser/frmMain.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/GroupFile.h"
#include "store/Log.h"
#include "viewer/PhotoDisplay.h"
#include "viewer/SlideShow.h"

namespace trovarium {

GroupListPane::GroupListPane(frmMain& form, Album& album)
    : m_form(form)
    , m_album(album)
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
    // The list without a name is one of the names that a listing leaves out. Unseen it keeps no other from its row.
    attempt([&] {
        if (m_album.files.exists(groupListPath(m_album, ".lst")))
            m_form.lstSlideGroups.AddItem("");
    });
    // There whether or not it has a file; its blanks sort it first.
    m_form.lstSlideGroups.AddItem(std::string(AllPhotosGroupName));
    showRow(0, std::string(AllPhotosGroupName));
    for (int i = 0; i < m_form.lstSlideGroups.ListCount(); ++i) {
        if (i >= FirstGroupRow && i < FirstGroupRow + GroupRows)
            showRow(i - FirstGroupRow, m_form.lstSlideGroups.List(i));
    }
    CheckGroupScrollArrows();
    return true;
} catch (const Failure& failure) {
    logFailure(m_album, "LoadGroupNames", failure);
    return false;
}

bool GroupListPane::ScrollGroupNames(std::int32_t NewFirstRow)
try {
    if (GroupScrollBusy)
        return false;
    GroupScrollBusy = true;
    if (NewFirstRow > m_form.lstSlideGroups.ListCount() - GroupRows || NewFirstRow < 0) {
        GroupScrollBusy = false;
        return false;
    }
    for (int row = 0; row < GroupRows; ++row)
        showRow(row, m_form.lstSlideGroups.List(NewFirstRow + row));
    FirstGroupRow = NewFirstRow;
    CheckGroupScrollArrows();
    GroupScrollBusy = false;
    return true;
} catch (const Failure& failure) {
    GroupScrollBusy = false;
    logFailure(m_album, "ScrollGroupNames", failure);
    return false;
}

void GroupListPane::CheckGroupScrollArrows()
{
    m_form.pctArrows(0).Visible = FirstGroupRow >= 1;
    m_form.pctArrows(2).Visible = m_form.lstSlideGroups.ListCount() > FirstGroupRow + GroupRows;
}

// The walk counts entries of the list and asks the rows, so that a name on none of the eight rows of a longer
// list fails at row 8. Callers pass the caption of a row on show.
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

std::string GroupListPane::currentGroupFile() const
{
    return m_form.lbAlbumList(CurrentGroupRow).Caption() + ".lst";
}

bool GroupListPane::isAllPhotosRow(int row) const
{
    return isAllPhotosGroup(m_form.lbAlbumList(row).Caption());
}

void GroupListPane::pctAlbumList_MouseDown(int Index, int Button, int /*Shift*/, float /*X*/, float /*Y*/)
try {
    const std::int16_t old = toInt16(CurrentGroupRow + FirstGroupRow);
    m_form.slideShow().StopSlideShow();
    SelectedGroupName = m_form.lbAlbumList(Index).Caption();
    if (Button == LeftButton)
        openRow(Index, old);
    if (Button == RightButton)
        showGroupMenu(Index);
    // Also after a right press, which leaves a photograph in the frame.
    m_album.view.ViewMode = ViewThumbnails;
    // Compared with the row alone: true for the group on show in a list that isn't scrolled.
    if (old == CurrentGroupRow)
        m_form.selection().SetGroupListSelect(m_album.view.CurrentIndex, NoKeys);
} catch (const Failure& failure) {
    logFailure(m_album, "pctAlbumList_MouseDown", failure);
}

void GroupListPane::openRow(int Index, std::int16_t old)
{
    m_form.selection().SetGroupListSelect(-1, NoKeys);
    if (old != Index + FirstGroupRow) {
        m_form.photoDisplay().SetImageIndex(1);
        m_form.VScroll1.Value = 1;
    }
    if (m_form.pages().LoadSlideGroup(m_form.lbAlbumList(Index).Caption() + ".lst")) {
        for (int row = 0; row < GroupRows; ++row)
            m_form.pctAlbumList(row).Picture = m_form.pctAlbumList(DarkBar).Picture();
        m_form.pctAlbumList(Index).Picture = m_form.pctAlbumList(BrightBar).Picture();
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
