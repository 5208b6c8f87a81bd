#include "import/AutoScan.h"

#include "import/ImportWindow.h"
#include "runtime/Failure.h"
#include "store/Album.h"

namespace trovarium {

class AutoScanTest : public ImportWindow {
protected:
    void scan() { robot.click(form().cmdAutoScan); }
    void fillList(int count)
    {
        for (int i = 0; i < count; ++i)
            form().List1.AddItem("old");
    }

    const std::string limitNotice = "Notice: File count for located media has been exceeded. Some of the specified "
                                    "folders may have not been completely searched.";
};

TEST_F(AutoScanTest, FilesComeByTypeThenFolderAndAreSplit)
{
    for (const char* name :
        {"B.jpg", "a.avi", "c.bmp", "no.txt", "Sub/a.jpg", "Sub/Deep/z.JPG", "Aft/x.jpg", ".h/y.jpg"})
        putSource(name);
    std::filesystem::create_directory_symlink(toNativePath(sources()), toNativePath(sources() + "\\Loop"));
    inDialog([&] {
        form().List2.AddItem("\\Mine");
        form().List1.AddItem("hand.jpg");
        std::int32_t files = 0;
        std::int32_t folders = 0;
        ListBox& list = form().List2; // any list will do
        std::string path = sources();
        EXPECT_EQ(form().autoScan().FindFiles(path, "*.jpg", files, folders, list, form().DialogBusy), 4);
        EXPECT_EQ(path, sources() + "\\");
        EXPECT_EQ(files, 4);
        EXPECT_EQ(folders, 3);
        while (list.ListCount() > 1)
            list.RemoveItem(1);

        form().chkFilter(6).Value = 0;
        scan();
        EXPECT_EQ(entries(),
            (std::vector<std::string>{
                "|hand.jpg", "\\|B.jpg", "\\Aft\\|x.jpg", "\\Sub\\|a.jpg", "\\Sub\\Deep\\|z.JPG", "\\|c.bmp"}));
        EXPECT_EQ(form().lbCount.Caption(), "5") << "the last index";
        EXPECT_EQ(form().cmdAutoScan.Caption(), "&Auto-Scan (and sub-folders)");
        EXPECT_FALSE(form().DialogBusy);
        scan();
        EXPECT_EQ(form().List1.ListCount(), 11) << "a second scan doubles";
    });
}

TEST_F(AutoScanTest, TheSecondPressCancelsAndLeavesWhatIsFound)
{
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg", "d.bmp"})
        putSource(name);
    inDialog([&] {
        desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
            if (operation != FileOperation::Length || !path.ends_with("b.jpg"))
                return;
            EXPECT_EQ(form().cmdAutoScan.Caption(), "&Cancel");
            EXPECT_EQ(form().MousePointer(), ArrowHourglassPointer);
            scan();
            EXPECT_EQ(form().cmdAutoScan.Caption(), "&Auto-Scan (and sub-folders)");
            EXPECT_FALSE(form().DialogBusy);
        });
        scan();
        EXPECT_EQ(entries(), (std::vector<std::string>{"\\|a.jpg", "-|\\b.jpg"}));
        EXPECT_TRUE(form().List1.Enabled());
        EXPECT_EQ(form().MousePointer(), DefaultPointer);
    });
}

TEST_F(AutoScanTest, ClosingTheWindowEndsTheScan)
{
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg"})
        putSource(name);
    int measured = 0;
    inDialog([&] {
        desktop.files().setFaultHook([&](FileOperation operation, std::string_view) {
            if (operation != FileOperation::Length)
                return;
            ++measured;
            form().unload();
        });
        scan();
    });
    EXPECT_EQ(measured, 1);
}

TEST_F(AutoScanTest, TheLimitIsSoftAndToldOnce)
{
    for (const char* name : {"1/a.jpg", "1/b.jpg", "1/c.jpg", "2/d.jpg", "2/e.jpg", "3/f.jpg", "g.bmp"})
        putSource(name);
    inDialog([&] {
        form().lbCount.Visible = false; // which is painted 64,000 times otherwise
        fillList(31999);
        prompts.expectNotice(limitNotice);
        scan();
        EXPECT_EQ(form().List1.ListCount(), 31999 + 4) << "one more for each folder, and no further type";
        prompts.verify();
        scan();
        EXPECT_EQ(form().List1.ListCount(), 31999 + 4);
        EXPECT_EQ(form().List2.ListCount(), 31999 + 4) << "what was there is split again";
    });
}

TEST_F(AutoScanTest, AFailureEndsItsFolderAlone)
{
    for (const char* name : {"1/a.jpg", "1/In/b.jpg", "1/x.sys", "2/X.SYS", "2/c.jpg", "3/d.jpg", "4/e.jpg", "5/f.jpg"})
        putSource(name);
    inDialog([&] {
        desktop.files().setFaultHook([](FileOperation operation, std::string_view path) {
            const bool examined = operation == FileOperation::Attributes;
            if ((examined && (path.ends_with("x.sys") || path.ends_with("X.SYS")))
                || (operation == FileOperation::Length && path.ends_with("d.jpg"))
                || (operation == FileOperation::List && path.ends_with("\\4\\")))
                throw Failure(FailureKind::PathFileAccess);
        });
        scan();
        EXPECT_EQ(entries(), (std::vector<std::string>{"\\1\\|a.jpg", "\\1\\In\\|b.jpg", "\\5\\|f.jpg"}));
    });
    // Once for each type; a file is only measured for its own.
    EXPECT_EQ(logLines(),
        std::vector<std::string>(15, "An error has occurred in 'FindFiles'. Error = Path/File access error"));
}

// No folder of the root is entered.
TEST_F(AutoScanTest, AFolderOfTheRootIsToldAsItIsElsewhere)
{
    inDialog([&] {
        std::string entered;
        desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
            if (operation != FileOperation::List || path.starts_with("/\\*") || path == "/\\")
                return;
            entered = path;
            throw Failure(FailureKind::PathFileAccess);
        });
        std::string root = "/";
        std::int32_t count = 0;
        form().autoScan().FindFiles(root, "*.jpg", count, count, form().List1, form().DialogBusy);
        EXPECT_TRUE(entered.starts_with("/") && entered[1] != '\\') << entered;
    });
}

} // namespace trovarium
