// SPDX-License-Identifier: GPL-3.0-or-later

#include "viewer/ZoomAndPan.h"

#include "browser/ThumbnailPages.h"
#include "browser/frmMain.h"
#include "platform/toolkit/Desktop.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "store/Log.h"
#include "viewer/PhotoDisplay.h"

#include <cstdlib>

namespace trovarium {

ZoomAndPan::ZoomAndPan(frmMain& form, Album& album)
    : WindowPart(form, album)
{
    on(form.cmdZoomIn.Click, this, &ZoomAndPan::cmdZoomIn_Click);
    on(form.cmdZoomOut.Click, this, &ZoomAndPan::cmdZoomOut_Click);
    on(form.mnuViewEnlarge.Click, this, &ZoomAndPan::mnuViewEnlarge_Click);
    on(form.mnuViewReduce.Click, this, &ZoomAndPan::mnuViewReduce_Click);
    on(form.imgbox.Wheel, this, &ZoomAndPan::imgbox_Wheel);
    on(form.pctWindow.Wheel, this, &ZoomAndPan::pctWindow_Wheel);
    on(form.imgbox.MouseDown, this, &ZoomAndPan::imgbox_MouseDown);
    on(form.imgbox.MouseMove, this, &ZoomAndPan::imgbox_MouseMove);
    on(form.imgbox.MouseUp, this, &ZoomAndPan::imgbox_MouseUp);
}

void ZoomAndPan::cmdZoomIn_Click()
try {
    step(m_form.cmdZoomIn, +1);
} catch (const Failure& failure) {
    logFailure(m_album, "cmdZoomIn_Click", failure);
}

void ZoomAndPan::cmdZoomOut_Click()
try {
    step(m_form.cmdZoomOut, -1);
} catch (const Failure& failure) {
    logFailure(m_album, "cmdZoomOut_Click", failure);
}

// From the thumbnails the first click only opens the photograph. Films aren't zoomed.
void ZoomAndPan::step(PictureButton& button, int direction)
{
    ViewState& view = m_album.view;
    button.Picture = m_form.pctBrightSmall.Picture();
    if (view.ViewMode == ViewThumbnails) {
        m_form.photoDisplay().openFromThumbnails();
        view.ViewMode = ViewPhoto;
    } else if (!view.IsVideo) {
        const int next = view.ZoomLevel + direction;
        // A level beyond 16 bits fails and leaves the picture hidden.
        m_form.imgbox.Visible = false;
        // There is no level 0: 1/1 is +1 on the way down and -1 on the way up.
        view.ZoomLevel = toInt16(next == 0 ? 2 * direction : next);
        showAtZoomLevel();
    }
    button.Picture = m_form.pctDarkSmall.Picture();
}

void ZoomAndPan::showAtZoomLevel()
{
    const std::int16_t level = m_album.view.ZoomLevel;
    const auto factor = static_cast<float>(std::abs(level));
    Image& imgbox = m_form.imgbox;
    const PictureBox& holder = m_form.pctBox(0);
    if (level >= 0) {
        m_form.lbZoom.Caption = "Zoom  " + formatWhole(factor) + "/1";
        imgbox.Width = holder.Width() * factor;
        imgbox.Height = holder.Height() * factor;
    } else {
        m_form.lbZoom.Caption = "Zoom  1/" + formatWhole(factor);
        imgbox.Width = holder.Width() / factor;
        imgbox.Height = holder.Height() / factor;
    }
    imgbox.Left = (m_form.pctWindow.ScaleWidth() - imgbox.Width()) * 0.5F;
    imgbox.Top = (m_form.pctWindow.ScaleHeight() - imgbox.Height()) * 0.5F;
    m_form.pages().ShowThumbnailBoxes(false);
    imgbox.Visible = true;
}

// A picture that is too large for the frame at every level isn't in it.
void ZoomAndPan::toggleNaturalSize()
{
    ViewState& view = m_album.view;
    const PictureBox& holder = m_form.pctBox(0);
    const std::int16_t reduction = reductionThatFits(
        holder.Width(), holder.Height(), m_form.pctWindow.ScaleWidth(), m_form.pctWindow.ScaleHeight());
    if (!m_form.imgbox.Visible() || view.IsVideo || reduction == 0)
        return;
    const bool isNatural = std::abs(view.ZoomLevel) == 1;
    view.ZoomLevel = static_cast<std::int16_t>(isNatural ? -reduction : -1);
    showAtZoomLevel();
}

// Follows the menu's entries, as keys do. Without a photograph the frame is that of the thumbnails or a clip.
void ZoomAndPan::imgbox_Wheel(int Notches)
{
    const Menu& entry = Notches > 0 ? m_form.mnuViewEnlarge : m_form.mnuViewReduce;
    if (!m_form.imgbox.Visible() || !m_form.mnuView.Enabled() || !entry.Enabled())
        return;
    for (int notch = 0; notch < std::abs(Notches); ++notch)
        Notches > 0 ? cmdZoomIn_Click() : cmdZoomOut_Click();
}

void ZoomAndPan::imgbox_MouseDown(int /*Button*/, int /*Shift*/, float X, float Y)
try {
    ImageDragging = true;
    DragStartX = X;
    DragStartY = Y;
    m_form.imgbox.MousePointer = FourWayPointer;
} catch (const Failure& failure) {
    logFailure(m_album, "imgBox_MouseDown", failure);
}

void ZoomAndPan::imgbox_MouseMove(int /*Button*/, int /*Shift*/, float X, float Y)
try {
    if (!ImageDragging)
        return;
    // The start point stays the same: X and Y are relative to the picture, which follows the mouse.
    m_form.imgbox.Top = m_form.imgbox.Top() + (Y - DragStartY) / TwipsPerPixel;
    m_form.imgbox.Left = m_form.imgbox.Left() + (X - DragStartX) / TwipsPerPixel;
} catch (const Failure& failure) {
    logFailure(m_album, "imgBox_MouseMove", failure);
}

void ZoomAndPan::imgbox_MouseUp(int /*Button*/, int /*Shift*/, float /*X*/, float /*Y*/)
try {
    ImageDragging = false;
    m_form.imgbox.MousePointer = DefaultPointer;
    m_form.desktop().returnToText(); // typing continues after a look at a detail
} catch (const Failure& failure) {
    logFailure(m_album, "imgBox_MouseUp", failure);
}

} // namespace trovarium
