#pragma once

#include "check/GroupRepair.h"
#include "check/RepairPasses.h"
#include "check/VideoPlayer.h"
#include "check/frmFirstTime.h"
#include "check/frmSplash.h"
#include "check/frmThumbnail.h"
#include "platform/media/FilmSurface.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/FormSlot.h"
#include "platform/toolkit/PictureBox.h"
#include "store/InfoFile.h"
#include "support/PlainBitmap.h"
#include "support/Robot.h"
#include "support/ScriptedPrompts.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace trovarium {

using Names = std::vector<std::string>;

// Notes what it was told, and shows each clip as white all over; nothing of one that is called "damaged".
class RecordedPlayer : public VideoPlayer {
public:
    void OpenVideo(std::string_view path, PictureBox& window) override
    {
        told += path.substr(path.rfind('\\') + 1);
        window.filmSurface()->open();
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
    ~LibraryCheck() override { desktop.files().setFaultHook({}); }

    // Photographs are bitmaps; each has another date unless one is given.
    void addPhoto(const std::string& name, int width = 8, int height = 6)
    {
        test.put(photo(name), plainBitmap(width, height));
        // Far from now, so that a date that was not set shows.
        desktop.files().setModified(photo(name), Instant(std::chrono::seconds(1'000'000'000 + 4001 * ++m_photos)));
    }
    void addInfoFile(const std::string& name)
    {
        ASSERT_TRUE(CreateInfoFile(desktop.files(), infoFile(name), "\\Photos\\" + name));
    }
    void addPhotosWithInfo(const Names& names, int width = 8, int height = 6)
    {
        for (const std::string& name : names) {
            addPhoto(name, width, height);
            addInfoFile(name);
        }
    }
    void addUpToDateThumbnail(const std::string& name)
    {
        test.put(thumbnail(name), plainBitmap(100, 75));
        desktop.files().setModified(thumbnail(name), dateOf(photo(name)));
    }

    std::string photo(const std::string& name) { return test.paths().PhotoPath + name; }
    std::string thumbnail(const std::string& name) { return test.paths().ThumbnailPath + name; }
    std::string infoFile(const std::string& name) { return test.paths().InfoPath + name + ".info"; }
    std::string removedInfoFile(const std::string& name) { return infoFile("Removed\\" + name); }
    std::string groupList(const std::string& fileName) { return test.paths().SlideGroupPath + fileName; }
    bool logged(const std::string& procedure, const std::string& description)
    {
        return test.log().find("error has occurred in '" + procedure + "'. Error = " + description + "\r\n")
            != std::string::npos;
    }
    Instant dateOf(const std::string& path) { return desktop.files().modified(path); }
    bool isUpToDate(const std::string& name) { return dateOf(thumbnail(name)) == dateOf(photo(name)); }
    // As for a new case.
    void remove(const Names& paths)
    {
        for (const std::string& path : paths)
            std::filesystem::remove(toNativePath(path));
    }

    // The check of one start: the passes, then the repair of the groups unless it was skipped.
    void start()
    {
        test.album().AutoCheckBypass = false;
        splash().load();
        splash().show();
        RepairPasses(test.album(), splash(), builder).CheckFolderContents();
        if (!test.album().AutoCheckBypass)
            RemoveMissingPhotosFromGroup(test.album(), desktop);
        splash().unload();
    }
    // Builds the thumbnails of these photographs, as any caller of the builder does.
    void build(const Names& names)
    {
        CheckedArray<std::string> list;
        for (const std::string& name : names)
            list.append(name);
        builder().load();
        builder().SetMissingList(list);
        builder().showModal();
    }

    Desktop& desktop = testDesktop();
    TestAlbum test{desktop.files()};
    ScriptedPrompts prompts{desktop};
    RecordedPlayer player;
    FormSlot<frmThumbnail> builder{
        desktop, [this] { return std::make_unique<frmThumbnail>(desktop, test.album(), player); }};
    FormSlot<frmSplash> splash{desktop, [this] { return std::make_unique<frmSplash>(desktop, test.album()); }};

private:
    int m_photos = 0;
};

// Width and height as they stand in the head of a bitmap.
inline std::pair<int, int> sizeOfBitmap(const std::string& bytes)
{
    const auto side = [&](std::size_t at) {
        return static_cast<unsigned char>(bytes.at(at)) + 256 * static_cast<unsigned char>(bytes.at(at + 1));
    };
    return bytes.starts_with("BM") ? std::pair(side(18), side(22)) : std::pair(0, 0);
}

} // namespace trovarium
