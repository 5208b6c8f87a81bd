#include "platform/files/FileTest.h"

#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace trovarium {

namespace {

// A second file system, where the machine has one that everybody may write to.
constexpr const char* OtherFileSystem = "/dev/shm";

class Folders : public FileTest {
protected:
    void stamp(std::string_view name, timespec time) const
    {
        const timespec times[2] = {time, time};
        ASSERT_EQ(utimensat(AT_FDCWD, folder.native(name).c_str(), times, 0), 0);
    }
    Names onDisk() const
    {
        Names names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
};

} // namespace

TEST_F(Folders, PatternsMatchNamesWithoutRegardToCase)
{
    for (const char* name : {"a.jpg", "B.JPG", "c.jpeg", "ab.gif", "none", "x.tar.gz", "é.jpg", "漢.bmp", "[1].jpg"})
        folder.write(name, "");
    const std::string sorted = "a.jpg|ab.gif|B.JPG|c.jpeg|none|x.tar.gz|[1].jpg|é.jpg|漢.bmp";
    expect({{"list *.*", sorted}, {"list *", sorted}, {"list ", sorted}, {"list *.abcde;*.*", sorted},
        {"list *.jpg", "a.jpg|B.JPG|[1].jpg|é.jpg"}, {"list ?.jpg", "a.jpg|B.JPG|é.jpg"}, {"list É.*", "é.jpg"},
        {"list ?.bmp", "漢.bmp"}, {"list ??.bmp", ""}, {"list *?a*", "x.tar.gz"},
        {"list *.gif; *.bmp", "ab.gif|漢.bmp"}, {"list [1].jpg", "[1].jpg"}, {"list b.jpg", "B.JPG"},
        {"list *.abcde", ""}, {"list a*b*.g*f*", "ab.gif"}, {"list x.*.gz", "x.tar.gz"}, {"list *.gz.", ""},
        {"list ;", ""}, {"listExisting b.jpg", "B.JPG"}, {"listExisting *.none", ""}, {"listFolders none", ""}});
    for (const std::string path : {"none\\*.*", "a.jpg\\*.*", "!relative\\*.*", "!"})
        expect({{"list " + path, ""}, {"listExisting " + path, NoFolder}});
    folder.write(std::string(200, 'a'), "");
    std::string stars;
    for (int count = 0; count < 60; ++count)
        stars += "a*";
    EXPECT_EQ(did("list " + stars + "b"), "") << "and ends in good time";
}

TEST_F(Folders, OnlyPlainFilesAndFoldersThatCanBeNamedAreListed)
{
    for (const char* name : {"plain", ".hidden", "back\\slash", "line\nend", "line\rend"})
        folder.write(name, "");
    for (const char* name : {"sub", ".hiddensub", "sub\\odd"})
        std::filesystem::create_directory(folder.native(name));
    folder.write("sub/a.jpg", "");
    ASSERT_EQ(mkfifo(folder.native("pipe").c_str(), 0600), 0);
    const Deeds links{{"link to file", "plain"}, {"link to folder", "sub"}, {"dangling", "none"}, {"loop", "loop"}};
    for (const auto& [name, target] : links)
        std::filesystem::create_symlink(target, folder.native(name));
    Names all;
    for (const FolderEntry& entry : files.listAll(at("*"))) {
        const int attributes = files.attributes(at(entry.name), entry.kind);
        EXPECT_EQ(attributes, files.attributes(at(entry.name)));
        all.push_back(entry.name + (attributes == DirectoryAttribute ? "/" : ""));
    }
    EXPECT_EQ(all, (Names{"./", "../", "link to file", "plain", "sub/"}));
    expect({{"list *", "link to file|plain"}, {"listFolders ", "sub"}, {"attributes none", NoFile},
        {"exists link to file", "True"}, {"exists dangling", "False"}, {"exists loop", "False"},
        {"exists .hidden", "True"}, {"list link to folder\\*", "a.jpg"}, {"folderExists link to folder", "True"},
        {"folderExists sub\\a.jpg", "False"}});
}

TEST_F(Folders, ACopyIsWholeDatedAsItsSourceAndReplacesItsTarget)
{
    std::string bytes(3000000, '\0');
    for (std::size_t index = 0; index < bytes.size(); ++index)
        bytes[index] = static_cast<char>(index * 7 / 5);
    folder.write("source", bytes);
    folder.write("empty", "");
    folder.write("target", "something that was there");
    stamp("source", {1000000000, 123456789});
    expect({{"copy source > target", ""}, {"modified target", "1000000000"}});
    EXPECT_EQ(folder.read("target"), bytes);
    expect({{"copy empty > target", ""}, {"length target", "0"}});
    EXPECT_EQ(onDisk(), (Names{"empty", "source", "target"}));
}

TEST_F(Folders, ACopyThatFailsLeavesTheTargetAndARenameNeverReplaces)
{
    folder.write("a", "text");
    folder.write("b", "target");
    std::filesystem::create_directory(folder.native("sub"));
    std::filesystem::create_hard_link(folder.native("a"), folder.native("hard"));
    std::filesystem::create_symlink("a", folder.native("soft"));
    std::filesystem::create_symlink("none", folder.native("dangling"));
    for (const std::string name : {"a", "hard", "soft", "sub"}) // the last but one under other names
        expect({{"copy a > " + name, Denied}, {"rename b > " + name, Taken}});
    expect({{"copy none > b", NoFile}, {"rename a > dangling", Taken}, {"rename none > c", NoFile},
        {"same A > a", "True"}, {"same hard > a", "True"}, {"same soft > a", "True"}, {"same a > b", "False"},
        {"same a > none", "False"}, {"same a > none\\a", "False"}});
    EXPECT_EQ(folder.read("a") + folder.read("b"), "texttarget");
    EXPECT_EQ(onDisk(), (Names{"a", "b", "dangling", "hard", "soft", "sub"}));
    expect({{"copy b > soft", ""}, {"rename a > A", ""}, {"rename A > sub\\moved", ""}});
    EXPECT_EQ(folder.read("sub/moved"), "text") << "the link is replaced and not what it leads to";
    EXPECT_EQ(folder.read("soft"), "target");
}

TEST_F(Folders, ARenameBetweenFileSystemsMovesTheFile)
{
    struct stat here = {};
    struct stat there = {};
    if (stat(folder.path().c_str(), &here) != 0 || stat(OtherFileSystem, &there) != 0 || here.st_dev == there.st_dev
        || access(OtherFileSystem, W_OK) != 0)
        GTEST_SKIP() << "one file system only";
    const std::string name = std::string(OtherFileSystem) + "/trovarium-test-" + std::to_string(getpid());
    folder.write("a", "text");
    stamp("a", {1000000000, 0});
    expect({{"rename a > !" + name, ""}, {"exists a", "False"}, {"modified !" + name, "1000000000"},
        {"write a > second", ""}, {"rename a > !" + name, Taken}, {"read a", "second"}, {"remove a", ""},
        {"rename !" + name + " > a", ""}, {"read a", "text"}});
    EXPECT_FALSE(std::filesystem::exists(name));
}

TEST_F(Folders, DatesAreFlooredToTheSecondAndSetAlone)
{
    folder.write("a", "");
    stamp("a", {-5, 500000000});
    expect({{"modified a", "-5"}, {"date a", ""}});
    struct stat after = {};
    ASSERT_EQ(stat(folder.native("a").c_str(), &after), 0);
    EXPECT_EQ(after.st_mtim.tv_sec, 1000000000);
    EXPECT_EQ(after.st_mtim.tv_nsec, 0);
    EXPECT_EQ(after.st_atim.tv_sec, -5);
}

TEST_F(Folders, WhatAKilledRunLeftHiddenIsRemovedAndNothingElse)
{
    const std::string dead = ".new-99999999-"; // no process has such a number
    const std::string alive = ".new-" + std::to_string(getpid()) + "-0";
    const std::string young = dead + "2"; // another machine may be writing it
    Names left{alive, dead, dead + "1x", young, ".new-1", dead + "link", "new-99999999-0"};
    for (const std::string& name : left)
        folder.write(name, "");
    folder.write(dead + "0", "half");
    for (const std::string& name : {alive, dead, dead + "0", dead + "1x", dead + "link"})
        stamp(name, {std::time(nullptr) - 25 * 3600, 0});
    stamp(young, {std::time(nullptr) - 23 * 3600, 0});
    std::filesystem::create_symlink("none", folder.native(dead + "3"));
    std::filesystem::create_directory(folder.native(dead + "4"));
    files.removeLeftOvers(folder.inside() + "\\");
    EXPECT_TRUE(std::filesystem::exists(folder.native(dead + "0"))) << "not before a listing met it";
    files.list(at("*"));
    files.removeLeftOvers(folder.inside() + "\\");
    left.insert(left.end(), {dead + "3", dead + "4"});
    std::sort(left.begin(), left.end());
    EXPECT_EQ(onDisk(), left);
}

TEST_F(Folders, AFolderIsMadeOneLevelAtATime)
{
    folder.write("file", "");
    expect({{"makeFolder new", ""}, {"makeFolder new\\below\\", ""}, {"makeFolder new", NoAccess},
        {"makeFolder new\\", NoAccess}, {"makeFolder file", NoAccess}, {"makeFolder !/", NoAccess},
        {"makeFolder a\\b", NoFolder}, {"listFolders new", "below"}});
}

} // namespace trovarium
