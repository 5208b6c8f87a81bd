#include "platform/files/FileTest.h"
#include "support/SmallDisk.h"

#include <sys/stat.h>
#include <unistd.h>

namespace trovarium {

namespace {

class NumberedFiles : public FileTest {
protected:
    Names linesOf(std::string_view bytes)
    {
        folder.write("lines", bytes);
        files.open(at("lines"), OpenMode::Input, 1);
        Names lines;
        while (!files.endOfFile(1))
            lines.push_back(files.lineInput(1));
        EXPECT_EQ(failureOf([&] { files.lineInput(1); }), "Input past end of file");
        files.close(1);
        return lines;
    }
};

} // namespace

TEST_F(NumberedFiles, ALineEndsAtCrLfCrOrLfAndWithTheFile)
{
    const std::vector<std::pair<std::string, Names>> cases{{"", {}}, {"\r\n", {""}}, {"a", {"a"}},
        {"a\r\nb\rc\nd", {"a", "b", "c", "d"}}, {"a\r\rb\n\n\r\n", {"a", "", "b", "", ""}},
        {"K\xF6ln\r\nŁódź\n", {"Köln", "Łódź"}},
        {std::string("a\0b\n\0", 5), {std::string("a\0b", 3), std::string(1, '\0')}}};
    for (const auto& [bytes, lines] : cases)
        EXPECT_EQ(linesOf(bytes), lines);
    for (const std::size_t length : {65534, 65535, 65536, 65537, 300000}) { // also on the edge of a buffer
        const std::string line(length, 'x');
        EXPECT_EQ(linesOf(line + "\r\nb\r\n"), (Names{line, "b"})) << length;
        EXPECT_EQ(linesOf(line + "\rb"), (Names{line, "b"})) << length;
    }
    folder.write("film", "");
    std::filesystem::resize_file(folder.native("film"), std::uintmax_t{1} << 30);
    EXPECT_EQ(did("read film"), "Out of memory");
    folder.write("a", "one\r\ntwo\r\n");
    files.open(at("a"), OpenMode::Input, 1);
    EXPECT_EQ(files.lineInput(1), "one");
    std::ofstream(folder.native("a"), std::ios::app) << "three\r\n";
    EXPECT_EQ(files.lineInput(1), "two");
    EXPECT_TRUE(files.endOfFile(1)) << "where it stood when it was opened";
}

TEST_F(NumberedFiles, OutputEmptiesAtOnceAndAppendNeverJoinsALastLineWithoutAnEnd)
{
    folder.write("a", "one.jpg");
    expect({{"open a", ""}, {"length a", "7"}, {"append a > ", ""}, {"append a > Köln", ""}, {"append a > Łódź", ""}});
    EXPECT_EQ(folder.read("a"), "one.jpg\r\n\r\nK\xF6ln\r\nŁódź\r\n");
    files.open(at("a"), OpenMode::Output, 1);
    EXPECT_EQ(folder.read("a"), "");
}

TEST_F(NumberedFiles, NumbersRunFromOneTo255AndServeOnlyWhatTheyWereOpenedFor)
{
    folder.write("a", "line");
    for (int number = 1; number <= 255; ++number) {
        EXPECT_EQ(files.freeFile(), number);
        files.open(at("a"), OpenMode::Input, number);
    }
    EXPECT_EQ(failureOf([&] { files.freeFile(); }), "Too many files");
    EXPECT_EQ(failureOf([&] { files.open(at("a"), OpenMode::Input, 7); }), InUse);
    files.close(7);
    files.close(7);
    EXPECT_EQ(files.freeFile(), 7);
    for (const int number : {0, -1, 256})
        EXPECT_EQ(failureOf([&] { files.open(at("a"), OpenMode::Input, number); }), BadName);
    files.open(at("b"), OpenMode::Output, 7);
    files.close(8);
    for (const int number : {1, 8})
        EXPECT_EQ(failureOf([&] { files.print(number, ""); }), BadName);
    for (const int number : {7, 8})
        EXPECT_EQ(failureOf([&] { files.lineInput(number); }), BadName);
    files.closeAll();
    EXPECT_EQ(files.freeFile(), 1);
}

TEST_F(NumberedFiles, AFileThatIsOpenIsNeitherEmptiedNorTakenAwayAndNoOtherThingIsAFile)
{
    folder.write("a", "text");
    std::filesystem::create_symlink("a", folder.native("link"));
    files.open(at("a"), OpenMode::Input, 1);
    expect({{"empty a", InUse}, {"empty link", InUse}, {"open a", InUse}, {"open link", InUse}, {"write a > ", InUse},
        {"remove a", Denied}, {"rename a > b", Denied}, {"copy a > b", Denied}, {"read a", "text"}});
    files.closeAll();
    expect({{"remove a", ""}});
    std::filesystem::create_directory(folder.native("folder"));
    ASSERT_EQ(mkfifo(folder.native("pipe").c_str(), 0600), 0);
    for (const std::string path : {"folder", "pipe"})
        expect({{"exists " + path, "False"}, {"remove " + path, NoFile}, {"copy " + path + " > copy", NoFile},
            {"read " + path, NoAccess}, {"empty " + path, NoAccess}, {"write " + path + " > x", NoAccess},
            {"replace list > " + path, NoAccess}});
}

TEST_F(NumberedFiles, AFullDiskShowsAtPrintOrCloseAndNeverLater)
{
    const std::string line(1000, 'x');
    for (const int count : {1, 50, 500}) {
        files.open(at("a"), OpenMode::Output, 1);
        const SmallDisk disk(50);
        std::string failure;
        for (int printed = 0; printed < count && failure.empty(); ++printed)
            failure = failureOf([&] { files.print(1, line); });
        const std::string atClose = failureOf([&] { files.close(1); });
        EXPECT_EQ(failure.empty() ? atClose : failure, "Disk full") << count;
        EXPECT_EQ(files.freeFile(), 1) << "the number is free all the same";
        EXPECT_EQ(failureOf([&] { files.close(1); }), "");
    }
    // Room that comes back loses no line that was printed.
    files.open(at("a"), OpenMode::Output, 1);
    std::size_t printed = 0;
    {
        const SmallDisk disk(70000);
        while (failureOf([&] { files.print(1, line); }).empty())
            ++printed;
    }
    files.close(1);
    EXPECT_EQ(folder.read("a").size(), printed * (line.size() + 2));
}

TEST_F(NumberedFiles, AWholeFileThatFindsNoRoomLeavesWhatWasThere)
{
    folder.write("old", "text");
    folder.write("first", "text");
    std::filesystem::create_hard_link(folder.native("first"), folder.native("second")); // written in place
    {
        const SmallDisk disk(50);
        for (const std::string name : {"old", "second", "new"})
            EXPECT_EQ(did("write " + name + " > " + std::string(100, 'x')), "Disk full") << name;
    }
    EXPECT_EQ(folder.read("old") + folder.read("second"), "texttext");
    std::filesystem::directory_iterator entries(folder.path());
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 3) << "something is left beside";
}

