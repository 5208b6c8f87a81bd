#include "platform/files/FileTest.h"

#include <ctime>
#include <unistd.h>

namespace trovarium {

using Folders = FileTest;

TEST_F(Folders, PatternsMatchNamesWithoutRegardToCase)
{
    for (const char* name : {"a.jpg", "B.JPG", "c.jpeg", "ab.gif", "x.tar.gz", "é.jpg", "漢.bmp", "[1].jpg"})
        folder.write(name, "");
    const std::string sorted = "a.jpg|ab.gif|B.JPG|c.jpeg|x.tar.gz|[1].jpg|é.jpg|漢.bmp";
    expect({{"list *.*", sorted}, {"list ", sorted}, {"list *.jpg", "a.jpg|B.JPG|[1].jpg|é.jpg"},
        {"list ?.jpg", "a.jpg|B.JPG|é.jpg"}, {"list É.*", "é.jpg"}, {"list ??.bmp", ""}, {"list *?a*", "x.tar.gz"},
        {"list *.gif; *.bmp", "ab.gif|漢.bmp"}, {"list [1].jpg", "[1].jpg"}, {"list a*b*.g*f*", "ab.gif"},
        {"list ;", ""}, {"listExisting b.jpg", "B.JPG"}, {"listExisting *.none", ""}, {"listFolders none", ""}});
    for (const std::string path : {"none\\*.*", "a.jpg\\*.*", "!relative\\*.*", "!"})
        expect({{"list " + path, ""}, {"listExisting " + path, NoFolder}});
    folder.write(std::string(200, 'a'), "");
    expect({{"list a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b", ""}}); // and in good time
}

TEST_F(Folders, OnlyPlainFilesAndFoldersThatCanBeNamedAreListed)
{
    for (const char* name : {"plain", ".hidden", "back\\slash", "line\nend", "line\rend"})
        folder.write(name, "");
    for (const char* name : {"sub", ".hiddensub", "sub\\odd"})
        makeFolder(name);
    ASSERT_EQ(mkfifo(folder.native("pipe").c_str(), 0600), 0);
    const Deeds links{{"link to file", "plain"}, {"link to folder", "sub"}, {"dangling", "none"}, {"loop", "loop"}};
    for (const auto& [name, target] : links)
        std::filesystem::create_symlink(target, folder.native(name));
    std::string all;
    for (const FolderEntry& entry : files.listAll(at("*"))) {
        const int attributes = files.attributes(at(entry.name), entry.kind);
        EXPECT_EQ(attributes, files.attributes(at(entry.name)));
        all += entry.name + (attributes == DirectoryAttribute ? "/|" : "|");
    }
    EXPECT_EQ(all, "./|../|link to file|plain|sub/|");
    expect({{"list *", "link to file|plain"}, {"listFolders ", "sub"}, {"exists link to file", "True"},
        {"exists dangling", "False"}, {"exists loop", "False"}, {"exists .hidden", "True"},
        {"folderExists link to folder", "True"}, {"folderExists plain", "False"}, {"attributes none", NoFile}});
}

TEST_F(Folders, ACopyIsWholeAndDatedAsItsSourceAndADateIsSetAlone)
{
    std::string bytes(3000000, '\0');
    for (std::size_t index = 0; index < bytes.size(); ++index)
        bytes[index] = static_cast<char>(index * 7 / 5);
    folder.write("source", bytes);
    folder.write("target", "something that was there");
    stamp("source", {-5, 500000000});
    ASSERT_EQ(chmod(folder.native("source").c_str(), 0444), 0);
    expect({{"copy source > target", ""}, {"modified target", "-5"}});
    const struct stat copied = status("target");
    EXPECT_EQ(copied.st_mtim.tv_nsec, 500000000);
    EXPECT_GT(copied.st_atim.tv_sec, 0);
    EXPECT_EQ(copied.st_mode & 0600U, 0600U) << "the copy of what may only be read can be written";
    expect({{"date target", ""}, {"modified target", "1000000000"}});
    EXPECT_EQ(status("target").st_atim.tv_sec, copied.st_atim.tv_sec);
    EXPECT_EQ(folder.read("target"), bytes);
}

TEST_F(Folders, ACopyThatFailsLeavesTheTargetAndARenameNeverReplaces)
{
    folder.write("a", "text");
    folder.write("b", "target");
    makeFolder("sub");
    std::filesystem::create_hard_link(folder.native("a"), folder.native("A"));
    std::filesystem::create_symlink("a", folder.native("soft"));
    std::filesystem::create_symlink("none", folder.native("dangling"));
    for (const std::string name : {"a", "A", "soft", "sub"}) // the first three are one file
        expect({{"copy a > " + name, Denied}, {"rename b > " + name, Taken}});
    expect({{"copy none > b", NoFile}, {"rename a > A", Taken}, {"rename a > dangling", Taken},
        {"rename none > c", NoFile}, {"same A > a", "True"}, {"same soft > a", "True"}, {"same a > b", "False"},
        {"same a > none", "False"}, {"same a > none\\a", "False"}});
    EXPECT_EQ(onDisk(), (std::set<std::string>{"A", "a", "b", "dangling", "soft", "sub"}));
    expect({{"copy b > soft", ""}, {"read soft", "target"}, {"read a", "text"}, {"rename A > sub\\moved", ""},
        {"read sub\\moved", "text"}});
}

TEST_F(Folders, ARenameBetweenFileSystemsMovesTheFile)
{
    std::string made = "/dev/shm/trovarium-test-XXXXXX"; // another file system, where the machine has it
    const TemporaryFolder there(mkdtemp(made.data()));   // else one more folder here
    const std::string far = "!" + there.inside("b");
    folder.write("a", "text");
    stamp("a", {1000000000, 0});
    expect({{"rename a > " + far, ""}, {"exists a", "False"}, {"modified " + far, "1000000000"},
        {"write a > second", ""}, {"rename a > " + far, Taken}, {"read a", "second"}, {"remove a", ""},
        {"rename " + far + " > a", ""}, {"read a", "text"}, {"exists " + far, "False"}});
}

TEST_F(Folders, WhatAKilledRunLeftHiddenIsRemovedAndNothingElse)
{
    const std::string dead = ".new-99999999-"; // no process has such a number
    const std::string young = dead + "2";      // another machine may be writing it
    const std::string alive = ".new-" + std::to_string(getpid()) + "-0";
    makeFolder("sub");
    std::set<std::string> left{alive, dead, dead + "1x", young, ".new-1", ".new--99999999-0", "sub/" + dead + "0"};
    for (const std::string& name : left)
        folder.write(name, "");
    folder.write(dead + "0", "half");
    stamp(dead + "0", {std::time(nullptr) - 25 * 3600, 0});
    for (const std::string& name : left)
        stamp(name, {name == young ? std::time(nullptr) - 23 * 3600 : 0, 0});
    std::filesystem::create_symlink("none", folder.native(dead + "3"));
    makeFolder(dead + "4");
    left = onDisk();
    left.erase(dead + "0");
    expect({{"list *", ""}, {"list sub\\*", ""}});
    files.removeLeftOvers(folder.inside());
    EXPECT_EQ(onDisk(), left);
    EXPECT_TRUE(std::filesystem::exists(folder.native("sub/" + dead + "0"))) << "another folder's";
}

} // namespace trovarium
