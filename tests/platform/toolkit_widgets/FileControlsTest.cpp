#include "platform/toolkit/DriveList.h"
#include "platform/toolkit/FileList.h"
#include "platform/toolkit/FolderList.h"

#include "platform/Stage.h"
#include "platform/system/MountedMedia.h"
#include "support/Surroundings.h"
#include "support/TemporaryFolder.h"

namespace trovarium {

namespace {

class FileControlsTest : public Stage {
protected:
    FileControlsTest()
    {
        note(drive.Change, "Drive", [this] { return drive.Drive(); });
        note(dir.Change, "Dir", [this] { return dir.Path(); });
        note(list.Click, "Click");
        note(list.DblClick, "Open");
    }

    // Those that end in a slash are folders.
    void make(std::initializer_list<std::string> names) const
    {
        for (const std::string& name : names)
            name.ends_with("/") ? void(std::filesystem::create_directories(folder.native(name)))
                                : folder.write(name, "x");
    }
    std::string files() const
    {
        std::string names;
        for (int i = 0; i < list.ListCount(); ++i)
            names += (list.Selected(i) ? "[" + list.List(i) + "]" : list.List(i)) + " ";
        return names;
    }
    // The rows of the folder list behind the way to the folder.
    std::string folders() const
    {
        std::string names;
        for (int row = dir.depth(); row < dir.ListCount(); ++row)
            names += dir.rowPath(row).substr(dir.Path().size() + 1) + " ";
        return names;
    }
    static At row(int index) { return {60, 8.0F + 16.0F * static_cast<float>(index)}; }

