// SPDX-License-Identifier: GPL-3.0-or-later

#include "MainWindow.h"

namespace trovarium {

using MainWindowTest = MainWindow;

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
