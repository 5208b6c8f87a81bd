// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/WindowPart.h"

namespace trovarium {

class PictureButton;

// Zooms the picture in the frame by whole-number ratios, and drags it. The original stays in pctBox(0) and is never
// decoded again.
class ZoomAndPan : public WindowPart {
public:
    ZoomAndPan(frmMain& form, Album& album);

    void cmdZoomIn_Click();
    void cmdZoomOut_Click();
    void mnuViewEnlarge_Click() { cmdZoomIn_Click(); }
    void mnuViewReduce_Click() { cmdZoomOut_Click(); }
    void toggleNaturalSize(); // 1/1, or back to what fits the frame

    // Up enlarges, one step a notch.
    void imgbox_Wheel(int Notches);
    void pctWindow_Wheel(int Notches) { imgbox_Wheel(Notches); }
    // X and Y in twips, relative to the picture's current position.
    void imgbox_MouseDown(int Button, int Shift, float X, float Y);
    void imgbox_MouseMove(int Button, int Shift, float X, float Y);
    void imgbox_MouseUp(int Button, int Shift, float X, float Y);

private:
    void step(PictureButton& button, int direction);
    void showAtZoomLevel();

    bool ImageDragging = false;
    float DragStartX = 0;
    float DragStartY = 0;
};

} // namespace trovarium
