#include "MainWindow.h"

#include "check/GroupRepair.h"
#include "check/RepairPasses.h"
#include "check/frmSplash.h"
#include "check/frmThumbnail.h"
#include "store/LibraryFolders.h"
#include "support/KilledProcess.h"

namespace trovarium {

namespace {

// A library whose user acts in a process of its own, which ends in the middle, and which is then started anew.
class KilledLibrary : public MainWindow {
public:
    // Gives its folder.
    std::string make()
    {
        putPhotos(names(3));
        putGroup("  All Photos  ", names(3));
        putGroup("Alps", names(3));
        putGroup("Rome", {"p3.jpg"});
        test.put(test.paths().AudioPath + "p2.jpg.wav", "RIFF");
        startAgain(); // makes the thumbnails
        m_before = test.allFiles();
        return test.library();
    }
    [[noreturn]] void actInItsOwnProcess(int number)
    {
        test.paths().ProgramFolder = test.paths().AppPath = getenv(FolderVariable);
        readFolderSettings(test.album());
        open();
        pressRowNamed("Alps");
        actUntilKilled(desktop.files(), [&] {
            if (number == 0) {
                select({1});
                main().thumbnailDrag().moveSelected(3);
            } else if (number == 1) {
                select({1, 2});
                main().groupCommands().MoveToGroup("Rome.lst");
            } else {
                select({2});
                prompts.expectQuestion(askRemoval(), Answer::Yes);
                robot.choose(main().mnuEditRemoveFromAlbum);
                prompts.verify();
            }
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
            if (path.ends_with("Trovarium.Log") || (!isNew && after[path] == was))
                continue; // the log tells of a photograph that was missing
            text += (isGone ? "-" : isNew ? "+" : "") + path.substr(path.find('/') + 1);
            if (!isGone && path.find("Photo_SlideGroups") != path.npos) {
                std::erase(after[path], '\r');
                std::replace(after[path].begin(), after[path].end(), '\n', '|');
                text += "=" + after[path];
            }
            const std::size_t aside = path.find("Removed/");
            const bool isOther = aside != path.npos && after[path] != m_before.at(std::string(path).erase(aside, 8));
            text += isOther ? " mixed up " : " ";
        }
        return text;
    }

private:
    void TestBody() override { }
    std::map<std::string, std::string> m_before;
};

} // namespace

TEST(KilledTest, AtAnyWriteOnlyWhatTheOrderOfTheStepsImpliesIsLost)
{
    if (const char* act = getenv(ActVariable))
        KilledLibrary().actInItsOwnProcess(atoi(act));

    const std::string copied = "Photo_SlideGroups/Rome.lst=p3.jpg|p1.jpg|p2.jpg| ";
    const std::string rest = copied + "+Photo_SlideGroups/temp.group=p3.jpg| ";
    const std::string moved = "Photo_SlideGroups/Alps.lst=p3.jpg| ";
    const std::string clip = "+Photo_Audio/Removed/p2.jpg.wav -Photo_Audio/p2.jpg.wav ";
    const std::string info = "+Photo_Info/Removed/p2.jpg.info -Photo_Info/p2.jpg.info Photo_SlideGroups/  All Photos  "
                             ".lst=p1.jpg|p3.jpg| Photo_SlideGroups/Alps.lst=p1.jpg|p3.jpg| ";
    const std::string photo = "+Photos/Removed/p2.jpg -Photos/p2.jpg ";
    // For each act the changes after the next start, from a kill before the first step to the whole act.
    const std::vector<std::vector<std::string>> expected{{"", "Photo_SlideGroups/Alps.lst=p2.jpg|p3.jpg|p1.jpg| "},
        {"", copied, copied + "+Photo_SlideGroups/temp.group= ", rest, moved + rest, moved + copied},
        // As soon as the photograph is gone the next start finishes the rest, but for thumbnail and clip.
        {"", info + photo, clip + info + photo, clip + info + "-Photo_Thumbnails/p2.jpg " + photo}};
    for (int act = 0; act < 3; ++act) {
        SCOPED_TRACE(act);
        std::vector<std::string> seen;
        int code = Killed;
        for (int step = 1; code == Killed; ++step) {
            KilledLibrary library;
            code = runUntilKilled(library.make(), act, step);
            library.startAgain();
            const std::string changes = library.changes();
            if (seen.empty() || seen.back() != changes)
                seen.push_back(changes);
        }
        EXPECT_EQ(code, 0);
        EXPECT_EQ(seen, expected.at(static_cast<std::size_t>(act)));
    }
}

} // namespace trovarium
