// SPDX-License-Identifier: GPL-3.0-or-later

#include "viewer/frmFullScreen.h"

#include "browser/FileTransfer.h"
#include "browser/frmMain.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Units.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "store/Log.h"
#include "viewer/AudioControls.h"
#include "viewer/PhotoDisplay.h"
#include "viewer/SlideShow.h"
#include "viewer/VideoControls.h"

namespace trovarium {

namespace {

// In twips.
constexpr float ParkedBeyondScreen = 20;
constexpr float VideoMargin = 100;

} // namespace

frmFullScreen::frmFullScreen(Desktop& desktop, Album& album, frmMain& main)
    : Form(desktop,
        {.Name = "frmFullScreen",
            .Caption = "Trovarium",
            .Width = desktop.Screen().Width(),
            .Height = desktop.Screen().Height(),
            .Border = BorderKind::None,
            .CloseBox = false,
            .KeyPreview = true})
    , m_album(album)
    , m_main(main)
{
    BackColor = Black;
    imgFullScreen.Stretch = true;
    picVideoWindowFS.BackColor = Black;
    on(Load, this, &frmFullScreen::Form_Load);
    on(Unload, this, &frmFullScreen::Form_Unload);
    on(KeyDown, this, &frmFullScreen::Form_KeyDown);
    on(Click, this, &frmFullScreen::Form_Click);
    on(imgFullScreen.Click, this, &frmFullScreen::imgFullScreen_Click);
    on(MouseMove, this, &frmFullScreen::Form_MouseMove);
    on(imgFullScreen.MouseMove, this, &frmFullScreen::Form_MouseMove);
    on(picVideoWindowFS.MouseMove, this, &frmFullScreen::Form_MouseMove);
    on(tmrPointer.Tick, this, &frmFullScreen::tmrPointer_Timer);
    on(picVideoWindowFS.KeyDown, this, &frmFullScreen::picVideoWindowFS_KeyDown);
    on(picVideoWindowFS.Click, this, &frmFullScreen::picVideoWindowFS_Click);
}

void frmFullScreen::Form_Load()
try {
    ShowPhoto();
} catch (const Failure& failure) {
    logFailure(m_album, "Form_Load", failure);
}

void frmFullScreen::Form_Unload()
{
    if (m_album.view.IsVideo)
        m_main.video().returnToMainWindow();
}

void frmFullScreen::ShowPhoto()
try {
    if (!isLoaded()) // closed in events during the step: don't start a film that nobody sees
        return;
    const float screenWidth = desktop().Screen().Width();
    const float screenHeight = desktop().Screen().Height();
    imgFullScreen.Visible = false;
    picVideoWindowFS.Left = screenWidth + ParkedBeyondScreen;
    if (m_album.view.IsVideo) {
        picVideoWindowFS.Left = VideoMargin;
        picVideoWindowFS.Top = VideoMargin;
        picVideoWindowFS.Width = screenWidth - 2 * VideoMargin;
        picVideoWindowFS.Height = screenHeight - 2 * VideoMargin;
        m_main.video().OpenVideo(m_album.view.CurrentPhotoFile, picVideoWindowFS);
        m_main.video().VideoCommand("play");
        picVideoWindowFS.Visible = true;
        return;
    }
    const PictureBox& holder = m_main.pctBox(0);
    const float pictureRatio = divideSingle(holder.Width(), holder.Height());
    const float screenRatio = divideSingle(screenWidth, screenHeight);
    if (pictureRatio < screenRatio) {
        imgFullScreen.Height = screenHeight;
        imgFullScreen.Width = imgFullScreen.Height() * pictureRatio;
    } else {
        imgFullScreen.Width = screenWidth;
        imgFullScreen.Height = divideSingle(imgFullScreen.Width(), pictureRatio);
    }
    imgFullScreen.Left = (screenWidth - imgFullScreen.Width()) * 0.5F;
    imgFullScreen.Top = (screenHeight - imgFullScreen.Height()) * 0.5F;
    imgFullScreen.Picture = holder.Picture();
    desktop().DoEvents();
    imgFullScreen.Visible = true;
} catch (const Failure& failure) {
    logFailure(m_album, "ShowPhoto", failure);
}

// Restores the slide timer after the request: Escape during a show ends sound and music, but the pictures continue in
// the main window.
void frmFullScreen::Form_KeyDown(int KeyCode, int Shift)
try {
    m_main.video().VideoCommand("stop");
    const bool running = m_main.tmrSlideShow.Enabled();
    m_main.tmrSlideShow.Enabled = false;
    PhotoRequest(KeyCode, Shift);
    m_main.slideShow().goOn(running);
} catch (const Failure& failure) {
    logFailure(m_album, "Form_KeyDown", failure);
}

bool frmFullScreen::PhotoRequest(int KeyCode, int Shift)
try {
    bool isShown = false;
    switch (KeyCode) {
    case EnterKey:
    case SpaceKey:
    case RightKey:
    case DownKey:
        isShown = m_main.photoDisplay().NextPhoto();
        ShowPhoto();
        break;
    case LeftKey:
    case UpKey:
        isShown = m_main.photoDisplay().PrevPhoto();
        ShowPhoto();
        break;
    case EscapeKey:
        m_main.slideShow().StopSlideShow();
        unload();
        break;
    case AKey:
        m_main.audio().cmdPlayAudioClip_Click(0);
        break;
    case CKey:
        if (Shift == CtrlKey)
            m_main.fileTransfer().copyPhotographOnShow();
        break;
    default:
        break;
    }
    return isShown;
} catch (const Failure& failure) {
    logFailure(m_album, "Form_KeyDown", failure);
    return false;
}

void frmFullScreen::Form_Click()
try {
    m_album.view.ViewMode = ViewPhoto;
    picVideoWindowFS.Left = Width() + ParkedBeyondScreen;
    m_main.slideShow().StopSlideShow();
    unload();
} catch (const Failure& failure) {
    logFailure(m_album, "Form_Click", failure);
}

// Leaves ViewMode at full screen.
void frmFullScreen::imgFullScreen_Click()
try {
    m_main.slideShow().StopSlideShow();
    unload();
} catch (const Failure& failure) {
    logFailure(m_album, "imgFullScreen_Click", failure);
}

void frmFullScreen::Form_MouseMove(int /*Button*/, int /*Shift*/, float /*X*/, float /*Y*/)
{
    MousePointer = DefaultPointer;
    tmrPointer.restart();
}

void frmFullScreen::tmrPointer_Timer()
{
    if (!desktop().isAsking())
        MousePointer = HiddenPointer;
}

} // namespace trovarium
