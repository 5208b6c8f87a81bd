#include "browser/Selection.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Keys.h"
#include "startup/Program.h"
#include "startup/UnloadAllForms.h"
#include "store/GroupFile.h"
#include "support/KilledProcess.h"
#include "support/PlainBitmap.h"
#include "support/Robot.h"
#include "support/ScriptedPrompts.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace trovarium {

namespace fs = std::filesystem;

// Starts of the program on a library, settings and a place of the installed copy in a temporary folder.
struct Start : testing::Test {
    Start()
    {
        fs::create_directory(folder.native("Library"));
        setenv("XDG_CONFIG_HOME", folder.native("config").c_str(), 1);
        setenv("XDG_DATA_HOME", folder.native("data").c_str(), 1);
    }

    ~Start() override { end(); }

    // The exit code of what stands before the event loop.
    int start(const std::string& ending = {}, const FaultHook& hook = {})
    {
        end();
        album = std::make_unique<Album>(desktop.files());
        program = std::make_unique<Program>(desktop, *album, folder.inside("Library") + ending);
        desktop.files().setFaultHook(hook);
        return desktop.guarded([&] { program->Main(); });
    }
    void end()
    {
        desktop.files().setFaultHook({});
        UnloadAllForms(desktop, "");
        program.reset();
        album.reset();
    }
    // Every path that begins so below the folder, and the bytes of the files.
    std::set<std::string> everything(const std::string& beginning = {}) const
    {
        std::set<std::string> all;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder.path())) {
            const std::string path = fs::relative(entry.path(), folder.path()).string();
            if (path.starts_with(beginning))
                all.insert(entry.is_regular_file() ? path + ": " + folder.read(path) : path);
        }
        return all;
    }

    // What is done in the dialog of that entry, which is closed then.
    template <class Dialog>
    void in(Menu& entry, const char* name, const std::function<void(Dialog&)>& story)
    {
        robot.whenShown(name, [&] {
            story(dynamic_cast<Dialog&>(*desktop.activeForm()));
            desktop.activeForm()->unload();
        });
        robot.choose(entry);
    }
    void prepare()
    {
        end();
        fs::remove_all(folder.path());
        for (const std::string name : {"Library/Photos", "Library/Photo_Info", "Library/Photo_SlideGroups",
                 "Library/Photo_Thumbnails", "Library/Photo_Audio", "Library/Photo_Midi", "in", "out", "Documents"})
            fs::create_directories(folder.native(name));
        COWReg().SetOWSetting("Trovarium", "Options", "FirstTime", "False");
        for (const std::string& name : names)
            folder.write("in/" + name, plainBitmap(20, static_cast<int>(name.size())));
        desktop.files().setModified(folder.inside("in\\" + names[0]), Instant(std::chrono::seconds(1000000000)));
        for (const std::string name : {"1.jpg", "2.jpg"}) {
            folder.write("Library/Photos/" + name, plainBitmap(4, 3));
            folder.write("Library/Photo_Info/" + name + ".info", "PhotoPath=\\Photos\\" + name + "\r\nTITLE=mine\r\n");
        }
        folder.write("Library/Photo_SlideGroups/Gr\u00F6\u00DFe \u5C71.lst", "1.jpg\r\n2.jpg\r\n");
    }
    // An album from a stranger: links with the names of what would write through them, and lines that lead out.
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
        for (const auto& [place, victim] :
            {std::pair<std::string, std::string>{"Trovarium.Log", "log"}, {"LogFile.tmp", "log's scratch"},
                {"test.txt", "write test"}, {"Photo_SlideGroups/Linked.lst", "list"},
                {"Photo_SlideGroups/  All Photos  .lst", "all.lst"}, {"Photo_SlideGroups/temp.group", "scratch.lst"},
                {"Photo_SlideGroups/TmpGroup.lst", "group.lst"}, {"Photo_SlideGroups/fresh.lst", "new.lst"},
                {"Photo_Info/1.jpg.info", "words"}, {"Photo_Info/4.jpg.info", "new.info"},
                {"Photo_Info/Removed/2.jpg.info", "old.info"}, {"Photo_Thumbnails/1.jpg", "thumbnail"},
                {"Photo_Thumbnails/3.lst", "thumbnail.lst"}, {"Photo_Thumbnails/5.jpg", "new thumbnail"},
                {"Photos/6.jpg", "photograph"}, {"Photo_Audio/2.jpg.wav", "sound"}, {"Photo_Midi/Trip.mid", "music"}}) {
            if (!victim.starts_with("new"))
                folder.write(
                    "Documents/" + victim, "1.jpg\r\nTITLE=mine" + std::string(victim == "log" ? 90'000 : 0, '!'));
            fs::remove(folder.native("Library/" + place));
            fs::create_symlink(folder.native("Documents/" + victim), folder.native("Library/" + place));
        }
        folder.write("Library/Photos/.new-99999999-0", "half");
        const auto aDayAgo = fs::file_time_type::clock::now() - std::chrono::hours(25);
        fs::last_write_time(folder.native("Library/Photos/.new-99999999-0"), aDayAgo);
        for (const std::string name :
            {"Documents/thesis", "Documents/thesis.info", "Library/Photo_SlideGroups/note.txt"})
            folder.write(name, "private");
        folder.write("Library/Photo_SlideGroups/Trip.lst",
            "1.jpg\r\n2.jpg\r\n3.lst\r\n..\\..\\Documents\\thesis\r\n../../Documents/thesis\r\n..\r\n\r\n5.jpg\r\n");
    }
    void describe(int cell, const std::string& title)
    {
        frmMain& main = program->mainWindow()();
        robot.doubleClick(main.imgThumbnail(cell));
        robot.click(main.cmdEditPhotoInfo);
        main.txtTitle.Text = title;
        main.txtYear.Text = "1998";
        main.txtPeople.Text = "Ren\u00E9";
        if (album->view.InfoEditing)
            robot.click(main.cmdEditPhotoInfo);
    }
    void append(const std::string& title, const std::vector<std::string>& groups)
    {
        in<frmSearch>(program->mainWindow()().mnuEditSearchAppend, "frmSearch", [&](frmSearch& form) {
            form.txtTitle.Text = title;
            robot.click(form.cmdSearch);
            for (const std::string& group : groups) {
                form.cmbGroupName.Text = group;
                robot.click(form.cmdSave);
            }
        });
    }
    // What the menus do to a group and its photographs, in the end to all of them.
    void act(const std::string& group, ScriptedPrompts& prompts)
    {
        frmMain& main = program->mainWindow()();
        const auto press = [&](int selected) {
            for (int row = 0; row < 8; ++row)
                if (main.lbAlbumList(row).Caption() == group)
                    robot.click(main.pctAlbumList(row));
            for (int i = 1; i <= std::min(selected, album->group.PhotoCount); ++i)
                main.selection().SetGroupListSelect(i, CtrlKey);
        };
        press(0);
        ASSERT_EQ(album->group.CurrentGroupName, group);
        for (int cell = 0; cell < std::min(16, album->group.PhotoCount); ++cell) {
            press(0);
            describe(cell, "mine, too");
        }
        press(0);
        robot.press(main.imgThumbnail(1));
        robot.moveTo(main.pctWindow, At{44, 66});
        robot.release();
        append("mine", {"Linked", "fresh", "Trip"});
        for (float y = 8; y < 40; y += 16) {
            press(100);
            robot.whenShown("frmGroups", [&] {
                desktop.DoEvents();
                robot.click(dynamic_cast<frmGroups&>(*desktop.activeForm()).lstGroups, LeftButton, NoKeys, At{20, y});
            });
            robot.choose(main.mnuEditAdd);
        }
        for (const char* name : {"fresh", "temp.group", "..\\..\\Documents\\x"}) {
            prompts.agreeWith(name);
            robot.choose(main.mnuFileCreate);
        }
        press(1);
        robot.choose(main.mnuEditRemoveFromGroup);
        if (group != "Trip")
            return;
        press(100);
        robot.choose(main.mnuEditRemoveFromAlbum);
        prompts.agreeWith("../../Documents/x");
        robot.choose(main.mnuFileRenameGroup);
        robot.choose(main.mnuFileRemove);
    }
    std::size_t countIn(const std::string& place) const { return everything("Library/" + place + "/").size(); }
    // Takes two photographs in, finds them and brings them out again, by the entries of the main window.
    void travel()
    {
        frmMain& main = program->mainWindow()();
        in<frmImport>(main.mnuFileImport, "frmImport", [&](frmImport& form) {
            form.Dir1.Path = folder.inside("in");
            form.chkOptions(3).Value = 0;
            for (int i = 0; i < form.File1.ListCount(); ++i)
                form.File1.setSelected(i, true);
            robot.click(form.cmdAddFile);
            robot.click(form.cmdImport);
        });
        for (const auto& [cell, title] : {std::pair{2, "\u00C4"}, {3, "\u00C4, \u5C71"}}) {
            describe(cell, title);
            robot.click(main.pctAlbumList(0));
        }
        append("\u00E4", {"Gr\u00F6\u00DFe \u5C71"});
        robot.click(main.pctAlbumList(1));
        robot.click(main.imgThumbnail(2));
        robot.click(main.imgThumbnail(3), LeftButton, CtrlKey);
        in<frmExport>(main.mnuFileExport, "frmExport", [&](frmExport& form) {
            form.Dir1.Path = folder.inside("out");
            form.chkExport(2).Value = 1;
            robot.click(form.cmdExport);
            form.optExportInfo(0).Value = true;
            robot.click(form.cmdExport);
        });
    }

    Desktop& desktop = testDesktop();
    TemporaryFolder folder{getenv(FolderVariable)};
    std::unique_ptr<Album> album;
    std::unique_ptr<Program> program;
    const std::vector<std::string> names{"Z\u00FCrich.jpg", "\u5C71.bmp"};
    Robot robot{desktop};
};

