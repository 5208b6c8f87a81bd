#pragma once

#include "check/RepairPasses.h"
#include "check/VideoPlayer.h"
#include "check/frmSplash.h"
#include "check/frmThumbnail.h"
#include "platform/media/FilmSurface.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/FormSlot.h"
#include "platform/toolkit/PictureBox.h"
#include "support/ScriptedPrompts.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace trovarium {

// Notes what it was told, and shows each clip as white all over; nothing of one that is called "damaged".
class RecordedPlayer : public VideoPlayer {
public:
    void OpenVideo(std::string_view path, PictureBox& window) override
    {
        told += path.substr(path.rfind('\\') + 1);
        window.filmSurface()->moveTo({0, 0, static_cast<int>(window.Width()), static_cast<int>(window.Height())});
        if (path.find("damaged") == std::string_view::npos)
            window.filmSurface()->put({1, 1, {0xffffffff}});
    }
    void VideoCommand(std::string_view command) override { told += " " + std::string(command); }

    std::string told;
};

// A library with the forms of its check, put together as the start-up does it. Paths of photographs,
// thumbnails and information files are made from the photograph's name.
class LibraryCheck : public testing::Test {
protected:
    LibraryCheck();
    ~LibraryCheck() override;

    // Photographs are bitmaps; each has another date unless one is given.
    void addPhoto(const std::string& name, int width = 8, int height = 6);
    void addInfoFile(const std::string& name);
    void addPhotosWithInfo(const std::vector<std::string>& names);
    void addUpToDateThumbnail(const std::string& name);

    std::string photo(const std::string& name) { return test.paths().PhotoPath + name; }
    std::string thumbnail(const std::string& name) { return test.paths().ThumbnailPath + name; }
    std::string infoFile(const std::string& name) { return test.paths().InfoPath + name + ".info"; }
    std::string removedInfoFile(const std::string& name) { return infoFile("Removed\\" + name); }
    std::string groupList(const std::string& fileName) { return test.paths().SlideGroupPath + fileName; }
    std::string allPhotos() { return test.bytes(groupList("  All Photos  .lst")); }
    // How often the log tells of this failure.
    int logged(const std::string& procedure, const std::string& description);
    Instant dateOf(const std::string& path) { return desktop.files().modified(path); }

    // The check of one start: the passes, then the repair of the groups unless it was skipped.
    void start();
    // Builds the thumbnails of these photographs, as any caller of the builder does.
    void build(const std::vector<std::string>& names);

    Desktop& desktop;
    TestAlbum test;
    ScriptedPrompts prompts;
    RecordedPlayer player;
    FormSlot<frmThumbnail> builder;
    FormSlot<frmSplash> splash;

private:
    int m_photos = 0;
};

// Width and height as they stand in the head of a bitmap.
std::pair<int, int> sizeOfBitmap(const std::string& bytes);

} // namespace trovarium