TEST_F(NumberedFiles, AWholeFileKeepsRightsOwnerAndLinksOfTheOneThatItReplaces)
{
    constexpr uid_t Nobody = 65534;
    std::filesystem::create_directory(folder.native("sub"));
    for (const char* name : {"private", "sub/target", "foreign", "second"})
        folder.write(name, "what was there before");
    ASSERT_EQ(chmod(folder.native("private").c_str(), 0600), 0);
    std::filesystem::create_symlink("sub/target", folder.native("link"));
    std::filesystem::create_symlink("sub/made", folder.native("dangling"));
    std::filesystem::create_hard_link(folder.native("second"), folder.native("first"));
    // One that belongs to somebody else, in a folder where anybody may write.
    ASSERT_EQ(chmod(folder.path().c_str(), 0777) | chmod(folder.native("foreign").c_str(), 0666), 0);
    for (const std::string name : {"private", "link", "dangling", "second", "foreign"}) {
        const bool asNobody = geteuid() == 0 && name == "foreign";
        ASSERT_EQ(asNobody ? seteuid(Nobody) : 0, 0);
        const std::string failure = failureOf([&] { files.writeLines(at(name), {"Köln", "after"}, Sync::Yes); });
        ASSERT_EQ(asNobody ? seteuid(0) : 0, 0);
        EXPECT_EQ(failure, "") << name;
    }
    for (const std::string name :
        {"private", "link", "dangling", "second", "foreign", "first", "sub/made", "sub/target"})
        EXPECT_EQ(folder.read(name), "K\xF6ln\r\nafter\r\n") << name;
    struct stat status = {};
    ASSERT_EQ(stat(folder.native("private").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
    ASSERT_EQ(stat(folder.native("foreign").c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, geteuid());
    for (const char* name : {"link", "dangling"})
        EXPECT_TRUE(std::filesystem::is_symlink(folder.native(name))) << name;
}

} // namespace trovarium
