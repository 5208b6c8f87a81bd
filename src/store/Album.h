#pragma once

#include "store/AlbumPaths.h"
#include "store/COWReg.h"
#include "store/GroupOnShow.h"
#include "store/PhotoInfo.h"
#include "store/ViewState.h"

#include <memory>

namespace trovarium {

class FileService;

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
    COWReg& Settings() const;

    std::unique_ptr<COWReg> settingsStore; // made by the first statement of Main
};

} // namespace trovarium
