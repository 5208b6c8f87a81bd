#include "MainWindow.h"

#include "browser/GroupListPane.h"
#include "browser/MainMenus.h"
#include "browser/ThumbnailPages.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Screen.h"

namespace trovarium {

namespace {

using MainWindowTest = MainWindow;

} // namespace

TEST_F(MainWindowTest, EntriesAreEnabledByTheGroupOfTheCurrentRow)
{
    putGroup("  All Photos  ", {});
    putGroup("Alps", {});
    open();
    for (const int row : {0, 1, 0}) {
        SCOPED_TRACE(row);
        pressRow(row);
        main().mnuFile.Click.raise();
        main().mnuEdit.Click.raise();
        EXPECT_EQ(main().mnuFileRemove.Enabled(), row != 0);
        EXPECT_EQ(main().mnuFileRenameGroup.Enabled(), row != 0);
        EXPECT_EQ(main().mnuEditMove.Enabled(), row != 0);
        EXPECT_TRUE(main().mnuEditRemoveFromGroup.Enabled());
        EXPECT_TRUE(main().mnuEditRemoveFromAlbum.Enabled());
        EXPECT_FALSE(main().mnuEditSort.Enabled());
    }
}

TEST_F(MainWindowTest, EntriesWithoutADialogStandDisabled)
{
    open();
    for (const Menu* entry :
        {&main().mnuFileMidi, &main().mnuFileImport, &main().mnuFileExport, &main().mnuEditSearchAppend,
            &main().mnuEditWaveLink, &main().mnuViewSlideshow, &main().mnuHelpContents, &main().mnuHelpAbout,
            &main().mnuGroupMidi, &main().mnuGroupImport, &main().mnuGroupExport, &main().mnuGroupSearchAppend})
        EXPECT_FALSE(entry->Enabled()) << entry->Name();
    EXPECT_FALSE(main().cmdSlideshow.Enabled());
    robot.click(main().lbButtonText(7));
    EXPECT_TRUE(prompts.asked().empty());
}

TEST_F(MainWindowTest, TheWelcomeComesOnceInTheLifeOfAnInstallation)
{
    test.setSetting("Options", "FirstTime", "True");
    open();
    EXPECT_TRUE(robot.until([&] { return firstTimeShown == 1; }));
    main().unload();
    desktop.DoEvents();
    open();
    main().Form_Activate();
    EXPECT_EQ(firstTimeShown, 1);
}

TEST_F(MainWindowTest, ItOpensInTheMiddleOfTheScreen)
{
    open();
    EXPECT_NEAR(main().Left() * 2 + main().Width(), desktop.Screen().Width(), 60);
    EXPECT_NEAR(main().Top() * 2 + main().Height(), desktop.Screen().Height(), 900); // a window's frame is not known
    EXPECT_EQ(main().ScaleWidth(), 800);
    EXPECT_EQ(main().ScaleHeight(), 572);
    EXPECT_EQ(main().framInfo.Top(), 469 - 15) << "a strip of the box shows";
    EXPECT_EQ(main().picVideoWindow.Left(), 545 + 20);
}

TEST_F(MainWindowTest, ARightPressOnTheBareFormShowsTheHelpMenu)
{
    open();
    bool opened = false;
    robot.whenMenuOpens([&] {
        opened = true;
        robot.dismissMenu();
    });
    robot.press(main(), At{780, 300}, RightButton);
    EXPECT_TRUE(opened);
    robot.click(main(), At{780, 300});
    robot.click(main().pctWindow, RightButton, NoKeys, At{5, 5}); // a menu here would wait for ever
}

TEST_F(MainWindowTest, ALabelActsForTheButtonBeneathIt)
{
    putPhotos(names(3));
    putGroup("  All Photos  ", names(3));
    open();
    robot.click(main().imgThumbnail(0));
    robot.click(main().lbButtonText(0));
    EXPECT_EQ(main().lbStatusCount.Caption(), "Photo 1 of 3");
    EXPECT_TRUE(main().imgbox.Visible());
    robot.click(main().lbButtonText(0));
    EXPECT_EQ(view().CurrentIndex, 2);
    robot.click(main().lbButtonText(1));
    EXPECT_EQ(view().CurrentIndex, 1);
    robot.click(main().lbButtonText(6));
    EXPECT_EQ(view().ZoomLevel, 2);
    robot.click(main().lbButtonText(5));
    EXPECT_EQ(view().ZoomLevel, 1);
    robot.click(main().lbButtonText(8));
    EXPECT_EQ(fullScreenShown, 1);
}

TEST_F(MainWindowTest, ExitUnloadsTheWindowAndEndsTheProgram)
{
    open();
    main().tmrInfoBox.Enabled = true;
    Timer* timer = &main().tmrInfoBox;
    const int exitCode = desktop.guarded([&] {
        EXPECT_THROW(main().menus().mnuFileExit_Click(), ProgramEnd);
        EXPECT_FALSE(timer->Enabled());
        EXPECT_EQ(formsUnloaded, 1);
    });
    EXPECT_EQ(exitCode, 0);
    EXPECT_FALSE(isOpen());
}

} // namespace trovarium
