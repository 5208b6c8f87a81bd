#include "MainWindow.h"

#include "browser/GroupListPane.h"
#include "browser/MainMenus.h"
#include "browser/ThumbnailPages.h"
#include "platform/toolkit/Desktop.h"

#include <map>

namespace trovarium {

namespace {

using MainWindowTest = MainWindow;

} // namespace

TEST_F(MainWindowTest, EntriesAreEnabledByTheGroupOfTheCurrentRow)
{
    openGroup(0, 8);
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
    robot.click(main().pctArrows(2));
    main().mnuFile.Click.raise();
    EXPECT_TRUE(main().mnuFileRemove.Enabled()) << "by the name that the row shows";
}

TEST_F(MainWindowTest, StatusTextsOfTheLargestGroupStandWholeInsideTheirPanels)
{
    open();
    const std::map<Label*, std::string> texts{{&main().lbZoom, "Zoom  32767/"},
        {&main().lbStatusSelected, "Selected 3276"}, {&main().lbStatusPage, "Page 2048 of 204"},
        {&main().lbStatusCount, "Photo 32767 of 3276"}};
    for (const auto& [label, text] : texts) {
        for (const int scale : {1, 2}) {
            label->Caption = text + "6";
            const Shot first = robot.shot(main(), scale);
            label->Caption = text + "8";
            EXPECT_FALSE(robot.shot(main(), scale) == first) << "the last digit of " << text << " isn't there";
        }
    }
    constexpr Color Red{255, 0, 0};
    main().lbStatusCount.BackColor = Red;
    const Shot shot = robot.shot(main());
    const int left = (10200 + 30 + 30) / 15; // the panel, its border, the label
    EXPECT_NE(shot.at(left - 1, 554), Red);
    EXPECT_EQ(shot.at(left, 554), Red);
    EXPECT_EQ(main().Picture4(3).ScaleWidth(), main().cmdPlayAudioClip(1).Left() + main().cmdPlayAudioClip(1).Width());
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
    openGroup(3);
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
