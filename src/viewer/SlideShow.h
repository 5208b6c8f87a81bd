// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/WindowPart.h"

#include <memory>

namespace trovarium {

class IdleInhibition;
class frmFullScreen;

// Steps through a group by a timer, in the main window or in full screen. A tick does what the key for the next
// photograph does; without a next one the show ends.
class SlideShow : public WindowPart {
public:
    SlideShow(frmMain& form, Album& album);
    ~SlideShow();

    void cmdSlideshow_Click();
    void mnuViewSlideshow_Click() { cmdSlideshow_Click(); }
    void tmrSlideShow_Timer();
    void goOn(bool running); // starts or stops the timer; the screen stays on while it runs
    void StopSlideShow();    // also called outside any show
    void letScreenSleep();   // until it goes on

    bool ShowSelectedOnly = false; // read by NextPhoto

private:
    std::unique_ptr<IdleInhibition> m_screenOn;

    frmFullScreen* fullScreen() const; // null when none is up
};

} // namespace trovarium
