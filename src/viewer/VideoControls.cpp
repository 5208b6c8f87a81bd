#include "viewer/VideoControls.h"

namespace trovarium {

VideoControls::VideoControls(frmMain& /*form*/, Album& /*album*/) { }

// With no graph open, none of these has an effect; no graph can be opened yet.
void VideoControls::OpenVideo(std::string_view /*path*/, PictureBox& /*window*/) { }

void VideoControls::VideoCommand(std::string_view /*command*/) { }

void VideoControls::EnableVideo(bool /*enable*/) { }

} // namespace trovarium
