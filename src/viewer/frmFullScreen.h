#pragma once

#include "platform/toolkit/Form.h"
#include "platform/toolkit/Image.h"
#include "platform/toolkit/PictureBox.h"

namespace trovarium {

struct Album;
class frmMain;

// A black window over the whole screen that shows the current item at the largest size that fits. It shows
// what the main window holds in pctBox(0), and steps by way of the main window.
class frmFullScreen : public Form {
public:
    frmFullScreen(Desktop& desktop, Album& album, frmMain& main);

    Image imgFullScreen{this,
        {.Name = "imgFullScreen",
            .ToolTipText = "Use arrow keys for PREV/NEXT picture. Click to return to main screen.",
            .Visible = false}};
    PictureBox picVideoWindowFS{this, {.Name = "picVideoWindowFS", .Visible = false}};

    void PhotoRequest(int KeyCode, int Shift, bool& Result);
    void ShowPhoto(bool& Result); // Result is never set

    void Form_Load();
    void Form_Unload();
    void Form_KeyDown(int KeyCode, int Shift);
    void Form_Click();
    void imgFullScreen_Click();

private:
    Album& m_album;
    frmMain& m_main;
};

} // namespace trovarium
