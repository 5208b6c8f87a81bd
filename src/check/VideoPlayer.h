// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace trovarium {

class PictureBox;

// The program's only film player, for forms that show a film in their own picture box. Failures are silent: a film
// that can't be played shows nothing.
class VideoPlayer {
public:
    virtual ~VideoPlayer() = default;

    // Replaces the film before; paused at its start.
    virtual void OpenVideo(std::string_view Path, PictureBox& Window) = 0;
    // "play", "pause" or "stop", in upper or lower case; other words do nothing.
    virtual void VideoCommand(std::string_view Command) = 0;
};

} // namespace trovarium
