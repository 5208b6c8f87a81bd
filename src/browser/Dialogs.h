#pragma once

#include <functional>

namespace trovarium {

// Opens the forms that the main window calls and that may call it back; filled in where the program is put together.
struct Dialogs {
    std::function<void()> showFirstTime;      // modal
    std::function<void(int mode)> showGroups; // modal: CreateWithCopies or CreateByMoving
    std::function<void()> showExport;         // modal
    std::function<void()> showFullScreen;     // not modal
    std::function<void()> showSlideShow;      // modal
    std::function<void()> showSearch;         // modal
    std::function<void()> showImport;         // modal
    std::function<void()> showMidiLink;       // modal: songs for groups
    std::function<void()> showWavLink;        // modal: clips for the selected photographs
    std::function<void()> showAbout;          // modal
    std::function<void()> unloadAllForms;     // all but the main window
};

} // namespace trovarium
