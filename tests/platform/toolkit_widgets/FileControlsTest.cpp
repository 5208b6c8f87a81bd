#include "platform/toolkit/DriveList.h"
#include "platform/toolkit/FileList.h"
#include "platform/toolkit/FolderList.h"

#include "platform/system/MountedMedia.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Form.h"
#include "support/FailureOf.h"
#include "support/Robot.h"
#include "support/Surroundings.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace trovarium {

namespace {

class FileForm : public Form {
public:
    FileForm()
        : Form(testDesktop(), {.Name = "FileForm", .Width = 4500, .Height = 7500})
    {
        Drive1.Change.connect([this] { log += "Drive:" + Drive1.Drive() + " "; });
        Dir1.Change.connect([this] { log += "Dir:" + Dir1.Path() + " "; });
        File1.Click.connect([this] { log += "Click "; });
        File1.DblClick.connect([this] { log += "DblClick "; });
    }

    std::string files() const
    {
        std::string names;
        for (int i = 0; i < File1.ListCount(); ++i)
            names += (File1.Selected(i) ? "[" + File1.List(i) + "]" : File1.List(i)) + " ";
        return names;
    }
    std::string taken() { return std::exchange(log, {}); }

    DriveList Drive1{this, {.Name = "Drive1", .Width = 3000, .Height = 315}};
    FolderList Dir1{this, {.Name = "Dir1", .Top = 500, .Width = 4500, .Height = 3000}};
    FileList File1{this, {.Name = "File1", .Top = 4000, .Width = 4500, .Height = 3000}};
    std::string log;
};

class FileControlsTest : public testing::Test {
protected:
    ~FileControlsTest() override { form.unload(); }

    void files(std::initializer_list<const char*> names) const
    {
        for (const char* name : names)
            folder.write(name, "x");
    }
    void makeFolder(const std::string& name) const { std::filesystem::create_directories(folder.native(name)); }
    void show()
    {
        form.show();
        testDesktop().DoEvents();
    }
    int rowOf(const std::string& path) const
    {
        for (int row = 0; row < form.Dir1.ListCount(); ++row)
            if (form.Dir1.rowPath(row) == path)
                return row;
        ADD_FAILURE() << path << " has no row";
        return -1;
    }
    static At row(int index) { return {60, 8.0F + 16.0F * static_cast<float>(index)}; }

