#pragma once

namespace trovarium {

struct Album;
class frmFullScreen;
class frmMain;

// The walk through a group by a timer, in the main window or in full screen. It has no engine of its own: a tick
// takes the step that a key takes, and the show is over when there is no next photograph.
class SlideShow {
public:
    SlideShow(frmMain& form, Album& album);

    void cmdSlideshow_Click();
    void mnuViewSlideshow_Click();
    void tmrSlideShow_Timer();
    void StopSlideShow(); // also called outside any show

    bool ShowSelectedOnly = false; // read by NextPhoto

private:
    frmFullScreen* fullScreen() const; // null when none is up

    frmMain& m_form;
    Album& m_album;
};

} // namespace trovarium
