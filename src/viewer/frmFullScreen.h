// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Form.h"
#include "platform/toolkit/Image.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/Timer.h"

namespace trovarium {

struct Album;
class frmMain;

// A black window over the whole screen that shows the current photograph or film as large as it fits. The picture comes
// from the main window's pctBox(0), which also does the stepping.
class frmFullScreen : public Form {
public:
    frmFullScreen(Desktop& desktop, Album& album, frmMain& main);

    Image imgFullScreen{this,
        {.Name = "imgFullScreen",
            .ToolTipText = "Use arrow keys for PREV/NEXT picture. Click to return to main screen.",
            .Visible = false}};
    PictureBox picVideoWindowFS{this, {.Name = "picVideoWindowFS", .Visible = false}};
    Timer tmrPointer{this, {.Name = "tmrPointer", .Interval = 2000, .Enabled = true}}; // without the mouse

    bool PhotoRequest(int KeyCode, int Shift); // true if another photograph or film was shown
    void ShowPhoto();

    void Form_Load();
    void Form_Unload();
    void Form_KeyDown(int KeyCode, int Shift);
    void picVideoWindowFS_KeyDown(int KeyCode, int Shift) { Form_KeyDown(KeyCode, Shift); }
    void Form_Click();
    void picVideoWindowFS_Click() { Form_Click(); }
    void imgFullScreen_Click();
    void Form_MouseMove(int Button, int Shift, float X, float Y);
    void tmrPointer_Timer();

private:
    Album& m_album;
    frmMain& m_main;
};

} // namespace trovarium
