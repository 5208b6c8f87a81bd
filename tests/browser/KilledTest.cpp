#include "MainWindow.h"

#include "browser/GroupCommands.h"
#include "browser/ThumbnailDrag.h"
#include "check/GroupRepair.h"
#include "check/RepairPasses.h"
#include "check/frmSplash.h"
#include "check/frmThumbnail.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "store/LibraryFolders.h"
#include "support/KilledProcess.h"

#include <utility>

namespace trovarium {

namespace {

// A library whose user acts in a process of its own, which ends in the middle, and which is then started anew.
class KilledLibrary : public MainWindow {
public:
    void make()
    {
        const AlbumPaths& paths = test.paths();
        putPhotos(names(3));
        for (const std::string& name : names(3)) {
            m_photos[name] = plainBitmap(40 + static_cast<int>(m_photos.size()), 30);
            test.put(paths.PhotoPath + name, m_photos[name]);
            desktop.files().setModified(paths.ThumbnailPath + name, desktop.files().modified(paths.PhotoPath + name));
        }
        putGroup("  All Photos  ", names(3));
        putGroup("Alps", names(3));
        putGroup("Rome", {"p3.jpg"});
        test.put(paths.AudioPath + "p2.jpg.wav", "RIFF");
        test.put(paths.MidiPath + "Alps.mid", "MThd");
        m_before = test.allFiles();
    }

    // In the process of its own.
    [[noreturn]] void actUntilKilled(void (KilledLibrary::*act)())
    {
        test.paths().ProgramFolder = test.paths().AppPath = getenv(FolderVariable);
        readFolderSettings(test.album());
        open();
        pressRowNamed("Alps");
        trovarium::actUntilKilled(desktop.files(), [&] {
            (this->*act)();
            prompts.verify();
        });
    }

    void startAgain()
    {
        FormSlot<frmThumbnail> builder(
            desktop, [this] { return std::make_unique<frmThumbnail>(desktop, test.album(), video); });
        FormSlot<frmSplash> splash(desktop, [this] { return std::make_unique<frmSplash>(desktop, test.album()); });
        splash().show();
        RepairPasses(test.album(), splash(), builder).CheckFolderContents();
        RemoveMissingPhotosFromGroup(test.album(), desktop);
        splash().unload();
        for (const auto& [name, bytes] : m_photos) {
            const std::string removed = test.paths().PhotoPath + "Removed\\";
            EXPECT_TRUE(test.bytes(test.paths().PhotoPath + name) == bytes || test.bytes(removed + name) == bytes)
                << name;
        }
    }

    // What is not as it was before the act: "-gone +new changed", a list with its lines, by path below the library.
    std::string changes() const
    {
        const std::map<std::string, std::string> after = test.allFiles();
        std::map<std::string, std::string> paths = m_before;
        paths.insert(after.begin(), after.end());
        std::string text;
        for (const auto& [path, bytes] : paths) {
            const auto was = m_before.find(path);
            const auto is = after.find(path);
            const bool isSame = is != after.end() && was != m_before.end() && is->second == was->second;
            if (isSame || path.ends_with("Trovarium.Log")) // which tells of a photograph that was missing
                continue;
            text += is == after.end() ? "-" : was == m_before.end() ? "+" : "";
            text += path.substr(path.find('/') + 1);
            if (is != after.end() && path.find("Photo_SlideGroups") != path.npos) {
                std::string lines = is->second;
                std::erase(lines, '\r');
                std::replace(lines.begin(), lines.end(), '\n', '|');
                text += "=" + lines;
            }
            text += " ";
        }
        return text;
    }

    void reorder()
    {
        select({1});
        main().thumbnailDrag().moveSelected(3);
    }
    void move()
    {
        select({1, 2});
        main().groupCommands().MoveToGroup("Rome.lst");
    }
    void remove()
    {
        select({2});
        prompts.expectQuestion("Are you sure you want to remove selected photograph(s) from the program? The removed "
                               "photograph(s) will be place in the following folder -> "
                + toNativePath(test.paths().PhotoPath + "Removed"),
            Answer::Yes);
        robot.choose(main().mnuEditRemoveFromAlbum);
    }

    using MainWindow::test;

private:
    void TestBody() override { }

    std::map<std::string, std::string> m_photos;
    std::map<std::string, std::string> m_before;
};

// An act and the changes after the next start, from a kill before the first step to the whole act.
using Case = std::pair<void (KilledLibrary::*)(), std::vector<std::string>>;

} // namespace

TEST(KilledTest, AtAnyWriteOnlyWhatTheOrderOfTheStepsImpliesIsLost)
{
    const std::string copied = "Photo_SlideGroups/Rome.lst=p3.jpg|p1.jpg|p2.jpg| ";
    const std::string photoAside = "+Photos/Removed/p2.jpg ";
    const std::string infoAside = "+Photo_Info/Removed/p2.jpg.info " + photoAside;
    const std::string clipAside = "+Photo_Audio/Removed/p2.jpg.wav ";
    const std::string infoGone = "+Photo_Info/Removed/p2.jpg.info -Photo_Info/p2.jpg.info "
                                 "Photo_SlideGroups/  All Photos  .lst=p1.jpg|p3.jpg| "
                                 "Photo_SlideGroups/Alps.lst=p1.jpg|p3.jpg| ";
    const std::string thumbnailGone = "-Photo_Thumbnails/p2.jpg ";
    const std::string photoGone = photoAside + "-Photos/p2.jpg ";
    const std::vector<Case> cases{
        {&KilledLibrary::reorder,
            {"", "Photo_SlideGroups/Alps.lst= ", "Photo_SlideGroups/Alps.lst=p2.jpg|p3.jpg|p1.jpg| "}},
        {&KilledLibrary::move,
            {"", copied, copied + "+Photo_SlideGroups/temp.group= ", copied + "+Photo_SlideGroups/temp.group=p3.jpg| ",
                "Photo_SlideGroups/Alps.lst=p3.jpg| " + copied + "+Photo_SlideGroups/temp.group=p3.jpg| ",
                "Photo_SlideGroups/Alps.lst=p3.jpg| " + copied}},
        // As soon as the photograph is gone the next start finishes the rest, but for thumbnail and clip.
        {&KilledLibrary::remove,
            {"", photoAside, infoAside, clipAside + infoAside, clipAside + infoGone + photoGone,
                clipAside + infoGone + thumbnailGone + photoGone,
                clipAside + "-Photo_Audio/p2.jpg.wav " + infoGone + thumbnailGone + photoGone}},
    };
    if (const char* act = getenv(ActVariable))
        KilledLibrary().actUntilKilled(cases.at(static_cast<std::size_t>(atoi(act))).first);

    for (std::size_t act = 0; act < cases.size(); ++act) {
        SCOPED_TRACE(act);
        std::vector<std::string> seen;
        int code = Killed;
        for (int step = 1; code == Killed; ++step) {
            KilledLibrary library;
            library.make();
            code = runUntilKilled(library.test.library(), static_cast<int>(act), step);
            library.startAgain();
            const std::string changes = library.changes();
            if (seen.empty() || seen.back() != changes)
                seen.push_back(changes);
        }
        EXPECT_EQ(code, 0);
        EXPECT_EQ(seen, cases[act].second);
    }
}

} // namespace trovarium
