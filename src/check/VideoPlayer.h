#pragma once

#include <string_view>

namespace trovarium {

class PictureBox;

// The one film of the program, as those see it who have it shown in a box of theirs. Failures are silent: what
// can't be played shows nothing.
class VideoPlayer {
public:
    virtual ~VideoPlayer() = default;

    // In place of the film before, still and at its start.
    virtual void OpenVideo(std::string_view Path, PictureBox& Window) = 0;
    // "play", "pause" or "stop", in any case; another word does nothing.
    virtual void VideoCommand(std::string_view Command) = 0;
};

} // namespace trovarium
