// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/Selection.h"

#include "browser/GroupListPane.h"
#include "browser/ThumbnailDrag.h"
#include "browser/ThumbnailPages.h"
#include "browser/frmMain.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "store/Log.h"
#include "viewer/InfoBox.h"
#include "viewer/PhotoDisplay.h"

namespace trovarium {

namespace {

constexpr int ReplaceMode = 0;
constexpr int RangeMode = ShiftKey;
constexpr int ToggleMode = CtrlKey;
constexpr int AddMode = ShiftKey | CtrlKey;

} // namespace

Selection::Selection(frmMain& form, Album& album)
    : WindowPart(form, album)
{
    on(form.imgThumbnail, &Image::MouseDown, this, &Selection::imgThumbnail_MouseDown);
    on(form.imgThumbnail, &Image::DblClick, this, &Selection::imgThumbnail_DblClick);
}

void Selection::SetGroupListSelect(std::int32_t Position, std::int16_t Mode)
try {
    GroupOnShow& group = m_album.group;
    if (Position == -1 || Mode == ReplaceMode)
        clear();
    if ((Mode == ReplaceMode || Mode == ToggleMode) && Position >= 0) {
        toggle(Position);
    } else if (Mode == AddMode) {
        group.GroupSelect(Position) = 1;
        ++group.SelectedCount;
        LastSelected = toInt16(Position);
    } else if (Mode == RangeMode) {
        extendTo(Position);
    }
    ShowGroupListSelect();
} catch (const Failure& failure) {
    logFailure(m_album, "SetGroupListSelect", failure);
}

void Selection::select(const std::vector<std::int32_t>& positions)
try {
    clear();
    for (const std::int32_t position : positions)
        toggle(position);
    ShowGroupListSelect();
} catch (const Failure& failure) {
    logFailure(m_album, "SetGroupListSelect", failure);
}

void Selection::clear()
{
    CheckedArray<std::int32_t>& flags = m_album.group.GroupSelect;
    const std::int16_t last = toInt16(flags.upperBound());
    for (int i = 0; i <= last; ++i)
        flags(i) = 0;
    LastSelected = 0;
    m_album.group.SelectedCount = 0;
}

void Selection::toggle(std::int32_t Position)
{
    std::int32_t& flag = m_album.group.GroupSelect(Position);
    if (flag == 0) {
        flag = 1;
        ++m_album.group.SelectedCount;
    } else {
        if (flag == 1)
            --m_album.group.SelectedCount;
        flag = 0;
    }
    LastSelected = toInt16(Position);
}

// Selects from the photograph next to the anchor up to `Position`. The anchor itself keeps its flag.
void Selection::extendTo(std::int32_t Position)
{
    GroupOnShow& group = m_album.group;
    const std::int16_t end = toInt16(Position);
    const int step = end <= LastSelected ? -1 : 1;
    for (int i = LastSelected + step; (end - i) * step >= 0; i += step) {
        group.GroupSelect(i) = 1;
        ++group.SelectedCount;
    }
    LastSelected = end;
}

void Selection::ShowGroupListSelect()
try {
    const CheckedArray<std::int32_t>& flags = m_album.group.GroupSelect;
    for (int cell = 0; cell < ThumbnailPages::CellCount; ++cell) {
        const std::int32_t position = m_form.pages().positionOf(cell);
        const bool isSelected = position <= flags.upperBound() && flags(position) == 1;
        m_form.shpThumbnailSelect(cell).Visible = isSelected;
        m_form.imgThumbnail(cell).AccessibleSelected = isSelected;
    }
    m_form.lbStatusSelected.Caption = "Selected " + numberText(m_album.group.SelectedCount);
} catch (const Failure& failure) {
    logFailure(m_album, "ShowGroupListSelect", failure);
}

void Selection::imgThumbnail_MouseDown(int Index, int Button, int Shift, float X, float Y)
try {
    const std::int32_t position = m_form.pages().positionOf(Index);
    // A press of any mouse button makes it the current photograph.
    m_form.photoDisplay().SetImageIndex(position);
    if (Button == LeftButton)
        pressLeft(position, Shift, X, Y);
    if (Button == RightButton)
        pressRight(position);
} catch (const Failure& failure) {
    logFailure(m_album, "imgThumbnail_MouseDown", failure);
}

void Selection::pressLeft(std::int32_t position, int Shift, float X, float Y)
{
    if (Shift == NoKeys)
        SetGroupListSelect(-1, ReplaceMode);
    SetGroupListSelect(position, static_cast<std::int16_t>(Shift));
    if (m_form.infoBox().LoadImageInfo(position))
        m_form.infoBox().LoadInfoBox();
    m_form.txtTitle.SetFocus(); // where typing continues during an edit
    m_form.thumbnailDrag().press(X, Y);
    m_form.pages().SetCountLabel(position);
}

// Nothing can be moved or removed from the group of all photographs. It is taken to be in row 0, although row 0 shows
// another group once the list is scrolled.
void Selection::pressRight(std::int32_t position)
{
    SetGroupListSelect(position, AddMode);
    const bool canLeave = m_form.groupList().CurrentGroupRow != 0;
    m_form.mnuThumbMove.Enabled = canLeave;
    m_form.mnuThumbRemove.Enabled = canLeave;
    m_form.thumbnailDrag().breakOff();
    m_form.PopupMenu(m_form.mnuThumb);
}

void Selection::imgThumbnail_DblClick(int Index)
try {
    SetGroupListSelect(-1, ReplaceMode);
    if (m_form.photoDisplay().DisplayPhoto(m_form.pages().positionOf(Index), true))
        m_form.pages().SetCountLabel(m_album.view.CurrentIndex);
    m_album.view.ViewMode = ViewPhoto;
} catch (const Failure& failure) {
    logFailure(m_album, "imgThumbnail_DblClick", failure);
}

} // namespace trovarium
