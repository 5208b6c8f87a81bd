#include "platform/files/FileService.h"
#include "support/FailureOf.h"
#include "support/TemporaryFolder.h"

#include <ctime>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace trovarium {

namespace {

using Names = std::vector<std::string>;

// A second file system, where the machine has one that everybody may write to.
constexpr const char* OtherFileSystem = "/dev/shm";

class Folders : public testing::Test {
protected:
    std::string at(std::string_view name) const { return folder.inside(name); }

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

    TemporaryFolder folder;
    FileService files;
};

} // namespace

TEST_F(Folders, PatternsMatchNamesWithoutRegardToCase)
{
    for (const char* name : {"a.jpg", "B.JPG", "c.jpeg", "ab.gif", "none", "x.tar.gz", "é.jpg", "漢.bmp", "[1].jpg"})
        folder.write(name, "");
    struct Case {
        std::string_view pattern;
        Names names;
    };
    const Names sorted{"a.jpg", "ab.gif", "B.JPG", "c.jpeg", "none", "x.tar.gz", "[1].jpg", "é.jpg", "漢.bmp"};
    for (const auto& [pattern, names] : {Case{"*.*", sorted}, {"*", sorted}, {"", sorted}, {"*.abcde;*.*", sorted},
             {"*.jpg", {"a.jpg", "B.JPG", "[1].jpg", "é.jpg"}}, {"?.jpg", {"a.jpg", "B.JPG", "é.jpg"}},
             {"É.*", {"é.jpg"}}, {"?.bmp", {"漢.bmp"}}, {"??.bmp", {}}, {"*?a*", {"x.tar.gz"}},
             {"*.gif; *.bmp", {"ab.gif", "漢.bmp"}}, {"[1].jpg", {"[1].jpg"}}, {"b.jpg", {"B.JPG"}}, {"*.abcde", {}},
             {"a*b*.g*f*", {"ab.gif"}}, {"x.*.gz", {"x.tar.gz"}}, {"*.gz.", {}}, {";", {}}})
        EXPECT_EQ(files.list(at(pattern)), names) << pattern;
    folder.write(std::string(200, 'a'), "");
    std::string stars;
    for (int count = 0; count < 60; ++count)
        stars += "a*";
    EXPECT_EQ(files.list(at(stars + "b")), Names{}) << "and ends in good time";
}

