#pragma once

namespace trovarium {

struct Album;
class frmMain;

// Opens the full screen from the main window.
class FullScreen {
public:
    FullScreen(frmMain& form, Album& album);

    void cmdFullScreen_Click();
    void mnuViewFullscreen_Click();

private:
    frmMain& m_form;
    Album& m_album;
};

} // namespace trovarium
