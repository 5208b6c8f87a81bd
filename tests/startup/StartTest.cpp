#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "startup/Program.h"
#include "startup/UnloadAllForms.h"
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
        for (const std::string name :
            {"Library/Photos", "Library/Photo_Info", "Library/Photo_SlideGroups", "in", "out"})
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
            robot.doubleClick(main.imgThumbnail(cell));
            robot.click(main.cmdEditPhotoInfo);
            main.txtTitle.Text = title;
            main.txtYear.Text = "1998";
            main.txtPeople.Text = "Ren\u00E9";
            robot.click(main.cmdEditPhotoInfo);
            robot.click(main.pctAlbumList(0));
        }
        in<frmSearch>(main.mnuEditSearchAppend, "frmSearch", [&](frmSearch& form) {
            form.txtTitle.Text = "\u00E4";
            robot.click(form.cmdSearch);
            form.cmbGroupName.Text = "Gr\u00F6\u00DFe \u5C71";
            robot.click(form.cmdSave);
        });
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
        robot.close(*desktop.activeForm());
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
}

TEST_F(Start, OfABrokenSettingsStoreSaysSoAndEndsTheProgram)
{
    fs::create_directories(folder.native("config/OmbrelaneWorks/settings.txt"));
    ScriptedPrompts prompts(desktop);
    prompts.expectNotice("Critical Error-SubMain: SlideGroup path is blank!");
    EXPECT_EQ(start(), 1);
    EXPECT_EQ(desktop.formsCount(), 0);
}

TEST_F(Start, OfAReadOnlyLibraryWorksOnTheInstalledCopy)
{
    start();
    album->Settings().SetOWSetting("Trovarium", "Options", "AutoFix", "False");
    folder.write("Library/Photos/a.jpg", "12345");
    for (const std::string name : {"a", "b"})
        folder.write("Library/Photo_Info/" + name + ".jpg.info", "PhotoPath=\\Photos\\a.jpg\r\n");
    folder.write("Library/Photo_SlideGroups/Trip.lst", "a.jpg\r\nnone.jpg\r\n");
    const auto before = everything("Library");
    EXPECT_EQ(start({}, readOnlyBelow(folder.inside("Library"))), 0) << "and asks for no thumbnail";
    EXPECT_EQ(everything("Library"), before);
    const std::string moved = "data/OmbrelaneWorks/Trovarium/CD-5/Photo_Slidegroups/";
    EXPECT_EQ(folder.read(moved + "Trip.lst"), "a.jpg\r\n");
    EXPECT_EQ(folder.read(moved + "  All Photos  .lst"), "a.jpg\r\nb.jpg\r\n");
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
