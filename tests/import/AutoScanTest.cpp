#include "import/AutoScan.h"

#include "import/ImportWindow.h"

namespace trovarium {

class AutoScanTest : public ImportWindow { };

TEST_F(AutoScanTest, FilesComeByTypeThenFolderAndAreSplit)
{
    putSources({"B.jpg", "a.avi", "c.bmp", "no.txt", "Sub/a.jpg", "Sub/Deep/z.JPG", "Aft/x.jpg", ".h/y.jpg"});
    std::filesystem::create_directory_symlink(toNativePath(sources()), toNativePath(sources() + "\\Loop"));
    inDialog([&] {
        ListBox& list = form().List1;
        std::int32_t files = 0;
        std::int32_t folders = 0;
        const auto find = [&](std::string& path) {
            return form().autoScan().FindFiles(path, "*.jpg", files, folders, list, form().DialogBusy);
        };
        std::string path = sources();
        EXPECT_EQ(find(path), 4);
        EXPECT_EQ(path + " " + std::to_string(10 * files + folders), sources() + "\\ 43");
        list.Clear();
        list.AddItem("hand.jpg");
        form().List2.AddItem("\\Mine");
        form().chkFilter(6).Value = 0;
        robot.click(form().cmdAutoScan);
        EXPECT_EQ(entries(), "|hand.jpg \\|B.jpg \\Aft\\|x.jpg \\Sub\\|a.jpg \\Sub\\Deep\\|z.JPG \\|c.bmp ");
        EXPECT_EQ(form().lbCount.Caption() + form().cmdAutoScan.Caption(), "5&Auto-Scan (and sub-folders)");
        robot.click(form().cmdAutoScan);
        EXPECT_EQ(list.ListCount(), 11) << "a second scan doubles";

        // The root is listed, and nothing in it.
        std::string entered;
        desktop.files().setFaultHook([&](FileOperation operation, std::string_view listed) {
            if (operation != FileOperation::List || listed.size() < 3 || listed[2] == '*')
                return;
            entered = listed;
            throw Failure(FailureKind::PathFileAccess);
        });
        path = "/";
        find(path);
        EXPECT_TRUE(entered.starts_with('/') && !entered.starts_with("/\\")) << entered;
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
            EXPECT_EQ(form().MousePointer(), ArrowHourglassPointer);
            robot.click(form().cmdAutoScan);
            EXPECT_EQ(form().cmdAutoScan.Caption(), "&Auto-Scan (and sub-folders)");
            EXPECT_FALSE(form().DialogBusy);
        });
        robot.click(form().cmdAutoScan);
        EXPECT_EQ(entries(), "\\|a.jpg -|\\b.jpg ");
        EXPECT_TRUE(form().List1.Enabled() && form().MousePointer() == DefaultPointer);
        desktop.files().setFaultHook([&](FileOperation operation, std::string_view) {
            if (operation == FileOperation::Length && ++measured == 1)
                form().unload();
        });
        robot.click(form().cmdAutoScan);
    });
    EXPECT_EQ(measured, 1);
}

TEST_F(AutoScanTest, TheLimitIsSoftAndToldOnce)
{
    putSources({"1/a.jpg", "1/b.jpg", "1/c.jpg", "2/d.jpg", "2/e.jpg", "3/f.jpg", "g.bmp"});
    inDialog([&] {
        form().lbCount.Visible = false; // which is painted 64,000 times otherwise
        for (int i = 0; i < 31999; ++i)
            form().List1.AddItem("old");
        prompts.expectNotice("Notice: File count for located media has been exceeded. Some of the specified folders "
                             "may have not been completely searched.");
        robot.click(form().cmdAutoScan);
        EXPECT_EQ(form().List1.ListCount(), 31999 + 4) << "one more for each folder, and no further type";
    });
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
    // Once for each type; a file is only measured for its own.
    EXPECT_EQ(logLines(),
        std::vector<std::string>(15, "An error has occurred in 'FindFiles'. Error = Path/File access error"));
}

} // namespace trovarium
