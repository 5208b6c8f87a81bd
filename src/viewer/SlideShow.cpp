#include "viewer/SlideShow.h"

#include "browser/Selection.h"
#include "browser/frmMain.h"
#include "store/Album.h"
#include "store/Log.h"
#include "viewer/AudioControls.h"

namespace trovarium {

SlideShow::SlideShow(frmMain& form, Album& album)
    : m_form(form)
    , m_album(album)
{
    on(form.cmdSlideshow.Click, this, &SlideShow::cmdSlideshow_Click);
    on(form.mnuViewSlideshow.Click, this, &SlideShow::mnuViewSlideshow_Click);
}

bool SlideShow::isAvailable() const
{
    return static_cast<bool>(m_form.dialogs().showSlideShow);
}

void SlideShow::cmdSlideshow_Click()
try {
    if (!isAvailable())
        return;
    m_form.cmdSlideshow.Picture = m_form.pctAlbumList(10).Picture();
    m_form.selection().SetGroupListSelect(-1, 0);
    m_form.dialogs().showSlideShow();
    m_form.cmdSlideshow.Picture = m_form.pctAlbumList(11).Picture();
} catch (const Failure& failure) {
    logFailure(m_album, "cmdSlideshow_Click", failure);
}

void SlideShow::mnuViewSlideshow_Click()
{
    cmdSlideshow_Click();
}

void SlideShow::StopSlideShow()
{
    m_album.view.SlideShowRunning = false;
    m_form.audio().StopWav();
    m_form.audio().StopMidi();
    m_form.tmrSlideShow.Enabled = false;
}

} // namespace trovarium
