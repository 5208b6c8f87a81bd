// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "check/VideoPlayer.h"

#include <cstdint>
#include <memory>
#include <string>

namespace trovarium {

struct Album;
class Desktop;
class FilgraphManager;
class IdleInhibition;
class frmMain;

// The one film of the program, and the main window's controls for it. It exists before and after the main window; the
// controls are left out then. Every operation ends silently at its first failure.
class VideoControls : public VideoPlayer {
public:
    VideoControls(Desktop& desktop, Album& album);
    ~VideoControls() override;

    void attach(frmMain& form);
    void detach(const frmMain& form); // has no effect if another one was attached meanwhile

    void OpenVideo(std::string_view Path, PictureBox& Window) override;
    void CloseVideo();
    void VideoCommand(std::string_view Command) override;
    void returnToMainWindow();             // with the next command, since the film's own window was closed
    void SeekVideo(std::int16_t& Seconds); // clamped to the film, which is then paused
    void UpdateVideoPosition();
    bool EnableVideo(bool Enable); // false without a main window

    void cmdVideo_Click(int Index); // 0 plays, 1 pauses, 2 stops
    void hscVideo_Scroll();
    void tmrVideo_Timer();

private:
    void showIn(const PictureBox& window);
    void takeDuration();
    void play();
    void pause();
    void stop();
    void stopTicking();
    void keepScreenOn();
    void enableButtons(bool play, bool stop); // enables either play or pause, and stop

    Desktop& m_desktop;
    Album& m_album;
    frmMain* m_form = nullptr;
    std::unique_ptr<FilgraphManager> m_graph; // kept even if its file could not be opened; every call then fails
    std::string VideoFile;
    double VideoDuration = 0; // seconds, to one decimal place
    double VideoStartPosition = 0;
    bool VideoPlaying = false;
    bool m_returns = false; // to the main window with the next command
    std::int16_t VideoRate = 0;
    std::unique_ptr<IdleInhibition> m_screenOn; // while a film plays or is paused for a moment
    int m_pausedTicks = 0;
};

} // namespace trovarium
