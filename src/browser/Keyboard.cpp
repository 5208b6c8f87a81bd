// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/Keyboard.h"

#include "browser/FileTransfer.h"
#include "browser/GroupCommands.h"
#include "browser/GroupListPane.h"
#include "browser/MainMenus.h"
#include "browser/Selection.h"
#include "browser/ThumbnailDrag.h"
#include "browser/ThumbnailPages.h"
#include "browser/frmMain.h"
#include "platform/toolkit/Units.h"
#include "runtime/Lock.h"
#include "store/Album.h"
#include "viewer/InfoBox.h"
#include "viewer/PhotoDisplay.h"
#include "viewer/SlideShow.h"
#include "viewer/ZoomAndPan.h"

#include <algorithm>
#include <cstdlib>

namespace trovarium {

namespace {

constexpr int Cells = ThumbnailPages::CellCount;

// By how many positions an arrow key moves; 0 for any other key.
int stepOf(int KeyCode)
{
    switch (KeyCode) {
    case LeftKey:
        return -1;
    case RightKey:
        return 1;
    case UpKey:
        return -Columns;
    case DownKey:
        return Columns;
    default:
        return 0;
    }
}

bool isOpen(const Menu& menu, const Menu& entry)
{
    return menu.Enabled() && entry.Enabled();
}

} // namespace

Keyboard::Keyboard(frmMain& form, Album& album)
    : WindowPart(form, album)
{
    on(form.KeyDown, this, &Keyboard::Form_KeyDown);
}

void Keyboard::Form_KeyDown(int KeyCode, int Shift)
{
    if (m_form.infoBox().isEdited()) {
        if (Shift == NoKeys)
            stepWhileEditing(KeyCode);
        return;
    }
    if (KeyCode == ZKey && (Shift | ShiftKey) == (ShiftKey | CtrlKey))
        return stepThroughHistory(Shift);
    const bool sign = KeyCode == PlusKey || KeyCode == MinusKey || KeyCode == OneKey; // may be typed with Shift
    if (KeyCode == AKey && Shift == CtrlKey)
        selectAll();
    else if (KeyCode == FKey && Shift == CtrlKey)
        search();
    else if (KeyCode == SpaceKey && (Shift & AltKey) == 0)
        pressThumbnail(LeftButton, Shift);
    else if (Shift == (ShiftKey | CtrlKey) && stepOf(KeyCode) != 0)
        moveSelected(stepOf(KeyCode));
    else if (Shift == CtrlKey && KeyCode == CKey)
        copyFiles();
    else if (Shift == CtrlKey && KeyCode == VKey && isOpen(m_form.mnuFile, m_form.mnuFileImport))
        m_form.fileTransfer().paste();
    else if (Shift == NoKeys || (sign && Shift == ShiftKey))
        commandKey(KeyCode);
}

void Keyboard::commandKey(int KeyCode)
{
    switch (KeyCode) {
    case EnterKey:
        return openThumbnail();
    case MenuKey:
        return pressThumbnail(RightButton, NoKeys);
    case EscapeKey:
        return backToThumbnails();
    case DeleteKey:
        return removeFromGroup();
    case F1Key:
        if (isOpen(m_form.mnuHelp, m_form.mnuHelpContents))
            m_form.menus().mnuHelpContents_Click();
        break;
    case F2Key:
        return renameGroup();
    case F11Key:
        if (isOpen(m_form.mnuView, m_form.mnuViewFullscreen))
            m_form.cmdFullScreen_Click();
        break;
    case PlusKey:
        if (isOpen(m_form.mnuView, m_form.mnuViewEnlarge))
            m_form.zoomAndPan().cmdZoomIn_Click();
        break;
    case MinusKey:
        if (isOpen(m_form.mnuView, m_form.mnuViewReduce))
            m_form.zoomAndPan().cmdZoomOut_Click();
        break;
    case OneKey:
        if (isOpen(m_form.mnuView, m_form.mnuViewEnlarge))
            m_form.zoomAndPan().toggleNaturalSize();
        break;
    default:
        return moveKey(KeyCode);
    }
}

void Keyboard::moveKey(int KeyCode)
{
    switch (KeyCode) {
    case PageUpKey:
        return moveBy(-Cells);
    case PageDownKey:
        return moveBy(Cells);
    case HomeKey:
        return moveTo(1);
    case EndKey:
        return moveTo(m_album.group.GroupList.upperBound());
    default:
        if (const int step = stepOf(KeyCode); step != 0)
            return moveBy(step);
    }
}

void Keyboard::pressThumbnail(int button, int Shift)
{
    if (const int cell = actingCell(); cell >= 0)
        press(cell, button, Shift);
}

// Press and release of the mouse in the middle of the cell. A right press opens a menu, which takes the release.
void Keyboard::press(int cell, int button, int Shift)
{
    Image& image = m_form.imgThumbnail(cell);
    image.SetFocus();
    const float x = image.Width() * TwipsPerPixel / 2;
    const float y = image.Height() * TwipsPerPixel / 2;
    m_form.selection().imgThumbnail_MouseDown(cell, button, Shift, x, y);
    if (button == LeftButton)
        m_form.thumbnailDrag().imgThumbnail_MouseUp(cell);
}

void Keyboard::openThumbnail()
{
    const int cell = actingCell();
    if (cell < 0)
        return;
    pressThumbnail(LeftButton, NoKeys);
    m_form.selection().imgThumbnail_DblClick(cell);
}

void Keyboard::selectAll()
{
    const int last = m_album.group.GroupList.upperBound();
    if (isPhotographOnShow() || last < 1)
        return;
    m_form.selection().SetGroupListSelect(1, NoKeys);
    m_form.selection().SetGroupListSelect(last, ShiftKey);
}

void Keyboard::copyFiles()
{
    if (isPhotographOnShow())
        m_form.fileTransfer().copyPhotographOnShow();
    else
        m_form.fileTransfer().copySelected();
}

void Keyboard::search()
{
    m_form.menus().mnuEdit_Click();
    if (isOpen(m_form.mnuEdit, m_form.mnuEditSearchAppend))
        m_form.cmdCreateAlbumGroup_Click();
}

// The buttons for both steps stay enabled during an edit.
void Keyboard::stepWhileEditing(int KeyCode)
{
    if (KeyCode == PageDownKey)
        m_form.photoDisplay().pctNext_Click();
    else if (KeyCode == PageUpKey)
        m_form.photoDisplay().pctPrev_Click();
}

// A drag counts on the list as it is; a show has the window to itself.
void Keyboard::stepThroughHistory(int Shift)
{
    if (m_isInHistory || m_album.view.SlideShowRunning || m_form.thumbnailDrag().ThumbnailDragging)
        return;
    const Lock whileStepping(m_isInHistory); // showing runs events, with the repeats of a held key
    m_form.thumbnailDrag().breakOff();       // of a thumbnail that is pressed, and may stand elsewhere afterwards
    if (Shift == CtrlKey)
        m_form.groupCommands().takeBack();
    else
        m_form.groupCommands().doAgain();
}

void Keyboard::backToThumbnails()
{
    if (!isPhotographOnShow())
        return;
    m_form.slideShow().StopSlideShow();
    m_form.pages().showCurrent();
}

void Keyboard::removeFromGroup()
{
    if (m_album.group.selected().empty())
        return;
    m_form.menus().mnuEdit_Click();
    if (isOpen(m_form.mnuEdit, m_form.mnuEditRemoveFromGroup))
        m_form.groupCommands().mnuThumbRemove_Click();
}

void Keyboard::renameGroup()
{
    m_form.menus().mnuFile_Click();
    if (isOpen(m_form.mnuFile, m_form.mnuFileRenameGroup))
        m_form.groupCommands().RenameAlbumGroup();
}

// ViewMode isn't reliable: it says "photograph" when one could not be opened and the page stays, and "thumbnails" after
// a right press on a group. While one photograph follows another, only the hidden scrollbar tells.
bool Keyboard::isPhotographOnShow() const
{
    return m_form.imgbox.Visible() || m_form.picVideoWindow.Visible() || !m_form.VScroll1.Visible();
}

int Keyboard::focusedRow() const
{
    for (int row = 0; row < GroupRows; ++row) {
        if (m_form.pctAlbumList(row).hasFocus())
            return row;
    }
    return -1;
}

int Keyboard::focusedCell() const
{
    for (int cell = 0; cell < Cells; ++cell) {
        const Image& image = m_form.imgThumbnail(cell);
        if (image.hasFocus() && image.Visible())
            return cell;
    }
    return -1;
}

int Keyboard::actingCell() const
{
    if (isPhotographOnShow())
        return -1;
    const int cell = focusedCell();
    return cell >= 0 ? cell : m_form.pages().currentCell();
}

void Keyboard::stepPhotograph(int step)
{
    if (step > 0 && isOpen(m_form.mnuView, m_form.mnuViewNext))
        m_form.photoDisplay().pctNext_Click();
    else if (step < 0 && isOpen(m_form.mnuView, m_form.mnuViewPrevious))
        m_form.photoDisplay().pctPrev_Click();
}

// Above the first and below the last row the list scrolls, and the focus stays.
void Keyboard::moveToRow(int row)
{
    if (row >= 0 && row < GroupRows)
        m_form.pctAlbumList(row).SetFocus();
    else if (const int arrow = row < 0 ? 0 : 2; m_form.pctArrows(arrow).Visible())
        m_form.groupList().pctArrows_Click(arrow);
}

void Keyboard::moveBy(int step)
{
    const bool vertical = std::abs(step) == Columns;
    if (const int row = focusedRow(); row >= 0 && vertical) {
        moveToRow(row + step / Columns);
        return;
    }
    if (isPhotographOnShow()) {
        stepPhotograph(step);
        return;
    }
    const int cell = actingCell();
    if (cell < 0 && std::abs(step) != Cells) {
        moveTo(m_form.pages().positionOf(0));
        return;
    }
    moveTo(placeFrom(m_form.pages().positionOf(std::max(cell, 0)), step));
}

// The result may be outside the group. Down and Page Down go to the last photograph if the next row or page is too
// short.
std::int32_t Keyboard::placeFrom(std::int32_t here, int step) const
{
    const std::int32_t last = m_album.group.GroupList.upperBound();
    const std::int32_t there = here + step;
    return there > last && step > 1 && (last - 1) / step > (here - 1) / step ? last : there;
}

// Turns to the page of the position and focuses its cell. Ignores positions outside the group.
void Keyboard::moveTo(std::int32_t position)
{
    if (isPhotographOnShow() || position < 1 || position > m_album.group.GroupList.upperBound())
        return;
    const std::int32_t page = (position - 1) / Cells + 1;
    if (page != m_form.pages().CurrentPage) {
        if (!m_form.VScroll1.Enabled())
            return; // key repeat while the page is still being drawn
        m_form.VScroll1.Value = page;
    }
    m_form.imgThumbnail((position - 1) % Cells).SetFocus();
}

// Moves the selected photographs as one block, as a drag would, and selects them again in their new place, so that the
// next key moves them further.
void Keyboard::moveSelected(int step)
{
    const GroupOnShow& group = m_album.group;
    const std::vector<std::int32_t> moved = group.selected();
    if (moved.empty() || isPhotographOnShow())
        return;
    const std::int32_t there = placeFrom(step < 0 ? moved.front() : moved.back(), step);
    if (there < 1 || there > group.GroupList.upperBound())
        return;
    std::vector<std::string> names;
    names.reserve(moved.size());
    for (const std::int32_t position : moved)
        names.push_back(group.GroupList(position));
    m_form.thumbnailDrag().moveSelected(step < 0 ? -there : there);
    moveTo(there);
    const auto length = static_cast<std::int32_t>(names.size()) - 1;
    const std::int32_t rear = step < 0 ? there + length : there - length;
    const int cell = there - m_form.pages().positionOf(0);
    // Selects nothing if the list could not be written or something else changed it meanwhile.
    if (cell < 0 || cell >= Cells || !standsAt(std::min(there, rear), names))
        return;
    m_form.selection().SetGroupListSelect(rear, NoKeys);
    press(cell, LeftButton, ShiftKey);
}

bool Keyboard::standsAt(std::int32_t position, const std::vector<std::string>& names) const
{
    const GroupOnShow& group = m_album.group;
    for (const std::string& name : names) {
        if (position > group.GroupList.upperBound() || group.GroupList(position++) != name)
            return false;
    }
    return true;
}

} // namespace trovarium
