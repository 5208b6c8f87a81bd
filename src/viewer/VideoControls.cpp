// SPDX-License-Identifier: GPL-3.0-or-later

#include "viewer/VideoControls.h"

#include "browser/Selection.h"
#include "browser/frmMain.h"
#include "platform/media/MediaService.h"
#include "platform/system/IdleInhibition.h"
#include "platform/toolkit/Desktop.h"
#include "runtime/Failure.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "store/Album.h"

#include <utility>

namespace trovarium {

namespace {

constexpr int ClippedChild = 0x6000000; // window style: clips siblings and children
constexpr int EndWait = 100;            // milliseconds that a tick waits for the end of the film
constexpr int LongPause = 240;          // ticks of a paused film, a minute, after which the screen may go off
constexpr float OutOfSight = 8;         // in screen sizes: where a film is moved before it is closed

} // namespace

VideoControls::VideoControls(Desktop& desktop, Album& album)
    : m_desktop(desktop)
    , m_album(album)
{
}

VideoControls::~VideoControls() = default;

void VideoControls::attach(frmMain& form)
{
    m_form = &form;
    on(form.cmdVideo, &Button::Click, this, &VideoControls::cmdVideo_Click);
    on(form.hscVideo.Scroll, this, &VideoControls::hscVideo_Scroll);
    on(form.tmrVideo.Tick, this, &VideoControls::tmrVideo_Timer);
}

void VideoControls::detach(const frmMain& form)
{
    if (m_form == &form)
        m_form = nullptr;
}

void VideoControls::OpenVideo(std::string_view Path, PictureBox& Window)
try {
    const std::string path(Path); // the caller's text may change in the events below
    if (VideoRate == 0)
        VideoRate = 1;
    m_returns = false;
    CloseVideo();
    VideoFile = path;
    m_graph = m_desktop.media().newFilgraphManager();
    m_graph->RenderFile(VideoFile);
    showIn(Window);
    m_graph->put_Rate(VideoRate);
    takeDuration();
    VideoStartPosition = 0;
    if (m_form != nullptr)
        m_form->hscVideo.Value = 0;
    // Only called because it may fail: then the buttons stay as they are.
    m_graph->get_Rate();
    enableButtons(true, false);
} catch (const Failure&) {
    // The window stays black, the controls don't change.
}

// The numbers are passed unconverted and taken as pixels: on a form with twips the film is 15 times too large, and
// clipped.
void VideoControls::showIn(const PictureBox& window)
{
    m_graph->put_WindowStyle(ClippedChild);
    m_graph->put_Top(0);
    m_graph->put_Left(0);
    m_graph->put_Width(toInt32(window.Width()));
    m_graph->put_Height(toInt32(window.Height()));
    m_graph->put_Owner(window.filmSurface());
}

void VideoControls::takeDuration()
{
    VideoDuration = roundToPlaces(m_graph->get_Duration(), 1);
    if (m_form == nullptr)
        return;
    m_form->lbVideo.Caption = numberText(VideoDuration) + " sec";
    m_form->lbVideo.ForeColor = std::nullopt;
    m_form->hscVideo.Max = toInt16(VideoDuration);
}

// Events run with the timer off, so that no tick sees a film that is being closed. They may open another film, which is
// then closed too.
void VideoControls::CloseVideo()
try {
    stopTicking();
    m_desktop.DoEvents();
    if (m_graph == nullptr)
        return;
    stopTicking();
    m_graph->Stop();
    m_graph->put_Left(toInt32(m_desktop.Screen().Width() * OutOfSight));
    m_graph->put_Height(toInt32(m_desktop.Screen().Height() * OutOfSight));
    m_graph->put_Owner(nullptr);
    m_graph.reset();
} catch (const Failure&) {
    // Ignored: the next film replaces this one.
}

void VideoControls::stopTicking()
{
    VideoPlaying = false;
    m_screenOn.reset();
    if (m_form != nullptr)
        m_form->tmrVideo.Enabled = false;
}

void VideoControls::VideoCommand(std::string_view Command)
try {
    const std::string command = upper(Command);
    if (m_graph == nullptr)
        return;
    if (std::exchange(m_returns, false) && m_form != nullptr)
        attempt([&] { showIn(m_form->picVideoWindow); });
    if (command == "PLAY")
        play();
    else if (command == "PAUSE")
        pause();
    else if (command == "STOP")
        stop();
} catch (const Failure&) {
    // Ends silently, like every operation here.
}

void VideoControls::returnToMainWindow()
{
    m_returns = true;
}

// Restarts a film that has ended, continues one that was paused.
void VideoControls::play()
{
    if (roundHalfEven(m_graph->get_CurrentPosition()) < VideoStartPosition
        || roundHalfEven(m_graph->get_CurrentPosition()) == roundHalfEven(VideoDuration))
        m_graph->put_CurrentPosition(VideoStartPosition);
    m_graph->Run();
    VideoPlaying = true;
    if (m_form != nullptr)
        m_form->tmrVideo.Enabled = true;
    enableButtons(false, true);
}

void VideoControls::pause()
{
    m_graph->Pause();
    VideoPlaying = false;
    enableButtons(true, true);
}

void VideoControls::stop()
{
    m_graph->Stop();
    VideoPlaying = false;
    m_screenOn.reset();
    m_graph->put_CurrentPosition(0);
    if (m_form != nullptr)
        m_form->hscVideo.Value = 0;
    enableButtons(true, false);
}

// A button that gets disabled gives the focus to the one that undoes its action.
void VideoControls::enableButtons(bool play, bool stop)
{
    if (m_form == nullptr)
        return;
    Button& lit = m_form->cmdVideo(play ? 0 : 1);
    lit.Enabled = true;
    const bool enabled[] = {play, !play, stop};
    m_form->cmdVideo.forEach([&](int index, Button& button) {
        if (!enabled[index] && button.hasFocus())
            lit.SetFocus();
        button.Enabled = enabled[index];
    });
}

void VideoControls::SeekVideo(std::int16_t& Seconds)
try {
    if (Seconds < 0)
        Seconds = 0;
    if (Seconds > VideoDuration)
        Seconds = toInt16(VideoDuration);
    if (m_graph != nullptr)
        m_graph->put_CurrentPosition(Seconds);
    VideoCommand("pause");
} catch (const Failure&) {
    // Ends silently, like every operation here.
}

// Not before the first tick: who takes a single frame of a film for its thumbnail doesn't watch it.
void VideoControls::keepScreenOn()
{
    m_pausedTicks = VideoPlaying ? 0 : m_pausedTicks + 1;
    if (VideoPlaying && m_screenOn == nullptr)
        m_screenOn = std::make_unique<IdleInhibition>("Film");
    else if (m_pausedTicks >= LongPause)
        m_screenOn.reset();
}

void VideoControls::UpdateVideoPosition()
try {
    keepScreenOn();
    if (!VideoPlaying || m_graph == nullptr || m_form == nullptr)
        return;
    if (m_graph->WaitForCompletion(EndWait) != 0) {
        enableButtons(true, false);
        stopTicking();
        return;
    }
    const double position = roundToPlaces(m_graph->get_CurrentPosition(), 2);
    if (position < m_form->hscVideo.Max())
        m_form->hscVideo.Value = toInt32(position);
} catch (const Failure&) {
    // Ends silently, like every operation here.
}

bool VideoControls::EnableVideo(bool Enable)
{
    if (m_form == nullptr)
        return false;
    m_form->cmdVideo.forEach([&](int, Button& button) {
        if (!Enable && button.hasFocus())
            m_form->pctWindow.SetFocus();
        button.Enabled = Enable;
    });
    m_form->hscVideo.Enabled = Enable;
    return true;
}

// If the film isn't visible, this opens the current photograph, which starts it. The cell ignores the current page, so
// from page 2 on another photograph opens, or none: this is intended.
void VideoControls::cmdVideo_Click(int Index)
{
    if (Index == 0 && !m_form->picVideoWindow.Visible())
        m_form->selection().imgThumbnail_DblClick(m_album.view.CurrentIndex - 1);
    else if (Index == 0)
        VideoCommand("play");
    else if (Index == 1)
        VideoCommand("pause");
    else if (Index == 2)
        VideoCommand("stop");
}

void VideoControls::hscVideo_Scroll()
{
    auto seconds = static_cast<std::int16_t>(m_form->hscVideo.Value());
    SeekVideo(seconds);
}

void VideoControls::tmrVideo_Timer()
{
    UpdateVideoPosition();
}

} // namespace trovarium
