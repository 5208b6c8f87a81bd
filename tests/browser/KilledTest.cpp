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
        putPhotos(names(3));
        for (const std::string& name : names(3)) {
            const std::string photo = test.paths().PhotoPath + name;
            desktop.files().setModified(test.paths().ThumbnailPath + name, desktop.files().modified(photo));
        }
        putGroup("  All Photos  ", names(3));
        putGroup("Alps", names(3));
        putGroup("Rome", {"p3.jpg"});
        test.put(test.paths().AudioPath + "p2.jpg.wav", "RIFF");
        m_before = test.allFiles();
    }
    [[noreturn]] void actInItsOwnProcess(void (KilledLibrary::*act)())
    {
        test.paths().ProgramFolder = test.paths().AppPath = getenv(FolderVariable);
        readFolderSettings(test.album());
        open();
        pressRowNamed("Alps");
        actUntilKilled(desktop.files(), [&] {
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
        const std::string p2 = test.bytes(test.paths().PhotoPath + "p2.jpg");
        const std::string removed = test.bytes(test.paths().PhotoPath + "Removed\\p2.jpg");
        EXPECT_EQ(p2.empty() ? removed : p2, test.bytes(test.paths().PhotoPath + "p1.jpg")) << "a photograph is lost";
    }
    // What is not as it was before the act: "-gone +new changed", a list with its lines, by path below the library.
    std::string changes() const
    {
        std::map<std::string, std::string> after = test.allFiles();
        std::map<std::string, std::string> paths = m_before;
        paths.insert(after.begin(), after.end());
        std::string text;
        for (const auto& [path, was] : paths) {
            const bool isNew = m_before.count(path) == 0;
            const bool isGone = after.count(path) == 0;
            if (path.ends_with("Trovarium.Log") || (!isNew && !isGone && after[path] == was))
                continue; // the log tells of a photograph that was missing
            text += (isGone ? "-" : isNew ? "+" : "") + path.substr(path.find('/') + 1);
            if (!isGone && path.find("Photo_SlideGroups") != path.npos) {
                std::erase(after[path], '\r');
                std::replace(after[path].begin(), after[path].end(), '\n', '|');
                text += "=" + after[path];
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
        prompts.expectQuestion(askRemoval(), Answer::Yes);
        robot.choose(main().mnuEditRemoveFromAlbum);
    }

    using MainWindow::test;

private:
    void TestBody() override { }

    std::map<std::string, std::string> m_before;
};

} // namespace

TEST(KilledTest, AtAnyWriteOnlyWhatTheOrderOfTheStepsImpliesIsLost)
{
    const std::string copied = "Photo_SlideGroups/Rome.lst=p3.jpg|p1.jpg|p2.jpg| ";
    const std::string rest = copied + "+Photo_SlideGroups/temp.group=p3.jpg| ";
    const std::string moved = "Photo_SlideGroups/Alps.lst=p3.jpg| ";
    const std::string photoAside = "+Photos/Removed/p2.jpg ";
    const std::string infoAside = "+Photo_Info/Removed/p2.jpg.info ";
    const std::string clipAside = "+Photo_Audio/Removed/p2.jpg.wav ";
    const std::string infoGone = infoAside
        + "-Photo_Info/p2.jpg.info Photo_SlideGroups/  All Photos  .lst=p1.jpg|p3.jpg| "
          "Photo_SlideGroups/Alps.lst=p1.jpg|p3.jpg| ";
    const std::string photoGone = photoAside + "-Photos/p2.jpg ";
    const std::string allGone = infoGone + "-Photo_Thumbnails/p2.jpg " + photoGone;
    // An act and the changes after the next start, from a kill before the first step to the whole act.
    const std::vector<std::pair<void (KilledLibrary::*)(), std::vector<std::string>>> cases{
        {&KilledLibrary::reorder,
            {"", "Photo_SlideGroups/Alps.lst= ", "Photo_SlideGroups/Alps.lst=p2.jpg|p3.jpg|p1.jpg| "}},
        {&KilledLibrary::move,
            {"", copied, copied + "+Photo_SlideGroups/temp.group= ", rest, moved + rest, moved + copied}},
        // As soon as the photograph is gone the next start finishes the rest, but for thumbnail and clip.
        {&KilledLibrary::remove,
            {"", photoAside, infoAside + photoAside, clipAside + infoAside + photoAside,
                clipAside + infoGone + photoGone, clipAside + allGone,
                clipAside + "-Photo_Audio/p2.jpg.wav " + allGone}},
    };
    if (const char* act = getenv(ActVariable))
        KilledLibrary().actInItsOwnProcess(cases.at(static_cast<std::size_t>(atoi(act))).first);

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