TEST_F(Folders, OnlyPlainFilesAndFoldersThatCanBeNamedAreListed)
{
    for (const char* name : {"plain", ".hidden", "back\\slash", "line\nend", "line\rend"})
        folder.write(name, "");
    for (const char* name : {"sub", ".hiddensub", "sub\\odd"})
        std::filesystem::create_directory(folder.native(name));
    ASSERT_EQ(mkfifo(folder.native("pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("plain", folder.native("link to file"));
    std::filesystem::create_symlink("sub", folder.native("link to folder"));
    std::filesystem::create_symlink("nowhere", folder.native("dangling"));
    std::filesystem::create_symlink("loop", folder.native("loop"));

    EXPECT_EQ(files.list(at("*")), (Names{"link to file", "plain"}));
    EXPECT_EQ(files.listFolders(folder.inside()), Names{"sub"});
    Names all;
    for (const FolderEntry& entry : files.listAll(at("*"))) {
        const int attributes = files.attributes(at(entry.name), entry.kind);
        EXPECT_EQ(attributes, files.attributes(at(entry.name)));
        all.push_back(entry.name + (attributes == DirectoryAttribute ? "/" : ""));
    }
    EXPECT_EQ(all, (Names{"./", "../", "link to file", "plain", "sub/"}));
    EXPECT_EQ(failureOf([&] { files.attributes(at("none")); }), "File not found");
    EXPECT_TRUE(files.exists(at("link to file")));
    EXPECT_FALSE(files.exists(at("dangling")));
    EXPECT_FALSE(files.exists(at("loop")));
    EXPECT_TRUE(files.exists(at(".hidden"))) << "a hidden file can be named";
    folder.write("sub/a.jpg", "");
    EXPECT_EQ(files.list(at("link to folder\\*")), Names{"a.jpg"});
    EXPECT_TRUE(files.folderExists(at("link to folder")));
    EXPECT_FALSE(files.folderExists(at("sub\\a.jpg")));
}

TEST_F(Folders, AnAbsentFolderGivesNoNamesUnlessItMustBeThere)
{
    folder.write("file", "");
    for (const std::string& path : Names{at("none\\*.*"), at("file\\*.*"), "relative\\*.*", ""}) {
        EXPECT_EQ(files.list(path), Names{}) << path;
        EXPECT_EQ(failureOf([&] { files.listExisting(path); }), "Path not found") << path;
    }
    EXPECT_EQ(files.listFolders(at("none")), Names{});
    EXPECT_EQ(files.listExisting(at("*")), Names{"file"});
    EXPECT_EQ(files.listExisting(at("*.none")), Names{});
}

TEST_F(Folders, ACopyIsWholeDatedAsItsSourceAndReplacesItsTarget)
{
    std::string bytes(3000000, '\0');
    for (std::size_t index = 0; index < bytes.size(); ++index)
        bytes[index] = static_cast<char>(index * 7 / 5);
    folder.write("source", bytes);
    folder.write("target", "something that was there");
    stamp("source", {1000000000, 123456789});
    files.copy(at("source"), at("target"));
    EXPECT_EQ(folder.read("target"), bytes);
    EXPECT_EQ(files.modified(at("target")), Instant(std::chrono::seconds(1000000000)));
    folder.write("empty", "");
    files.copy(at("empty"), at("target"));
    EXPECT_EQ(folder.read("target"), "");
    EXPECT_EQ(onDisk(), (Names{"empty", "source", "target"}));
}

TEST_F(Folders, ACopyThatFailsLeavesTheTargetAndNothingBeside)
{
    folder.write("a", "text");
    folder.write("b", "target");
    std::filesystem::create_directory(folder.native("sub"));
    std::filesystem::create_hard_link(folder.native("a"), folder.native("hard"));
    std::filesystem::create_symlink("a", folder.native("soft"));
    EXPECT_EQ(failureOf([&] { files.copy(at("none"), at("b")); }), "File not found");
    EXPECT_EQ(failureOf([&] { files.copy(at("a"), at(std::string(300, 'x'))); }), "Bad file name or number");
    for (const char* target : {"a", "hard", "soft", "sub"}) // itself under other names
        EXPECT_EQ(failureOf([&] { files.copy(at("a"), at(target)); }), "Permission denied") << target;
    for (const char* other : {"A", "hard", "soft"})
        EXPECT_TRUE(files.isSameFile(at(other), at("a"))) << other;
    for (const char* other : {"b", "none", "none\\a"})
        EXPECT_FALSE(files.isSameFile(at("a"), at(other))) << other;
    EXPECT_EQ(folder.read("a"), "text");
    EXPECT_EQ(folder.read("b"), "target");
    EXPECT_EQ(onDisk(), (Names{"a", "b", "hard", "soft", "sub"}));
    files.copy(at("b"), at("soft"));
    EXPECT_EQ(folder.read("a"), "text") << "the link is replaced and not what it leads to";
    EXPECT_EQ(folder.read("soft"), "target");
}

TEST_F(Folders, ARenameNeverReplaces)
{
    folder.write("a", "1");
    folder.write("b", "2");
    std::filesystem::create_symlink("nowhere", folder.native("dangling"));
    std::filesystem::create_directory(folder.native("sub"));
    for (const char* target : {"a", "b", "dangling", "sub"})
        EXPECT_EQ(failureOf([&] { files.rename(at("a"), at(target)); }), "File already exists") << target;
    EXPECT_EQ(failureOf([&] { files.rename(at("none"), at("c")); }), "File not found");
    files.rename(at("a"), at("A"));
    EXPECT_EQ(folder.read("A"), "1");
    files.rename(at("A"), at("sub\\moved"));
    EXPECT_EQ(folder.read("sub/moved"), "1");
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
    files.rename(at("a"), fromNativePath(name));
    EXPECT_FALSE(files.exists(at("a")));
    EXPECT_EQ(files.modified(name), Instant(std::chrono::seconds(1000000000)));
    folder.write("a", "second");
    EXPECT_EQ(failureOf([&] { files.rename(at("a"), name); }), "File already exists");
    EXPECT_EQ(folder.read("a"), "second");
    files.remove(at("a"));
    files.rename(name, at("a"));
    EXPECT_EQ(folder.read("a"), "text");
    EXPECT_FALSE(std::filesystem::exists(name));
}

TEST_F(Folders, DatesAreFlooredToTheSecondAndSetAlone)
{
    folder.write("a", "");
    stamp("a", {-5, 500000000});
    EXPECT_EQ(files.modified(at("a")), Instant(std::chrono::seconds(-5))) << "also before 1970";
    files.setModified(at("a"), Instant(std::chrono::seconds(1234567890)));
    struct stat after = {};
    ASSERT_EQ(stat(folder.native("a").c_str(), &after), 0);
    EXPECT_EQ(after.st_mtim.tv_sec, 1234567890);
    EXPECT_EQ(after.st_mtim.tv_nsec, 0);
    EXPECT_EQ(after.st_atim.tv_sec, -5);
}

TEST_F(Folders, WhatAKilledRunLeftHiddenIsRemovedAndNothingElse)
{
    const std::string dead = ".new-99999999-"; // no process has such a number
    const std::string alive = ".new-" + std::to_string(getpid()) + "-0";
    const std::string young = dead + "2"; // another machine may be writing it
    const Names kept{alive, dead, dead + "1x", young, ".new-1", dead + "link", "new-99999999-0"};
    for (const std::string& name : kept)
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
    Names left = kept;
    left.insert(left.end(), {dead + "3", dead + "4"});
    std::sort(left.begin(), left.end());
    EXPECT_EQ(onDisk(), left);
}

TEST_F(Folders, AFolderIsMadeOneLevelAtATime)
{
    files.makeFolder(at("new"));
    files.makeFolder(at("new\\below\\"));
    EXPECT_TRUE(std::filesystem::is_directory(folder.native("new/below")));
    folder.write("file", "");
    for (const std::string& path : Names{at("new"), at("new\\"), at("file"), "/"})
        EXPECT_EQ(failureOf([&] { files.makeFolder(path); }), "Path/File access error") << path;
    EXPECT_EQ(failureOf([&] { files.makeFolder(at("a\\b")); }), "Path not found");
}

} // namespace trovarium
