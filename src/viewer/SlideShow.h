#pragma once

#include "browser/WindowPart.h"

namespace trovarium {

class frmFullScreen;

// The walk through a group by a timer, in the main window or in full screen. It has no engine of its own: a tick
// takes the step that a key takes, and the show is over when there is no next photograph.
class SlideShow : public WindowPart {
public:
    SlideShow(frmMain& form, Album& album);

    void cmdSlideshow_Click();
    void tmrSlideShow_Timer();
    void StopSlideShow(); // also called outside any show

    bool ShowSelectedOnly = false; // read by NextPhoto

private:
    frmFullScreen* fullScreen() const; // null when none is up
};

} // namespace trovarium
