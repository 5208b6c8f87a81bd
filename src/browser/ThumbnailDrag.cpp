// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/ThumbnailDrag.h"

#include "browser/DropGeometry.h"
#include "browser/GroupCommands.h"
#include "browser/GroupListPane.h"
#include "browser/Selection.h"
#include "browser/ThumbnailPages.h"
#include "browser/frmMain.h"
#include "platform/toolkit/Units.h"
#include "runtime/Lock.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "store/Log.h"

#include <cmath>

namespace trovarium {

namespace {

constexpr float DragThreshold = 200; // twips, in either direction

} // namespace

ThumbnailDrag::ThumbnailDrag(frmMain& form, Album& album)
    : WindowPart(form, album)
{
    on(form.imgThumbnail, &Image::MouseMove, this, &ThumbnailDrag::imgThumbnail_MouseMove);
    on(form.imgThumbnail, &Image::MouseUp, this, &ThumbnailDrag::imgThumbnail_MouseUp);
    on(form.KeyPress, this, &ThumbnailDrag::Form_KeyPress);
}

void ThumbnailDrag::press(float X, float Y)
{
    MouseIsDown = true;
    ThumbDownX = toInt32(X);
    ThumbDownY = toInt32(Y);
    DropTarget = NoTarget;
}

void ThumbnailDrag::breakOff()
{
    if (!MouseIsDown)
        return;
    endDrag();
    DropTarget = NoTarget;
    m_form.imgThumbnail.forEach([](int, Image& image) { image.MousePointer = DefaultPointer; });
}

void ThumbnailDrag::imgThumbnail_MouseMove(int Index, int Button, int /*Shift*/, float X, float Y)
try {
    if (ThumbMoveBusy)
        return;
    const Lock whileMoving(ThumbMoveBusy);
    if ((Button & LeftButton) == 0)
        breakOff(); // a menu or a dialog took the release
    Image& image = m_form.imgThumbnail(Index);
    image.ToolTipText = "Double-click to view. Right-click for menu. Drag-n-drop to rearrange.  [Media File: "
        + m_form.lbThumbnailFile(Index).Caption() + "]";
    if (!startsDrag(X, Y))
        return;
    ThumbnailDragging = true;
    const DragPointer pointer{toInt32(X / TwipsPerPixel + image.Left()), toInt32(Y / TwipsPerPixel + image.Top()),
        m_form.pctWindow.ScaleWidth(), m_form.pctWindow.ScaleHeight()};
    const int cell = aimAtCell(pointer);
    if (!ThumbnailDragging) // it ended while the page turned
        return;
    const Image& aim = m_form.imgThumbnail(cell);
    const Insertion insertion = insertionAt(pointer.x, aim.Left(), m_form.pages().positionOf(cell));
    m_form.shpDropPosition.Left = insertion.markLeft;
    DropPosition = insertion.position;
    m_form.shpDropPosition.Top = aim.Top();
    if (X / TwipsPerPixel + image.Left() >= 0)
        dragOverFrame(Index, X, Y);
    else
        dragOverList(Index, X, Y);
} catch (const Failure& failure) {
    logFailure(m_album, "imgThumbnail_MouseMove", failure);
}

// The distance only matters until the drag has started.
bool ThumbnailDrag::startsDrag(float X, float Y) const
{
    const bool near = std::abs(X - static_cast<float>(ThumbDownX)) <= DragThreshold
        && std::abs(Y - static_cast<float>(ThumbDownY)) <= DragThreshold;
    if (near && !ThumbnailDragging)
        return false;
    return MouseIsDown;
}

// Each mouse move past the upper or lower edge turns one page. Holding the mouse still there turns none.
int ThumbnailDrag::aimAtCell(const DragPointer& pointer)
{
    const Drop drop = dropAt(pointer, {m_form.pages().CurrentPage, m_album.group.GroupList.upperBound()});
    VScroll& bar = m_form.VScroll1;
    if (drop.turn == PageTurn::Forward && bar.Value() < bar.Max())
        bar.Value = bar.Value() + 1;
    else if (drop.turn == PageTurn::Back)
        bar.Value = bar.Value() - 1;
    return drop.cell;
}

void ThumbnailDrag::dragOverFrame(int Index, float X, float Y)
{
    Image& image = m_form.imgThumbnail(Index);
    Shape& frame = m_form.shpThumbnailSelect(DragFrame);
    image.MousePointer = DefaultPointer;
    DropTarget = ReorderTarget;
    m_form.shpDropPosition.Visible = true;
    frame.Visible = true;
    frame.Left = (image.Left() * TwipsPerPixel + X - static_cast<float>(ThumbDownX)) / TwipsPerPixel;
    frame.Top = (image.Top() * TwipsPerPixel + Y - static_cast<float>(ThumbDownY)) / TwipsPerPixel;
}

void ThumbnailDrag::dragOverList(int Index, float X, float Y)
{
    hideMarks();
    Image& image = m_form.imgThumbnail(Index);
    const int row = m_form.groupList().rowAt(X / TwipsPerPixel + image.Left() + m_form.pctWindow.Left(),
        Y / TwipsPerPixel + image.Top() + m_form.pctWindow.Top());
    if (row >= 0) {
        image.MousePointer = OwnPointer;
        DropTarget = row;
    } else {
        image.MousePointer = NoDropPointer;
        DropTarget = NoTarget;
    }
}

void ThumbnailDrag::imgThumbnail_MouseUp(int Index)
{
    FinishThumbnailDrag(true);
    m_form.imgThumbnail(Index).MousePointer = DefaultPointer;
}

void ThumbnailDrag::Form_KeyPress(int KeyAscii)
{
    if (KeyAscii == EscapeKey)
        breakOff();
}

void ThumbnailDrag::FinishThumbnailDrag(bool Finish)
{
    m_form.MousePointer = HourglassPointer;
    if (DropTarget >= 0 && ThumbnailDragging)
        m_form.groupCommands().AddToGroup(m_form.lbAlbumList(DropTarget).Caption() + ".lst");
    if (DropTarget == ReorderTarget && Finish && ThumbnailDragging) {
        endDrag();
        moveSelected(DropPosition);
    }
    endDrag();
    m_form.MousePointer = DefaultPointer;
}

void ThumbnailDrag::moveSelected(std::int32_t position)
{
    m_form.groupCommands().reorder(position);
    m_form.selection().SetGroupListSelect(-1, NoKeys);
    m_form.pages().reload();
}

void ThumbnailDrag::endDrag()
{
    hideMarks();
    ThumbnailDragging = false;
    MouseIsDown = false;
}

void ThumbnailDrag::hideMarks()
{
    m_form.shpDropPosition.Visible = false;
    m_form.shpThumbnailSelect(DragFrame).Visible = false;
}

} // namespace trovarium
