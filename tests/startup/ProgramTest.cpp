#include "Start.h"
#include "support/ScriptedPrompts.h"
#include "support/TestAlbum.h"

namespace trovarium {

TEST_F(Start, OnAnEmptyFolderMakesALibraryAndShowsTheMainWindowWithOneNotice)
{
    Robot robot(desktop);
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(everything(),
        (std::set<std::string>{"Library", "Library/Help", "Library/Photo_Audio", "Library/Photo_Info",
            "Library/Photo_Midi", "Library/Photo_SlideGroups",
            "Library/Photo_SlideGroups/  All Photos  .lst: ", "Library/Photo_Thumbnails", "Library/Photos"}));
    EXPECT_FALSE(program->splash().isLoaded());
    EXPECT_EQ(desktop.Screen().MousePointer(), DefaultPointer);
    EXPECT_EQ(program->mainWindow()().lbStatusCount.Caption(), "Photo 0 of 0");
    EXPECT_EQ(album->paths.ProgramFolder, folder.inside("Library"));
    bool isTold = false;
    robot.whenShown("frmFirstTime", [&] {
        isTold = true;
        robot.close(*desktop.activeForm());
    });
    EXPECT_TRUE(robot.until([&] { return isTold && desktop.formsCount() == 1; }));

    const auto before = everything();
    make(folder.inside("Library") + "\\"); // in a root
    EXPECT_EQ(runMain(), 0);
    desktop.DoEvents();
    EXPECT_EQ(desktop.formsCount(), 1);
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(album->paths.PhotoPath, folder.inside("Library") + "\\Photos\\");

    program->mainWindow()().dialogs().showFullScreen();
    ASSERT_EQ(desktop.formsCount(), 2);
    program->mainWindow()().unload();
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
    make(folder.inside("Library"));
    desktop.files().setFaultHook(readOnlyBelow(folder.inside("Library")));
    EXPECT_EQ(runMain(), 0) << "and asks for no thumbnail";
    EXPECT_EQ(everything("Library"), before);
    const std::string moved = "data/OmbrelaneWorks/Trovarium/CD-5/Photo_Slidegroups/";
    EXPECT_EQ(folder.read(moved + "Trip.lst"), "a.jpg\r\n");
    EXPECT_EQ(folder.read(moved + "  All Photos  .lst"), "a.jpg\r\nb.jpg\r\n");
}

TEST_F(Start, ThatIsSkippedFromTheFirstChangesNothingButTakesTheHalfWrittenAway)
{
    start();
    folder.write("Library/Photo_SlideGroups/Trip.lst", "none.jpg\r\n");
    folder.write("Library/Photos/a.jpg", "x");
    const auto before = everything();
    for (const std::string part :
        {"Photos", "Photo_Info", "Photo_Thumbnails", "Photo_SlideGroups", "Photo_Audio", "Photo_Midi"}) {
        const std::string leftOver = "Library/" + part + "/.new-99999999-0";
        folder.write(leftOver, "half");
        fs::last_write_time(folder.native(leftOver), fs::file_time_type::clock::now() - std::chrono::hours(25));
    }
    make(folder.inside("Library"));
    Robot robot(desktop);
    robot.whenShown("frmSplash", [&] { robot.click(program->splash()().cmdByPassAutoCheck); });
    EXPECT_EQ(runMain(), 0);
    EXPECT_EQ(everything(), before);
}

} // namespace trovarium