    TemporaryFolder folder;
    const VariableForNow home{"HOME", folder.path()};
    FileForm form;
    FileList& list = form.File1;
    FolderList& dir = form.Dir1;
    Robot robot{testDesktop()};
};

// They may be on no form that shows them.
TEST_F(FileControlsTest, BothListsBeginAtTheUsersFolderAndReadWhatIsAskedOrSeen)
{
    files({"a"});
    makeFolder("sub");
    int readings = 0;
    testDesktop().files().setFaultHook(
        [&](FileOperation operation, std::string_view) { readings += operation == FileOperation::List ? 1 : 0; });
    list.Visible = false;
    show();
    for (int i = 0; i < 16; ++i)
        list.Refresh();
    dir.Path = folder.inside();
    testDesktop().repaintOnly();
    EXPECT_EQ(readings, 1) << "of the folders";
    EXPECT_EQ(form.taken(), "") << "the file list is there already";
    EXPECT_EQ(form.files(), "a ");
    EXPECT_EQ(readings, 2);
    EXPECT_EQ(dir.rowPath(dir.ListCount() - 1), folder.inside("sub"));
    EXPECT_EQ(readings, 2);
}

TEST_F(FileControlsTest, AFileListShowsWhatMatchesItsPatternAndReadsForRefresh)
{
    files({"b.JPG", "a.jpg", "c.txt", ".hidden.jpg"});
    makeFolder("d.jpg");
    list.Path = folder.inside() + "\\";
    EXPECT_EQ(list.Path(), folder.inside()) << "without the separator at the end";
    EXPECT_EQ(form.files(), "a.jpg b.JPG c.txt ");
    list.Pattern = "*.abcde;*.jpg";
    EXPECT_EQ(form.files(), "a.jpg b.JPG ");
    files({"e.jpg"});
    list.Path = folder.inside();
    EXPECT_EQ(form.files(), "a.jpg b.JPG ") << "the same path";
    list.Refresh();
    EXPECT_EQ(form.files(), "a.jpg b.JPG e.jpg ");
}

TEST_F(FileControlsTest, APathThatCannotBeListedLeavesAllAsItWas)
{
    files({"a"});
    list.Path = folder.inside();
    list.setSelected(0, true);
    dir.Path = folder.inside();
    form.taken();
    const int rows = dir.ListCount();
    for (const std::string& path :
        {folder.inside("gone"), folder.inside("a"), std::string("relative"), std::string()}) {
        EXPECT_EQ(failureOf([&] { list.Path = path; }), "Path not found") << path;
        EXPECT_EQ(failureOf([&] { dir.Path = path; }), "Path not found") << path;
    }
    makeFolder("locked");
    testDesktop().files().setFaultHook([](FileOperation operation, std::string_view path) {
        if (operation == FileOperation::List && path.ends_with("locked"))
            throw Failure(FailureKind::PathFileAccess);
    });
    EXPECT_EQ(failureOf([&] { list.Path = folder.inside("locked"); }), "Path/File access error");
    EXPECT_EQ(failureOf([&] { dir.Path = folder.inside("locked"); }), "Path/File access error");
    std::filesystem::remove(folder.native("locked"));
    EXPECT_EQ(form.files(), "[a] ");
    EXPECT_EQ(list.Path(), folder.inside());
    EXPECT_EQ(dir.Path(), folder.inside());
    EXPECT_EQ(dir.ListCount(), rows);
    EXPECT_EQ(form.taken(), "");
    makeFolder("sub");
    files({"sub/a"});
    list.Path = folder.inside("sub");
    std::filesystem::remove_all(folder.native("sub"));
    list.Refresh();
    EXPECT_EQ(form.files(), "") << "a folder that is gone has no files";
    EXPECT_EQ(failureOf([&] { (void)list.List(0); }), "Invalid property array index");
}

TEST_F(FileControlsTest, TheUserChoosesSeveralFilesAndOpensOne)
{
    files({"a", "b", "c", "d"});
    show();
    robot.click(list, LeftButton, NoKeys, row(0));
    robot.click(list, LeftButton, CtrlKey, row(2));
    EXPECT_EQ(form.files(), "[a] b [c] d ");
    EXPECT_EQ(form.taken(), "Click Click ");
    robot.click(list, LeftButton, ShiftKey, row(3));
    EXPECT_EQ(form.files(), "[a] b [c] [d] ");
    list.SetFocus();
    robot.key(form, 36);
    robot.key(form, 40, ShiftKey);
    EXPECT_EQ(form.files(), "[a] [b] c d ");
    robot.key(form, 65, CtrlKey);
    EXPECT_EQ(form.files(), "[a] [b] [c] [d] ");
    form.taken();
    robot.doubleClick(list, NoKeys, row(1));
    EXPECT_EQ(form.files(), "a [b] c d ");
    EXPECT_EQ(form.taken(), "Click DblClick ");
}

TEST_F(FileControlsTest, AFolderListShowsTheWayAndWhatTheFolderHolds)
{
    makeFolder("b/inner");
    makeFolder("A");
    makeFolder(".hidden");
    files({"file"});
    dir.Path = folder.inside("b") + "\\";
    EXPECT_EQ(dir.Path(), folder.inside("b"));
    dir.Path = folder.inside("b");
    EXPECT_EQ(form.taken(), "Dir:" + folder.inside("b") + " ") << "the same path changes nothing";
    EXPECT_EQ(dir.rowPath(0), "/");
    EXPECT_EQ(dir.rowPath(dir.depth() - 2), folder.inside());
    EXPECT_EQ(dir.rowPath(dir.depth() - 1), folder.inside("b"));
    EXPECT_EQ(dir.rowPath(dir.depth()), folder.inside("b\\inner"));
    EXPECT_EQ(dir.ListCount(), dir.depth() + 1);

    dir.Path = folder.inside();
    EXPECT_EQ(dir.rowPath(dir.depth()), folder.inside("A"));
    EXPECT_EQ(dir.ListCount(), dir.depth() + 2);
    makeFolder("c");
    dir.Refresh();
    EXPECT_EQ(dir.rowPath(dir.ListCount() - 1), folder.inside("c"));
    EXPECT_EQ(failureOf([&] { (void)dir.rowPath(dir.ListCount()); }), "Invalid property array index");

    dir.Path = "/";
    EXPECT_EQ(dir.depth(), 1);
    EXPECT_EQ(dir.rowPath(rowOf("/tmp")), "/tmp");
}

TEST_F(FileControlsTest, ADoubleClickOrEnterMovesToAFolder)
{
    makeFolder("b/inner");
    dir.Path = folder.inside();
    dir.Refresh();
    form.taken();
    show();
    robot.click(dir, LeftButton, NoKeys, row(rowOf(folder.inside("b"))));
    EXPECT_EQ(form.taken(), "") << "one click only chooses";
    robot.doubleClick(dir, NoKeys, row(rowOf(folder.inside("b"))));
    EXPECT_EQ(form.taken(), "Dir:" + folder.inside("b") + " ");
    dir.SetFocus();
    robot.key(form, 40);
    robot.key(form, 13);
    EXPECT_EQ(form.taken(), "Dir:" + folder.inside("b\\inner") + " ");
    robot.key(form, 38);
    robot.key(form, 13);
    EXPECT_EQ(form.taken(), "Dir:" + folder.inside("b") + " ");
}

TEST_F(FileControlsTest, MediaAreWhatIsMountedWhereMediaAre)
{
    folder.write("mounts",
        "/dev/sda1 / ext4 rw 0 0\ntmpfs /media tmpfs rw 0 0\n/dev/sda2 /mediathek ext4 rw 0 0\n"
        "/dev/sdb1 /media/ann/HOLIDAY\\040PICS vfat rw 0 0\n/dev/sr0 /media/cdrom iso9660 ro 0 0\n"
        "nas:/pictures /mnt/nas nfs rw 0 0\nnas:/pictures /mnt/nas nfs rw 0 0\n");
    EXPECT_EQ(mountedMedia(folder.native("mounts")),
        (std::vector<std::string>{"/media/ann/HOLIDAY PICS", "/media/cdrom", "/mnt/nas"}));
    EXPECT_TRUE(mountedMedia(folder.native("none")).empty());
    const VariableForNow mounted("HOME", "/mnt/nas/");
    EXPECT_EQ(mountedMedia(folder.native("mounts")).size(), 2U) << "the user's folder is no medium";
}

TEST_F(FileControlsTest, ADriveIsThePlaceThatHoldsTheFolderOrUnavailable)
{
    DriveList& drive = form.Drive1;
    EXPECT_EQ(drive.places()[0], "/");
    EXPECT_EQ(drive.places()[1], folder.inside()) << "the user's folder";
    EXPECT_EQ(drive.Drive(), folder.inside());
    EXPECT_EQ(drive.nameOf(drive.places()[1]), "Home");
    EXPECT_EQ(drive.nameOf("/media\\ann\\HOLIDAY PICS"), "HOLIDAY PICS");
    drive.Drive = folder.inside("deep\\down");
    EXPECT_EQ(form.taken(), "");
    drive.Drive = "/usr";
    EXPECT_EQ(drive.Drive(), "/");
    drive.Drive = folder.inside();
    EXPECT_EQ(form.taken(), "Drive:/ Drive:" + folder.inside() + " ");
    for (const char* path : {"/media\\ann\\NOTHERE\\Photos", "/run\\media\\ann\\NOTHERE", "/mnt\\NOTHERE", "E:", ""})
        EXPECT_EQ(failureOf([&] { drive.Drive = path; }), "Device unavailable") << path;
    EXPECT_EQ(drive.Drive(), folder.inside());
    show();
    drive.SetFocus();
    robot.key(form, 36); // Home: the first
    EXPECT_EQ(form.taken(), "Drive:/ ");
}

} // namespace

} // namespace trovarium
