#include "MainWindow.h"

namespace trovarium {

using MainWindowTest = MainWindow;

TEST_F(MainWindowTest, EachEntryOpensWhatItNames)
{
    test.setSetting("Options", "FirstTime", "True");
    openGroup(3);
    EXPECT_TRUE(robot.until([&] { return opened == "welcome "; }));
    main().dialogs().showGroups = [&](int mode) { opened += mode == 1 ? "copy " : "move "; };
    for (Menu* entry : {&main().mnuFileImport, &main().mnuGroupImport, &main().mnuFileExport, &main().mnuGroupExport,
             &main().mnuEditSearchAppend, &main().mnuGroupSearchAppend, &main().mnuFileMidi, &main().mnuGroupMidi,
             &main().mnuEditWaveLink, &main().mnuViewSlideshow, &main().mnuHelpAbout, &main().mnuEditAdd,
             &main().mnuThumbAdd, &main().mnuEditMove, &main().mnuThumbMove})
        entry->Click.raise();
    main().Form_Activate(); // the welcome came once in the life of the installation
    EXPECT_EQ(
        opened, "welcome import import export export search search midi midi wav show about copy copy move move ");
    prompts.agreeWith("");
    for (Menu* entry : {&main().mnuGroupNewGroup, &main().mnuThumbMoveNewGroup, &main().mnuFileRenameGroup,
             &main().mnuGroupRenameGroup, &main().mnuFileRemove})
        entry->Click.raise();
    std::string titles;
    for (const ScriptedPrompts::Asked& asked : prompts.asked())
        titles += asked.title + ",";
    EXPECT_EQ(titles, "New Album Group,New Album Group,Rename Group,Rename Group,,");
    EXPECT_EQ(rows(), (Names{"  All Photos  ", "Rome"}));
    EXPECT_FALSE(main().mnuEditSort.Enabled() || main().mnuGroupSort.Enabled());
    robot.whenMenuOpens([&] { robot.dismissMenu(); });
    robot.click(main(), At{780, 300}, RightButton);
}

TEST_F(MainWindowTest, ALabelActsForTheButtonBeneathIt)
{
    openGroup(3);
    main().pctNext.Enabled = false;
    for (const auto& [label, shown] : {std::pair{0, "1 -1"}, {0, "2 -1"}, {1, "1 -1"}, {6, "1 2"}, {5, "1 1"}}) {
        robot.click(main().lbButtonText(label));
        EXPECT_EQ(std::to_string(view().CurrentIndex) + " " + std::to_string(view().ZoomLevel), shown) << label;
    }
    EXPECT_EQ(main().lbStatusCount.Caption(), "Photo 1 of 3");
    robot.click(main().lbButtonText(8));
    robot.click(main().lbButtonText(7));
    EXPECT_EQ(opened, "full show ");
}

TEST_F(MainWindowTest, AFolderThatCantBeListedIsLoggedWithoutAHintAndExitEndsTheProgram)
{
    test.failAt(FileOperation::List, "", FailureKind::PathNotFound);
    open();
    EXPECT_EQ(logLines().back(), "Form_Load: Type mismatch");
    desktop.files().setFaultHook({});
    putGroup("  All Photos  ", names(1));
    main().groupList().LoadGroupNames();
    main().groupList().reopenGroup();
    EXPECT_EQ(cells(), names(1)) << "an import opens the first group, when none is on show yet";
    main().tmrInfoBox.Enabled = true;
    main().dialogs().unloadAllForms = [&] { opened += main().tmrInfoBox.Enabled() ? "too early" : "all closed"; };
    EXPECT_THROW(main().mnuFileExit.Click.raise(), ProgramEnd);
    EXPECT_EQ(opened, "all closed");
    EXPECT_EQ(desktop.formsCount(), 0);
}

} // namespace trovarium
