#pragma once

#include "check/VideoPlayer.h"

#include <cstdint>
#include <memory>
#include <string>

namespace trovarium {

struct Album;
class Desktop;
class FilgraphManager;
class frmMain;

// The one film of the program, and the main window's controls that follow it. It is there before the main window
// and behind it: what is to happen to the controls is left out meanwhile. Every operation ends at its first
// failure and says nothing of it.
class VideoControls : public VideoPlayer {
public:
    VideoControls(Desktop& desktop, Album& album);
    ~VideoControls() override;

    void attach(frmMain& form);
    void detach(const frmMain& form); // nothing when another one was attached meanwhile

    void OpenVideo(std::string_view Path, PictureBox& Window) override;
    void CloseVideo();
    void VideoCommand(std::string_view Command) override;
    void returnToMainWindow();             // with the next command; the window of the film is gone
    void SeekVideo(std::int16_t& Seconds); // brought within the film; leaves it paused
    void UpdateVideoPosition();
    void EnableVideo(bool Enable, bool& Result);

    void cmdVideo_Click(int Index); // 0 plays, 1 pauses, 2 stops
    void hscVideo_Scroll();
    void tmrVideo_Timer();

private:
    void showIn(const PictureBox& window);
    void takeDuration();
    void play();
    void pause();
    void stop();
    void enableButtons(bool play, bool stop); // play, or else pause

    Desktop& m_desktop;
    Album& m_album;
    frmMain* m_form = nullptr;
    std::unique_ptr<FilgraphManager> m_graph; // also one whose file could not be opened: all that it is asked fails
    std::string VideoFile;
    double VideoDuration = 0; // seconds, to one decimal place
    double VideoStartPosition = 0;
    bool VideoPlaying = false;
    bool m_returns = false; // to the main window
    std::int16_t VideoRate = 0;
};

} // namespace trovarium
