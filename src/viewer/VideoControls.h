#pragma once

#include <string>
#include <string_view>

namespace trovarium {

struct Album;
class PictureBox;
class frmMain;

// Where clips play. The media layer behind it has not landed: no clip opens, and its controls stay disabled.
class VideoControls {
public:
    VideoControls(frmMain& form, Album& album);

    void OpenVideo(std::string_view path, PictureBox& window);
    void VideoCommand(std::string_view command); // "play", "pause", "stop"
    void EnableVideo(bool enable);
};

} // namespace trovarium