    TemporaryFolder folder;
    const VariableForNow home{"HOME", folder.path()};
    DriveList drive{&form, {.Name = "Drive1", .Width = 3000, .Height = 315}};
    FolderList dir{&form, {.Name = "Dir1", .Top = 500, .Width = 4500, .Height = 3000}};
    FileList list{&form, {.Name = "File1", .Top = 4000, .Width = 4500, .Height = 3000}};
};

// They may be on no form that shows them.
TEST_F(FileControlsTest, BothListsBeginAtTheUsersFolderAndReadWhatIsAskedOrSeen)
{
    make({"a", "sub/"});
    int readings = 0;
    desktop.files().setFaultHook(
        [&](FileOperation operation, std::string_view) { readings += operation == FileOperation::List ? 1 : 0; });
    list.Visible = false;
    show();
    for (int i = 0; i < 16; ++i)
        list.Refresh();
    dir.Path = folder.inside();
    desktop.repaintOnly();
    EXPECT_EQ(readings, 1) << "of the folders";
    EXPECT_EQ(taken(), "") << "the file list is there already";
    EXPECT_EQ(files(), "a ");
    EXPECT_EQ(folders(), "sub ");
    EXPECT_EQ(readings, 2);
}

TEST_F(FileControlsTest, AFileListShowsWhatMatchesItsPatternAndReadsForRefresh)
{
    make({"b.JPG", "a.jpg", "c.txt", ".hidden.jpg", "d.jpg/"});
    list.Path = folder.inside() + "\\";
    EXPECT_EQ(list.Path(), folder.inside()) << "without the separator at the end";
    EXPECT_EQ(files(), "a.jpg b.JPG c.txt ");
    list.Pattern = "*.abcde;*.jpg";
    EXPECT_EQ(files(), "a.jpg b.JPG ");
    make({"e.jpg"});
    list.Path = folder.inside();
    EXPECT_EQ(files(), "a.jpg b.JPG ") << "the same path";
    list.Refresh();
    EXPECT_EQ(files(), "a.jpg b.JPG e.jpg ");
}

TEST_F(FileControlsTest, APathThatCannotBeListedLeavesAllAsItWas)
{
    make({"a", "sub/", "sub/a"});
    list.Path = folder.inside();
    list.setSelected(0, true);
    dir.Path = folder.inside();
    taken();
    const std::string rows = folders();
    make({"locked/"});
    desktop.files().setFaultHook([](FileOperation operation, std::string_view path) {
        if (operation == FileOperation::List && path.ends_with("locked"))
            throw Failure(FailureKind::PathFileAccess);
    });
    const std::vector<std::pair<std::string, std::string>> cases{{folder.inside("gone"), "Path not found"},
        {folder.inside("a"), "Path not found"}, {"relative", "Path not found"}, {"", "Path not found"},
        {folder.inside("locked"), "Path/File access error"}};
    for (const auto& [path, expected] : cases) {
        EXPECT_EQ(failureOf([&, &to = path] { list.Path = to; }), expected) << path;
        EXPECT_EQ(failureOf([&, &to = path] { dir.Path = to; }), expected) << path;
    }
    EXPECT_EQ(list.Path(), folder.inside());
    EXPECT_EQ(dir.Path(), folder.inside());
    EXPECT_EQ(files() + folders() + taken(), "[a] " + rows);
    list.Path = folder.inside("sub");
    std::filesystem::remove_all(folder.native("sub"));
    list.Refresh();
    EXPECT_EQ(files(), "") << "a folder that is gone has no files";
    EXPECT_EQ(failureOf([&] { (void)list.List(0); }), "Invalid property array index");
}

TEST_F(FileControlsTest, TheUserChoosesSeveralFilesAndOpensOne)
{
    make({"a", "b", "c", "d"});
    show();
    robot.click(list, LeftButton, NoKeys, row(0));
    robot.click(list, LeftButton, CtrlKey, row(2));
    EXPECT_EQ(files() + taken(), "[a] b [c] d Click Click ");
    robot.click(list, LeftButton, ShiftKey, row(3));
    EXPECT_EQ(files(), "[a] b [c] [d] ");
    list.SetFocus();
    keys({36});
    robot.key(form, 40, ShiftKey);
    EXPECT_EQ(files(), "[a] [b] c d ");
    robot.key(form, 65, CtrlKey);
    EXPECT_EQ(files(), "[a] [b] [c] [d] ");
    taken();
    robot.doubleClick(list, NoKeys, row(1));
    EXPECT_EQ(files() + taken(), "a [b] c d Click Open ");
}

TEST_F(FileControlsTest, AFolderListShowsTheWayAndWhatTheFolderHolds)
{
    make({"b/inner/", "A/", ".hidden/", "file"});
    dir.Path = folder.inside("b") + "\\";
    EXPECT_EQ(dir.Path(), folder.inside("b"));
    dir.Path = folder.inside("b");
    EXPECT_EQ(taken(), "Dir:" + folder.inside("b") + " ") << "the same path changes nothing";
    EXPECT_EQ(dir.rowPath(0), "/");
    EXPECT_EQ(dir.rowPath(dir.depth() - 2), folder.inside());
    EXPECT_EQ(dir.rowPath(dir.depth() - 1), folder.inside("b"));
    EXPECT_EQ(folders(), "inner ");
    dir.Path = folder.inside();
    EXPECT_EQ(folders(), "A b ");
    make({"c/"});
    dir.Refresh();
    EXPECT_EQ(folders(), "A b c ");
    EXPECT_EQ(failureOf([&] { (void)dir.rowPath(dir.ListCount()); }), "Invalid property array index");
    show();
    taken();
    const At b = row(dir.depth() + 1);
    robot.click(dir, LeftButton, NoKeys, b);
    EXPECT_EQ(taken(), "") << "one click only chooses";
    robot.doubleClick(dir, NoKeys, b);
    dir.SetFocus();
    keys({40, 13, 38, 13});
    const std::string moved = "Dir:" + folder.inside("b") + " ";
    EXPECT_EQ(taken(), moved + "Dir:" + folder.inside("b\\inner") + " " + moved);
    dir.Path = "/";
    EXPECT_EQ(dir.depth(), 1);
    int row = 0;
    while (dir.rowPath(row) != "/tmp") // a failure where it has no row
        ++row;
}

TEST_F(FileControlsTest, ADriveIsThePlaceThatHoldsTheFolderOrUnavailable)
{
    folder.write("mounts",
        "/dev/sda1 / ext4 rw 0 0\ntmpfs /media tmpfs rw 0 0\n/dev/sda2 /mediathek ext4 rw 0 0\n"
        "/dev/sdb1 /media/ann/HOLIDAY\\040PICS vfat rw 0 0\n/dev/sr0 /media/cdrom iso9660 ro 0 0\n"
        "nas:/pictures /mnt/nas nfs rw 0 0\nnas:/pictures /mnt/nas nfs rw 0 0\n");
    EXPECT_EQ(mountedMedia(folder.native("mounts")),
        (std::vector<std::string>{"/media/ann/HOLIDAY PICS", "/media/cdrom", "/mnt/nas"}));
    EXPECT_TRUE(mountedMedia(folder.native("none")).empty());
    EXPECT_EQ(drive.places()[0], "/");
    EXPECT_EQ(drive.places()[1], folder.inside()) << "the user's folder";
    EXPECT_EQ(drive.Drive(), folder.inside());
    EXPECT_EQ(drive.nameOf(drive.places()[1]), "Home");
    EXPECT_EQ(drive.nameOf("/media\\ann\\HOLIDAY PICS"), "HOLIDAY PICS");
    drive.Drive = folder.inside("deep\\down");
    EXPECT_EQ(taken(), "");
    drive.Drive = "/usr";
    drive.Drive = folder.inside();
    EXPECT_EQ(taken(), "Drive:/ Drive:" + folder.inside() + " ");
    for (const char* path : {"/media\\ann\\NOTHERE\\Photos", "/run\\media\\ann\\NOTHERE", "/mnt\\NOTHERE", "E:", ""})
        EXPECT_EQ(failureOf([&] { drive.Drive = path; }), "Device unavailable") << path;
    EXPECT_EQ(drive.Drive(), folder.inside());
    show();
    drive.SetFocus();
    keys({36}); // Home: the first
    EXPECT_EQ(taken(), "Drive:/ ");
}

} // namespace

} // namespace trovarium
