// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Units.h"
#include "startup/StartedProgram.h"
#include "store/Log.h"

#include <cstdio>
#include <functional>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

namespace trovarium {

namespace {

// A test that begins anew in a process of its own, acts there and ends in the middle.
constexpr int Killed = 42;

// What tells the process beside the folder that it shares: the step that it doesn't take.
constexpr const char* StepVariable = "KILLED_AT";

// The exit code of a process that acts and ends before the operation number `step` that may write, or -1.
int runUntilKilled(const std::string& folder, int step)
{
    const TemporaryFolder placeOfTheKilled; // which can't clear up
    const std::string filter =
        std::string("--gtest_filter=*") + testing::UnitTest::GetInstance()->current_test_info()->name();
    const pid_t child = fork();
    if (child == 0) {
        for (const auto& [name, value] : {std::pair("TMPDIR", placeOfTheKilled.path()), {"QT_LOGGING_RULES", "*=false"},
                 {FolderVariable, folder}, {StepVariable, std::to_string(step)}})
            setenv(name, value.c_str(), 1);
        execl("/proc/self/exe", "killed", filter.c_str(), "--gtest_brief=1", nullptr);
        _exit(127);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// The other side of that, in the process of its own. An open and a close count once behind a change: what is only
// read leaves nothing new for a kill.
[[noreturn]] void actUntilKilled(FileService& files, const std::function<void()>& act)
{
    using enum FileOperation;
    int count = 0;
    bool changed = true;
    files.setFaultHook([&](FileOperation operation, std::string_view) {
        const bool changes = std::set{Print, SetDate, Copy, Delete, Rename, MakeFolder}.contains(operation);
        const bool counts = changes || (changed && (operation == Open || operation == Close));
        if (counts && ++count == atoi(getenv(StepVariable)))
            _exit(Killed);
        changed = changes || (changed && operation != Open);
    });
    act();
    std::fflush(nullptr);
    _exit(testing::Test::HasFailure() ? 1 : 0);
}

} // namespace

// An album from a stranger.
struct StrangersAlbum : Start {
    // Links with the names of what would write through them.
    void prepareHostile()
    {
        prepare();
        fs::create_directory(folder.native("Library/Photo_Info/Removed"));
        for (const std::string name : {"3.lst", "4.jpg", "5.jpg", "gone.jpg"}) {
            folder.write("Library/Photos/" + name, name == "gone.jpg" ? "" : plainBitmap(4, 3));
            folder.write("Library/Photo_Info/" + name + ".info", "TITLE=mine\r\n");
        }
        for (const auto& photograph : fs::directory_iterator(folder.native("Library/Photos")))
            fs::last_write_time(photograph, fs::file_time_type()); // no thumbnail's date
        for (const auto& [place, victim] : {std::pair<std::string, std::string>{"Trovarium.Log", "log"},
                 {"LogFile.tmp", "log's scratch"}, {"test.txt", "write test"}, {"Photo_SlideGroups/Linked.lst", "list"},
                 {"Photo_SlideGroups/  All Photos  .lst", "all.lst"}, {"Photo_SlideGroups/temp.group", "scratch.lst"},
                 {"Photo_SlideGroups/TmpGroup.lst", "group.lst"}, {"Photo_Info/1.jpg.info", "words"},
                 {"Photo_Info/4.jpg.info", "new.info"}, {"Photo_Info/Removed/2.jpg.info", "old.info"},
                 {"Photo_Thumbnails/1.jpg", "thumbnail"}, {"Photo_Thumbnails/3.lst", "thumbnail.lst"},
                 {"Photo_Thumbnails/5.jpg", "new thumbnail"}, {"Photos/6.jpg", "photograph"},
                 {"Photo_Audio/2.jpg.wav", "sound"}}) {
            if (!victim.starts_with("new"))
                folder.write(
                    "Documents/" + victim, "1.jpg\r\nTITLE=mine" + std::string(victim == "log" ? 90'000 : 0, '!'));
            fs::remove(folder.native("Library/" + place));
            fs::create_symlink(folder.native("Documents/" + victim), folder.native("Library/" + place));
        }
        for (const std::string name :
            {"Documents/thesis", "Documents/thesis.info", "Library/Photo_SlideGroups/note.txt"})
            folder.write(name, "private");
    }
};

TEST_F(Start, MakesALibraryWithOneNoticeAndASkippedOneTakesOnlyTheHalfWrittenAway)
{
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(everything(),
        (std::set<std::string>{"Library", "Library/Help", "Library/Photo_Audio", "Library/Photo_Info",
            "Library/Photo_Midi", "Library/Photo_SlideGroups",
            "Library/Photo_SlideGroups/  All Photos  .lst: ", "Library/Photo_Thumbnails", "Library/Photos"}));
    EXPECT_FALSE(program->splash().isLoaded());
    bool isTold = false;
    robot.whenShown("frmFirstTime", [&] {
        isTold = true;
        robot.key(*desktop.activeForm(), EscapeKey);
    });
    EXPECT_TRUE(robot.until([&] { return isTold && desktop.formsCount() == 1; }));

    folder.write("Library/Photo_SlideGroups/Trip.lst", "none.jpg\r\n");
    folder.write("Library/Photos/a.jpg", "x");
    const auto before = everything();
    for (const std::string part :
        {"Photos", "Photo_Info", "Photo_Thumbnails", "Photo_SlideGroups", "Photo_Audio", "Photo_Midi"}) {
        const std::string leftOver = "Library/" + part + "/.new-99999999-0";
        folder.write(leftOver, "half");
        fs::last_write_time(folder.native(leftOver), fs::file_time_type::clock::now() - std::chrono::hours(25));
    }
    robot.whenShown("frmSplash", [&] { robot.click(program->splash()().cmdByPassAutoCheck); });
    EXPECT_EQ(start("\\"), 0) << "in a root";
    desktop.DoEvents();
    EXPECT_EQ(desktop.formsCount(), 1);
    EXPECT_EQ(everything(), before) << "skipped, but the half-written is taken away";
    EXPECT_EQ(album->paths.PhotoPath, folder.inside("Library") + "\\Photos\\");

    desktop.pictures().PackageMissing("libheif1");
    EXPECT_TRUE(folder.read("Library/Trovarium.Log").ends_with("shown without the package 'libheif1'\r\n"));

    frmMain& main = program->mainWindow()();
    main.dialogs().showFullScreen();
    ASSERT_EQ(desktop.formsCount(), 2);
    main.unload();
    EXPECT_EQ(desktop.formsCount(), 0);
    EXPECT_EQ(desktop.run(), 0);

    const auto open = everything();
    ScriptedPrompts prompts(desktop);
    prompts.expectNotice("This album is open already: " + folder.native("Library"));
    Album other(desktop.files());
    EXPECT_EQ(desktop.guarded([&] { Program(desktop, other, folder.inside("Library")).Main(); }), 0);
    EXPECT_EQ(everything(), open);
}

TEST_F(StrangersAlbum, LeavesEveryFileOutsideAsItIs)
{
    for (const std::string way : {"repaired", "asked", "skipped", "read-only"}) {
        prepareHostile();
        COWReg().SetOWSetting("Trovarium", "Options", "AutoFix", way == "repaired" ? "True" : "False");
        ScriptedPrompts prompts(desktop);
        prompts.agreeWith("");
        const auto before = everything("Documents");
        const auto library = everything("Library");
        if (way == "skipped")
            robot.whenShown("frmSplash", [&] { robot.click(program->splash()().cmdByPassAutoCheck); });
        start({}, way == "read-only" ? readOnlyBelow(folder.inside("Library")) : FaultHook());
        logFailure(*album, way, Failure(FailureKind::Overflow));
        const auto after = everything("Documents");
        for (const std::string& file : after)
            EXPECT_TRUE(before.contains(file)) << way << " writes " << file.substr(0, 50);
        EXPECT_EQ(after.size(), before.size()) << way;
        EXPECT_EQ(folder.read("Library/Photo_SlideGroups/note.txt"), "private");
        if (way != "read-only")
            EXPECT_TRUE(folder.read("Library/Trovarium.Log").starts_with("Created"));
        else // it works on the installed copy
            EXPECT_TRUE(everything("Library") == library && !everything("data/OmbrelaneWorks/Trovarium/CD-").empty());
    }
}

TEST_F(StrangersAlbum, AsksOnceForEachFolderThatLeadsOutOfTheLibraryAndEndsBeforeAnythingIsWritten)
{
    prepareHostile();
    const std::string library = folder.native("Library");
    fs::create_directory(library + "2");
    std::string links;
    const auto lead = [&](const std::string& place, const std::string& target, const std::string& end) {
        fs::remove_all(library + place);
        fs::create_symlink(target, library + place);
        links += end.empty() ? "" : library + place + " -> " + folder.native(end) + "\r";
    };
    fs::remove_all(library + "/Photo_Midi");
    lead("/Photo_Thumbnails", "../Library2/../Library/Photos", ""); // stays inside
    lead("/Photo_Midi", "Photo_Midi", "");                          // leads nowhere, ever
    lead("/PHOTO_midi", "Photo_SlideGroups", "Documents");
    lead("/Photo_Audio", "../Library2", "Library2");
    lead("/Photo_Info", "../none", "Library/../none");
    lead("/Photo_SlideGroups", "../Documents", "Documents");
    lead("/Photos/REMOVED", "../../Documents", "Documents");
    lead("/Photos/Removed_Photos", folder.native("Documents"), "Documents");
    const auto question = [&] {
        return "Folders of this album lie outside of it:\r\r" + std::exchange(links, {})
            + "\rTrovarium reads, changes and removes files there. Press 'YES' to open the album. Press 'NO' if you "
              "don't know these folders.";
    };
    ScriptedPrompts prompts(desktop);
    prompts.expectQuestion(question(), Answer::Yes);
    start();
    EXPECT_EQ(folder.read("Documents/thesis"), "private") << "no list, though it lies among them now";
    start(); // and asks no more
    end();
    fs::remove(library + "/Photo_Midi");
    lead("/Photo_Audio", "../in", "in");
    const std::set<std::string> before = everything();
    prompts.expectQuestion(question(), Answer::No);
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(desktop.run(), 0);
    EXPECT_FALSE(program->splash().isLoaded() || program->mainWindow().isLoaded());
    EXPECT_EQ(everything(), before);
}

TEST_F(Start, BringsOutWhatWentInAndKilledAtAnyWriteLosesNothingAndTheNextStartRepairsTheRest)
{
    if (getenv(FolderVariable)) {
        start();
        actUntilKilled(desktop.files(), [this] { travel(); });
    }
    int step = 0;
    int code = Killed;
    while (code == Killed) {
        SCOPED_TRACE(++step);
        prepare();
        const std::set<std::string> before = everything();
        code = runUntilKilled(folder.path(), step);
        EXPECT_EQ(start(), 0);
        const std::set<std::string> after = everything();
        for (const std::string& file : before) {
            const bool changes = file.starts_with("config") || file.find(".lst") != file.npos;
            EXPECT_TRUE(changes || placeOf(file, after) != "nowhere") << file;
        }
        for (const std::string name : {"1.jpg", "2.jpg"}) {
            const std::string words = name + ".info: PhotoPath=\\Photos\\" + name + "\r\nTITLE=mine";
            const std::string place = placeOf("Library/Photos/" + name, after);
            EXPECT_EQ(placeOf("Library/Photo_Info/" + words, after), place) << name;
            const bool isListed = std::ranges::any_of(everything("Library/Photo_SlideGroups/"), [&](const auto& list) {
                return list.find("All Photos") == list.npos && list.find(name + "\r\n") != list.npos;
            });
            EXPECT_EQ(isListed, place.empty()) << name;
        }
        const auto photographs = countIn("Photos");
        EXPECT_EQ(countIn("Photo_Info"), photographs);
        EXPECT_EQ(album->group.PhotoCount, photographs);
        start(); // for the thumbnail of what had no information at the last
        EXPECT_GE(countIn("Photo_Thumbnails"), photographs);
    }
    EXPECT_EQ(code, 0);
    EXPECT_GT(step, 60);
    EXPECT_EQ(folder.read("Library/Photo_SlideGroups/Gr\u00F6\u00DFe \u5C71.lst"), "Z\xFCrich.jpg\r\n\u5C71.bmp\r\n");
    EXPECT_EQ(folder.read("Library/Photo_SlideGroups/Rome.lst"), "2.jpg\r\n");
    for (const std::string& name : names) {
        EXPECT_EQ(folder.read("out/" + name), folder.read("in/" + name));
        EXPECT_EQ(fs::last_write_time(folder.native("out/" + name)), fs::last_write_time(folder.native("in/" + name)));
        EXPECT_EQ(folder.read("out/" + name + ".info"), folder.read("Library/Photo_Info/" + name + ".info"));
    }
    const std::string records = "Z\xFCrich.jpg.info,,,,,,\xC4,,,\r\n\u5C71.bmp.info,,,,,,\u00C4, \u5C71,,,\r\n";
    EXPECT_TRUE(folder.read("out/Trovarium_Info.csv").ends_with(records)) << "each in its own encoding";
}

} // namespace trovarium
