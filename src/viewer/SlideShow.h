#pragma once

namespace trovarium {

struct Album;
class frmMain;

// The walk through a group by a timer. Its dialog has not landed: until then the button stands disabled and
// only the end of a show, which is also called outside any, has work to do.
class SlideShow {
public:
    SlideShow(frmMain& form, Album& album);

    bool isAvailable() const;
    void cmdSlideshow_Click();
    void mnuViewSlideshow_Click();
    void StopSlideShow();

    bool ShowSelectedOnly = false; // read by NextPhoto

private:
    frmMain& m_form;
    Album& m_album;
};

} // namespace trovarium
