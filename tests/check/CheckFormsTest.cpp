#include "LibraryCheck.h"

#include "support/Robot.h"

#include <utility>

namespace trovarium {

using CheckFormsTest = LibraryCheck;

TEST_F(CheckFormsTest, TheSplashFormTellsItsVersionAndOnlyItsButtonSkips)
{
    splash().load();
    splash().show();
    EXPECT_EQ(splash().lblVersion.Caption(), "Version " TROVARIUM_VERSION);
    EXPECT_FALSE(splash().tmrSplash.Enabled());
    splash().Click.raise();
    splash().KeyPress.raise(27);
    EXPECT_TRUE(splash.isLoaded());
    EXPECT_FALSE(test.album().AutoCheckBypass);
    Robot(desktop).click(splash().cmdByPassAutoCheck);
    EXPECT_TRUE(test.album().AutoCheckBypass);
    EXPECT_TRUE(splash.isLoaded());
    splash().tmrSplash_Timer();
    EXPECT_FALSE(splash.isLoaded());
}

TEST_F(CheckFormsTest, ASkipBeforeTheFirstFileEndsTheCheckAtThatFile)
{
    for (const char* name : {"gone1.bmp", "gone2.bmp"})
        addInfoFile(name);
    splash().load();
    splash().show();
    Robot robot(desktop);
    robot.atNextTurn([&] { robot.click(splash().cmdByPassAutoCheck); });
    RepairPasses(test.album(), splash(), builder).CheckFolderContents();
    for (const float beyond : {1.5F, -0.1F})
        splash().UpdateSplashProgress(beyond, 1);
    EXPECT_EQ(splash().pctProgress.Width(), splash().shpProgress.Width());
    EXPECT_EQ(logged("CheckPhotoLink", "File not found"), 1) << log();
    EXPECT_TRUE(test.isThere(infoFile("gone1.bmp")));
    EXPECT_FALSE(test.isThere(groupList("  All Photos  .lst")));
    splash().unload();
}

} // namespace trovarium
