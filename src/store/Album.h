// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "runtime/Failure.h"
#include "store/COWReg.h"
#include "store/GroupOnShow.h"

#include <cstdint>
#include <memory>
#include <string>

namespace trovarium {

class FileService;

// Where the library lies; final after `CheckDirPaths`. The six folders end in a backslash and are used by
// plain concatenation.
struct AlbumPaths {
    std::string ProgramFolder; // never ends in a backslash
    std::string AppPath;       // the same, base of the log and the default folders
    std::string PhotoPath;
    std::string ThumbnailPath;
    std::string InfoPath;
    std::string SlideGroupPath;
    std::string AudioPath;
    std::string MidiPath;
};

enum : std::int16_t { ViewThumbnails = 0, ViewPhoto = 1, ViewFullScreen = 2 };

// What the viewer shows.
struct ViewState {
    std::int32_t CurrentIndex = 0; // 1-based position in GroupList
    std::int32_t PreviousIndex = 0;
    std::int16_t ViewMode = ViewThumbnails; // tested for zero only
    std::string CurrentPhotoFile;
    bool IsVideo = false;
    std::int16_t ZoomLevel = 0; // -n is 1/n, n is n/1
    bool InfoEditing = false;
    bool SlideShowRunning = false;
    bool SlideAudioClips = false;
};

// The fields of one information file: the photograph now shown.
struct PhotoInfo {
    std::string PhotoLink;
    std::string Title;
    std::string Photographer;
    std::string Year;
    std::string People;
    std::string Place;
    std::string Event;
    std::string Keywords;
    std::int16_t ImageWidth = 0;  // pixels
    std::int16_t ImageHeight = 0; // pixels
};

// One library with all that the program knows of it, handed down by reference.
struct Album {
    explicit Album(FileService& fileService)
        : files(fileService)
    {
    }

    FileService& files;
    AlbumPaths paths;
    GroupOnShow group;
    ViewState view;
    trovarium::PhotoInfo info;
    bool AutoCheckBypass = false;
    bool ReadOnlyLibrary = false;

    // "Object not set" while there is no store.
    COWReg& Settings() const
    {
        if (settingsStore == nullptr)
            throw Failure(FailureKind::ObjectNotSet);
        return *settingsStore;
    }

    std::unique_ptr<COWReg> settingsStore; // made by the first statement of Main
};

} // namespace trovarium
