// SPDX-License-Identifier: GPL-3.0-or-later

#include "import/AutoScan.h"

#include "import/ImportWindow.h"

namespace trovarium {

using AutoScanTest = ImportWindow;

TEST_F(AutoScanTest, FilesComeByTypeThenFolderAndAreSplit)
{
    putSources(
        {"B.jpg", "a.avi", "c.bmp", "no.txt", "Sub/a.jpg", "Sub/d.bmp", "Sub/Deep/z.JPG", "Aft/x.jpg", ".h/y.jpg"});
    std::filesystem::create_directory_symlink(toNativePath(sources()), toNativePath(sources() + "\\Loop"));
    inDialog([&] {
        ListBox& list = form().List1;
        list.AddItem("hand.jpg");
        form().List2.AddItem("\\Mine");
        form().chkFilter(6).Value = 0;
        desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
            if (operation == FileOperation::Length && path.ends_with("z.JPG"))
                form().Dir1.Path = sources() + "\\Sub"; // from where the next type is searched
        });
        robot.click(form().cmdAutoScan);
        EXPECT_EQ(entries(), "|hand.jpg \\|B.jpg \\Aft\\|x.jpg \\Sub\\|a.jpg \\Sub\\Deep\\|z.JPG \\Sub\\|d.bmp ");
        EXPECT_EQ(form().lbCount.Caption() + form().cmdAutoScan.Caption(), "5&Auto-Scan (and sub-folders)");
        list.setSelected(0, true);
        list.Enabled = false; // as while the paths are split
        robot.click(form().cmdRemoveFile);
        EXPECT_EQ(list.ListCount(), 6);
    });
}

TEST_F(AutoScanTest, TheSecondPressCancelsAndLeavesWhatIsFoundAndClosingEndsItToo)
{
    putSources({"a.jpg", "b.jpg", "c.jpg", "d.bmp"});
    int measured = 0;
    inDialog([&] {
        desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
            if (operation != FileOperation::Length || !path.ends_with("b.jpg"))
                return;
            EXPECT_EQ(form().cmdAutoScan.Caption(), "&Cancel");
            robot.click(form().cmdAutoScan);
            EXPECT_EQ(form().DialogBusy ? "busy" : form().cmdAutoScan.Caption(), "&Auto-Scan (and sub-folders)");
        });
        robot.click(form().cmdAutoScan);
        EXPECT_EQ(entries(), "\\|a.jpg -|\\b.jpg ");
        EXPECT_TRUE(form().List1.Enabled() && form().List2.Enabled());
        desktop.files().setFaultHook([&](FileOperation operation, std::string_view) {
            if (operation == FileOperation::Length && ++measured == 1)
                robot.close(form());
        });
        robot.click(form().cmdAutoScan);
    });
    EXPECT_EQ(measured, 1);
}

TEST_F(AutoScanTest, AFailureEndsItsFolderAlone)
{
    putSources({"1/a.jpg", "1/In/b.jpg", "1/x.sys", "2/X.SYS", "2/c.jpg", "3/d.jpg", "4/e.jpg", "5/f.jpg"});
    inDialog([&] {
        desktop.files().setFaultHook([](FileOperation operation, std::string_view path) {
            const bool examined = operation == FileOperation::Attributes;
            if ((examined && (path.ends_with("x.sys") || path.ends_with("X.SYS")))
                || (operation == FileOperation::Length && path.ends_with("d.jpg"))
                || (operation == FileOperation::List && path.ends_with("\\4\\")))
                throw Failure(FailureKind::PathFileAccess);
        });
        robot.click(form().cmdAutoScan);
        EXPECT_EQ(entries(), "\\1\\|a.jpg \\1\\In\\|b.jpg \\5\\|f.jpg ");
    });
}

} // namespace trovarium