TEST_F(Start, MakesALibraryWithOneNoticeAndASkippedOneTakesOnlyTheHalfWrittenAway)
{
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(everything(),
        (std::set<std::string>{"Library", "Library/Help", "Library/Photo_Audio", "Library/Photo_Info",
            "Library/Photo_Midi", "Library/Photo_SlideGroups",
            "Library/Photo_SlideGroups/  All Photos  .lst: ", "Library/Photo_Thumbnails", "Library/Photos"}));
    EXPECT_FALSE(program->splash().isLoaded());
    EXPECT_EQ(desktop.Screen().MousePointer(), DefaultPointer);
    EXPECT_EQ(program->mainWindow()().lbStatusCount.Caption(), "Photo 0 of 0");
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

    frmMain& main = program->mainWindow()();
    for (const auto& [entry, dialog] :
        {std::pair{&main.mnuFileMidi, "frmAddMidiWav"}, {&main.mnuEditWaveLink, "frmAddMidiWav"},
            {&main.mnuViewSlideshow, "frmSSP"}, {&main.mnuHelpAbout, "frmAbout"}})
        in<Form>(*entry, dialog, [](Form&) {});
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

TEST_F(Start, OfABrokenSettingsStoreSaysSoAndEndsTheProgram)
{
    fs::create_directories(folder.native("config/OmbrelaneWorks/settings.txt"));
    ScriptedPrompts prompts(desktop);
    prompts.expectNotice("Critical Error-SubMain: SlideGroup path is blank!");
    EXPECT_EQ(start(), 1);
    EXPECT_EQ(desktop.formsCount(), 0);
}

TEST_F(Start, OfAStrangersAlbumAndAllActsOfTheMenusLeaveEveryFileOutsideAsItIs)
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
        for (const std::string group : {"", "Linked", "  All Photos  ", "Trip"}) {
            if (!group.empty() && (way != "skipped" || !isAllPhotosGroup(group))) // of which there is none then
                act(group, prompts);
            const auto after = everything("Documents");
            for (const std::string& file : after)
                EXPECT_TRUE(before.contains(file)) << way << group << " writes " << file.substr(0, 50);
            EXPECT_EQ(after.size(), before.size()) << way << group;
        }
        EXPECT_EQ(folder.read("Library/Photo_SlideGroups/note.txt"), "private");
        EXPECT_EQ(fs::exists(folder.native("Library/Photos/.new-99999999-0")), way == "read-only") << "left by a kill";
        if (way != "read-only")
            EXPECT_TRUE(folder.read("Library/Trovarium.Log").starts_with("Created"));
        else // it works on the installed copy
            EXPECT_TRUE(everything("Library") == library && !everything("data/OmbrelaneWorks/Trovarium/CD-").empty());
    }
}

