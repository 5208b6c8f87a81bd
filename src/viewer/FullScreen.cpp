#include "viewer/FullScreen.h"

#include "browser/WindowPlan.h"
#include "browser/frmMain.h"
#include "store/Album.h"
#include "store/Log.h"
#include "viewer/PhotoDisplay.h"

namespace trovarium {

FullScreen::FullScreen(frmMain& form, Album& album)
    : m_form(form)
    , m_album(album)
{
    on(form.cmdFullScreen.Click, this, &FullScreen::cmdFullScreen_Click);
    on(form.mnuViewFullscreen.Click, this, &FullScreen::mnuViewFullscreen_Click);
}

void FullScreen::cmdFullScreen_Click()
try {
    if (m_album.view.ViewMode == ViewThumbnails) {
        m_form.photoDisplay().openFromThumbnails();
        m_album.view.ViewMode = ViewPhoto;
    }
    m_form.cmdFullScreen.Picture = m_form.pctAlbumList(BrightBar).Picture();
    m_form.dialogs().showFullScreen();
    m_form.cmdFullScreen.Picture = m_form.pctAlbumList(DarkBar).Picture();
    m_album.view.ViewMode = ViewFullScreen;
} catch (const Failure& failure) {
    logFailure(m_album, "cmdFullScreen_Click", failure);
}

void FullScreen::mnuViewFullscreen_Click()
{
    cmdFullScreen_Click();
}

} // namespace trovarium
