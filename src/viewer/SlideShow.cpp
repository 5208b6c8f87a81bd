// SPDX-License-Identifier: GPL-3.0-or-later

#include "viewer/SlideShow.h"

#include "browser/Selection.h"
#include "browser/ThumbnailPages.h"
#include "browser/frmMain.h"
#include "platform/system/IdleInhibition.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Units.h"
#include "store/Album.h"
#include "store/Log.h"
#include "viewer/AudioControls.h"
#include "viewer/PhotoDisplay.h"
#include "viewer/frmFullScreen.h"

namespace trovarium {

SlideShow::SlideShow(frmMain& form, Album& album)
    : WindowPart(form, album)
{
    on(form.cmdSlideshow.Click, this, &SlideShow::cmdSlideshow_Click);
    on(form.mnuViewSlideshow.Click, this, &SlideShow::mnuViewSlideshow_Click);
    on(form.tmrSlideShow.Tick, this, &SlideShow::tmrSlideShow_Timer);
}

SlideShow::~SlideShow() = default;

void SlideShow::cmdSlideshow_Click()
try {
    m_form.cmdSlideshow.Picture = m_form.pctAlbumList(BrightBar).Picture();
    m_form.selection().SetGroupListSelect(-1, NoKeys);
    m_form.dialogs().showSlideShow();
    m_form.cmdSlideshow.Picture = m_form.pctAlbumList(DarkBar).Picture();
} catch (const Failure& failure) {
    logFailure(m_album, "cmdSlideshow_Click", failure);
}

void SlideShow::tmrSlideShow_Timer()
{
    if (m_album.view.InfoEditing) { // an edit began in events during a step
        StopSlideShow();
        return;
    }
    frmFullScreen* screen = fullScreen();
    if (screen != nullptr ? screen->PhotoRequest(RightKey, NoKeys) : m_form.photoDisplay().NextPhoto())
        return;
    StopSlideShow();
    m_form.imgbox.Visible = false;
    m_form.picVideoWindow.Visible = false;
    if (screen != nullptr)
        screen->PhotoRequest(EscapeKey, NoKeys);
    m_form.pages().showCurrent();
}

// Looked up at each tick, since it may open and close during the show.
frmFullScreen* SlideShow::fullScreen() const
{
    const Desktop& desktop = m_form.desktop();
    for (int i = 0; i < desktop.formsCount(); ++i) {
        if (desktop.formsItem(i).Name() == "frmFullScreen")
            return dynamic_cast<frmFullScreen*>(&desktop.formsItem(i));
    }
    return nullptr;
}

void SlideShow::StopSlideShow()
{
    m_album.view.SlideShowRunning = false;
    m_form.audio().StopWav();
    m_form.audio().StopMidi();
    goOn(false);
}

void SlideShow::letScreenSleep()
{
    m_screenOn.reset();
}

void SlideShow::goOn(bool running)
{
    m_form.tmrSlideShow.Enabled = running;
    if (!running)
        m_screenOn.reset();
    else if (m_screenOn == nullptr)
        m_screenOn = std::make_unique<IdleInhibition>("Slide show");
}

} // namespace trovarium