TEST_F(Start, AsksOnceForEachFolderThatLeadsOutOfTheLibraryAndEndsBeforeAnythingIsWritten)
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
        code = runUntilKilled(folder.path(), 0, step);
        EXPECT_EQ(start(), 0);
        const std::set<std::string> after = everything();
        for (const std::string& text : before) {
            const auto kept = after.lower_bound(text); // a list may have grown
            EXPECT_TRUE(text.starts_with("config") || (kept != after.end() && kept->starts_with(text))) << text;
        }
        const auto photographs = countIn("Photos");
        EXPECT_EQ(countIn("Photo_Info"), photographs);
        EXPECT_EQ(album->group.PhotoCount, photographs);
        start(); // for the thumbnail of what had no information at the last
        EXPECT_EQ(countIn("Photo_Thumbnails"), photographs);
    }
    EXPECT_EQ(code, 0);
    EXPECT_GT(step, 40);
    for (const std::string& name : names) {
        EXPECT_EQ(folder.read("out/" + name), folder.read("in/" + name));
        EXPECT_EQ(fs::last_write_time(folder.native("out/" + name)), fs::last_write_time(folder.native("in/" + name)));
        EXPECT_EQ(folder.read("out/" + name + ".info"), folder.read("Library/Photo_Info/" + name + ".info"));
    }
    EXPECT_EQ(folder.read("out/Trovarium_Info.csv"),
        "CSV\r\nInfoFile,Event,Keywords,People,Photographer,Place,Title,Year,ImageWidth,ImageHeight\r\n"
        "Z\xFCrich.jpg.info,,,Ren\xE9,,,\xC4,1998,,\r\n"
        "\u5C71.bmp.info,,,Ren\u00E9,,,\u00C4, \u5C71,1998,,\r\n");
}

} // namespace trovarium
