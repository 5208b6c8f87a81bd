// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/FileTest.h"
#include "platform/files/Prefetch.h"
#include "support/Surroundings.h"

#include <unistd.h>

namespace trovarium {

using NumberedFiles = FileTest;

TEST_F(NumberedFiles, ALineEndsAtCrLfCrOrLfAndWithTheFile)
{
    std::vector<std::pair<std::string, Names>> cases{{"", {}}, {"\r\n", {""}}, {"a", {"a"}},
        {"a\r\rb\rc\nd\n\n\r\n", {"a", "", "b", "c", "d", "", ""}}, {"K\xF6ln\r\nŁódź\n", {"Köln", "Łódź"}},
        {std::string("a\0b\n\0", 5), {std::string("a\0b", 3), std::string(1, '\0')}}};
    for (const std::size_t length : {65534, 65535, 65536, 300000}) { // also on the edge of a buffer
        const std::string line(length, 'x');
        cases.push_back({line + "\r\nb\r\n", {line, "b"}});
        cases.push_back({line + "\rb", {line, "b"}});
    }
    for (const auto& [bytes, lines] : cases) {
        folder.write("a", bytes);
        files.open(at("a"), OpenMode::Input, 1);
        for (const std::string& line : lines)
            EXPECT_EQ(files.lineInput(1), line);
        EXPECT_EQ(failureOf([&] { files.lineInput(1); }), "Input past end of file");
        files.close(1);
    }
}

TEST_F(NumberedFiles, AFileThatGrowsIsReadToWhereItEndedWhenItWasOpened)
{
    folder.write("a", "one\r\ntwo");
    files.open(at("a"), OpenMode::Input, 1);
    for (const char* line : {"one", "two"}) {
        std::ofstream(folder.native("a"), std::ios::app) << "\r\nmore";
        EXPECT_EQ(files.lineInput(1), line);
    }
    EXPECT_TRUE(files.endOfFile(1));
}

TEST_F(NumberedFiles, ALineOfAGigabyteTakesNoMemory)
{
    folder.write("a", "");
    std::filesystem::resize_file(folder.native("a"), std::uintmax_t{1} << 30);
    EXPECT_EQ(did("read a"), "Out of memory");
}

TEST_F(NumberedFiles, NumbersRunFromOneTo255AndServeOnlyWhatTheyWereOpenedFor)
{
    // No line is joined to a last one without end.
    expect({{"put a > one\r\n2", ""}, {"append a > ", ""}, {"append a > Köln", ""}, {"append a > Łódź", ""},
        {"bytes a", "one\r\n2\r\n\r\nK\xF6ln\r\nŁódź\r\n"}});
    const auto opened = [&](int number) { return failureOf([&] { files.open(at("a"), OpenMode::Input, number); }); };
    for (int number = 1; number <= 255; ++number) {
        EXPECT_EQ(files.freeFile(), number);
        EXPECT_EQ(opened(number), "");
    }
    EXPECT_EQ(failureOf([&] { files.freeFile(); }), "Too many files");
    EXPECT_EQ(opened(7) + opened(0) + opened(256), std::string(InUse) + BadName + BadName);
    files.close(7);
    files.close(7);
    EXPECT_EQ(files.freeFile(), 7);
    files.open(at("b"), OpenMode::Output, 7);
    for (const int number : {1, 7}) {
        EXPECT_EQ(failureOf([&] { number == 1 ? files.print(1, "") : void(files.lineInput(7)); }), BadName);
        files.closeAll();
    }
}

TEST_F(NumberedFiles, AFileThatIsOpenIsNeitherEmptiedNorTakenAwayAndNoOtherThingIsAFile)
{
    expect({{"put a.lst > text", ""}, {"put b > 1", ""}, {"link link.lst > a.lst", ""}});
    files.open(at("a.lst"), OpenMode::Input, 1);
    for (const std::string name : {"a.lst", "link.lst"})
        expect({{"empty " + name, InUse}, {"append " + name + " > x", InUse}, {"write " + name + " > ", InUse},
            {"remove " + name, Denied}, {"rename " + name + " > c", Denied}, {"copy " + name + " > c", Denied},
            {"copy b > " + name, Denied}, {"read " + name, "text"}});
    files.closeAll();
    expect({{"replace a.lst > b", ""}, {"read a.lst", "1"}, {"remove a.lst", ""}, {"makeFolder folder", ""},
        {"pipe pipe", "0"}});
    for (const std::string path : {"folder", "pipe"})
        expect({{"exists " + path, "False"}, {"length " + path, NoFile}, {"remove " + path, NoFile},
            {"copy " + path + " > copy", NoFile}, {"read " + path, NoAccess}, {"empty " + path, NoAccess},
            {"write " + path + " > x", NoAccess}, {"replace b > " + path, NoAccess}});
}

TEST_F(NumberedFiles, NothingIsWrittenThroughALinkButAListOrAnInformationFileToOneOfItsKind)
{
    makeFolder("folder.lst");
    expect({{"put source > new", ""}, {"link chain.lst > victim.txt", ""}});
    enum Outcome { Replaced, Followed, Refused };
    struct Case {
        std::string link;
        std::string target;
        Outcome outcome;
    };
    const Case cases[] = {
        {.link = "own.txt", .target = "victim.lst", .outcome = Replaced},
        {.link = "own", .target = "none", .outcome = Replaced},
        {.link = "own.jpg", .target = "folder.lst", .outcome = Replaced},
        {.link = "own.LST", .target = "victim.lst", .outcome = Followed},
        {.link = "own.info", .target = "victim.INFO", .outcome = Followed},
        {.link = "own.lst", .target = "victim.txt", .outcome = Refused},
        {.link = "own.lst", .target = "victim.INFO", .outcome = Refused},
        {.link = "own.lst", .target = "none.lst", .outcome = Refused},
        {.link = "own.lst", .target = "chain.lst", .outcome = Refused},
        {.link = "own.lst", .target = "folder.lst", .outcome = Refused},
    };
    for (const auto& [link, target, outcome] : cases) {
        for (const std::string verb : {"append", "empty", "write", "replace", "removeLink"}) {
            SCOPED_TRACE(verb + " " + link + " > " + target);
            expect({{"put victim.txt > x", ""}, {"put victim.lst > x", ""}, {"put victim.INFO > x", ""}});
            const auto before = onDisk();
            did("link " + link + " > " + target);
            const bool writes = verb != "removeLink";
            EXPECT_EQ(did(verb + " " + link + " > source"), writes && outcome == Refused ? NoAccess : "");
            EXPECT_EQ(std::filesystem::is_symlink(folder.native(link)), writes && outcome != Replaced);
            const std::string bytes =
                folder.read("victim.txt") + folder.read("victim.lst") + folder.read("victim.INFO");
            EXPECT_EQ(bytes == "xxx", !writes || outcome != Followed);
            std::filesystem::remove(folder.native(link));
            EXPECT_EQ(onDisk(), before);
        }
    }
    expect({{"removeLink source", ""}, {"read source", "new"}, {"date chain.lst", ""}});
    EXPECT_NE(did("modified victim.txt"), "1000000000");
}

TEST_F(NumberedFiles, AFullDiskShowsAtPrintOrCloseAndNeverLater)
{
    const std::string line(1000, 'x');
    std::size_t printed = 0;
    files.open(at("a"), OpenMode::Output, 1);
    {
        const SmallDisk disk(70000);
        for (; failureOf([&] { files.print(1, line); }) != "Disk full"; ++printed)
            ASSERT_LT(printed, 1000U);
    }
    files.close(1);
    EXPECT_EQ(folder.read("a").size(), printed * 1002) << "room that came back loses no line that was printed";
    files.open(at("a"), OpenMode::Append, 1);
    files.print(1, line);
    const SmallDisk disk(70000);
    EXPECT_EQ(failureOf([&] { files.close(1); }), "Disk full");
    EXPECT_EQ(files.freeFile(), 1) << "the number is free all the same";
}

TEST_F(NumberedFiles, AWholeFileKeepsRightsOwnerAndSecondNameAndWhatWasThereWhereItFindsNoRoom)
{
    constexpr uid_t Nobody = 65534;
    const std::string was = "what was there before";
    for (const char* name : {"private", "foreign", "second"})
        folder.write(name, was);
    // The second one is written in place.
    EXPECT_EQ(did("hardLink first > second"), "");
    // One that belongs to somebody else, in a folder where anybody may write.
    ASSERT_EQ(chmod(folder.path().c_str(), 0777) | chmod(folder.native("foreign").c_str(), 0666), 0);
    ASSERT_EQ(chmod(folder.native("private").c_str(), 0602), 0);
    const ino_t before = status("private").st_ino;
    for (const std::string name : {"private", "second", "new"}) {
        const SmallDisk disk(50);
        expect({{"write " + name + " > " + std::string(100, 'x'), "Disk full"}, {"exists new", "False"},
            {"bytes private", was}, {"bytes second", was}});
    }
    EXPECT_EQ(onDisk().size(), 4U) << "something is left beside";
    for (const std::string name : {"private", "second", "foreign"}) {
        const uid_t user = geteuid();
        ASSERT_EQ(seteuid(user == 0 && name == "foreign" ? Nobody : user), 0);
        EXPECT_EQ(failureOf([&] { files.writeLines(at(name), {"Köln", "after"}, Sync::Yes); }), "") << name;
        ASSERT_EQ(seteuid(user), 0);
    }
    for (const char* name : {"private", "second", "foreign", "first"})
        EXPECT_EQ(folder.read(name), "K\xF6ln\r\nafter\r\n") << name;
    EXPECT_NE(status("private").st_ino, before) << "not written over, but replaced as a whole";
    EXPECT_EQ(status("private").st_mode & 07777U, 0602U);
    EXPECT_EQ(status("foreign").st_uid, geteuid());
}

TEST_F(NumberedFiles, PrefetchingReadsOnThreadsOfItsOwnUntilItIsStopped)
{
    const auto threads = [] { return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {}); };
    const auto before = threads();
    expect({{"put a > text", ""}, {"pipe pipe", "0"}});
    Names paths(900, at("a"));
    paths[1] = at("pipe");
    paths[2] = at("none");
    paths[3] = "relative";
    {
        PrefetchScope large(paths, PrefetchScope::LargeFiles);
        EXPECT_GT(threads(), before) << "they wait";
        for (int i = 0; i < 20; ++i)
            large.advance();
        const PrefetchScope small(paths, PrefetchScope::SmallFiles, {at("a")});
    }
    EXPECT_EQ(threads(), before);
}

} // namespace trovarium
