#pragma once

#include <cstdint>
#include <string>

namespace trovarium {

enum : std::int16_t { ViewThumbnails = 0, ViewPhoto = 1, ViewFullScreen = 2 };

// What the viewer shows.
struct ViewState {
    std::int32_t CurrentIndex = 0; // 1-based position in GroupList
    std::int32_t PreviousIndex = 0;
    std::int16_t ViewMode = ViewThumbnails; // only zero against non-zero is ever tested
    std::string CurrentPhotoFile;
    bool IsVideo = false;
    std::int16_t ZoomLevel = 0; // -n is 1/n, n is n/1
    bool InfoEditing = false;
    bool SlideShowRunning = false;
    bool SlideAudioClips = false;
};

} // namespace trovarium
