#include "platform/files/FileService.h"
#include "support/FailureOf.h"
#include "support/TemporaryFolder.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace trovarium {

namespace {

using Lines = std::vector<std::string>;

// The disk takes no file beyond `bytes`, so that real writes fail.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_before = {};
    sighandler_t m_handler;
};

class NumberedFiles : public testing::Test {
protected:
    std::string at(std::string_view name) const { return folder.inside(name); }

    Lines linesOf(std::string_view bytes)
    {
        folder.write("lines", bytes);
        files.open(at("lines"), OpenMode::Input, 1);
        Lines lines;
        while (!files.endOfFile(1))
            lines.push_back(files.lineInput(1));
        EXPECT_EQ(failureOf([&] { files.lineInput(1); }), "Input past end of file");
        files.close(1);
        return lines;
    }

    TemporaryFolder folder;
    FileService files;
};

} // namespace

TEST_F(NumberedFiles, ALineEndsAtCrLfCrOrLf)
{
    EXPECT_EQ(linesOf(""), Lines{});
    EXPECT_EQ(linesOf("\r\n"), Lines{""});
    EXPECT_EQ(linesOf("a"), Lines{"a"}) << "a last line without an end counts";
    EXPECT_EQ(linesOf("a\r\nb\rc\nd"), (Lines{"a", "b", "c", "d"}));
    EXPECT_EQ(linesOf("a\r\rb\n\n\r\n"), (Lines{"a", "", "b", "", ""}));
    EXPECT_EQ(linesOf("K\xF6ln\r\nŁódź\n"), (Lines{"Köln", "Łódź"}));
    EXPECT_EQ(linesOf(std::string("a\0b\n\0", 5)), (Lines{std::string("a\0b", 3), std::string(1, '\0')}));
}

TEST_F(NumberedFiles, LineEndsOnTheEdgeOfABufferAreWhole)
{
    for (std::size_t length = 65530; length < 65540; ++length) {
        const std::string line(length, 'x');
        EXPECT_EQ(linesOf(line + "\r\nb\r\n"), (Lines{line, "b"})) << length;
        EXPECT_EQ(linesOf(line + "\rb"), (Lines{line, "b"})) << length;
    }
    const std::string longLine(300000, 'y');
    EXPECT_EQ(linesOf("a\n" + longLine), (Lines{"a", longLine}));
}

TEST_F(NumberedFiles, AFileThatGrowsWhileItIsReadEndsWhereItStood)
{
    folder.write("a", "one\r\ntwo\r\n");
    files.open(at("a"), OpenMode::Input, 1);
    EXPECT_EQ(files.lineInput(1), "one");
    std::ofstream(folder.native("a"), std::ios::app) << "three\r\n";
    EXPECT_EQ(files.lineInput(1), "two");
    EXPECT_TRUE(files.endOfFile(1));
    files.close(1);
}

TEST_F(NumberedFiles, ALineBeyondAllMeasureIsAFailure)
{
    folder.write("film", "");
    std::filesystem::resize_file(folder.native("film"), std::uintmax_t{1} << 30);
    files.open(at("film"), OpenMode::Input, 1);
    EXPECT_EQ(failureOf([&] { files.lineInput(1); }), "Out of memory");
    files.close(1);
}

TEST_F(NumberedFiles, OutputEmptiesAtOnceAndAppendNeverJoinsALastLineWithoutAnEnd)
{
    folder.write("a", "one.jpg");
    files.open(at("a"), OpenMode::Append, 1);
    files.close(1);
    EXPECT_EQ(folder.read("a"), "one.jpg") << "opening alone changes nothing";
    for (const std::string_view line : {"", "Köln", "Łódź"}) {
        files.open(at("a"), OpenMode::Append, 1);
        files.print(1, line);
        files.close(1);
    }
    EXPECT_EQ(folder.read("a"), "one.jpg\r\n\r\nK\xF6ln\r\nŁódź\r\n");
    files.open(at("a"), OpenMode::Output, 1);
    EXPECT_EQ(folder.read("a"), "");
}

TEST_F(NumberedFiles, NumbersRunFromOneTo255)
{
    folder.write("a", "");
    for (int number = 1; number <= 255; ++number) {
        EXPECT_EQ(files.freeFile(), number);
        files.open(at("a"), OpenMode::Input, number);
    }
    EXPECT_EQ(failureOf([&] { files.freeFile(); }), "Too many files");
    EXPECT_EQ(failureOf([&] { files.open(at("a"), OpenMode::Input, 7); }), "File already open");
    files.close(7);
    files.close(7);
    EXPECT_EQ(files.freeFile(), 7);
    for (const int number : {0, -1, 256})
        EXPECT_EQ(failureOf([&] { files.open(at("a"), OpenMode::Input, number); }), "Bad file name or number");
    files.closeAll();
    EXPECT_EQ(files.freeFile(), 1);
}

TEST_F(NumberedFiles, ANumberServesOnlyWhatItWasOpenedFor)
{
    folder.write("a", "line");
    files.open(at("a"), OpenMode::Input, 1);
    files.open(at("b"), OpenMode::Output, 2);
    for (const int number : {1, 3})
        EXPECT_EQ(failureOf([&] { files.print(number, ""); }), "Bad file name or number");
    for (const int number : {2, 3})
        EXPECT_EQ(failureOf([&] { files.lineInput(number); }), "Bad file name or number");
}

TEST_F(NumberedFiles, AFileThatIsOpenIsNeitherEmptiedNorTakenAway)
{
    folder.write("a", "text");
    std::filesystem::create_symlink("a", folder.native("link"));
    files.open(at("a"), OpenMode::Input, 1);
    for (const OpenMode mode : {OpenMode::Output, OpenMode::Append}) {
        EXPECT_EQ(failureOf([&] { files.open(at("a"), mode, 2); }), "File already open");
        EXPECT_EQ(failureOf([&] { files.open(at("link"), mode, 2); }), "File already open");
    }
    EXPECT_EQ(failureOf([&] { files.writeWhole(at("a"), ""); }), "File already open");
    EXPECT_EQ(failureOf([&] { files.remove(at("a")); }), "Permission denied");
    EXPECT_EQ(failureOf([&] { files.rename(at("a"), at("b")); }), "Permission denied");
    EXPECT_EQ(failureOf([&] { files.copy(at("a"), at("b")); }), "Permission denied");
    EXPECT_EQ(folder.read("a"), "text");
    files.open(at("a"), OpenMode::Input, 2);
    files.closeAll();
    files.remove(at("a"));
}

TEST_F(NumberedFiles, FoldersAndPipesAreNoFiles)
{
    std::filesystem::create_directory(folder.native("folder"));
    ASSERT_EQ(mkfifo(folder.native("pipe").c_str(), 0600), 0);
    for (const std::string& path : Lines{at("folder"), at("pipe"), "/dev\\null"}) {
        SCOPED_TRACE(path);
        EXPECT_FALSE(files.exists(path));
        EXPECT_EQ(failureOf([&] { files.remove(path); }), "File not found");
        EXPECT_EQ(failureOf([&] { files.copy(path, at("copy")); }), "File not found");
        EXPECT_EQ(failureOf([&] { files.open(path, OpenMode::Input, 1); }), "Path/File access error");
        EXPECT_EQ(failureOf([&] { files.open(path, OpenMode::Output, 1); }), "Path/File access error");
        EXPECT_EQ(failureOf([&] { files.writeWhole(path, "x"); }), "Path/File access error");
        EXPECT_EQ(failureOf([&] { files.replaceContent(at("list"), path); }), "Path/File access error");
    }
}

TEST_F(NumberedFiles, AFullDiskShowsAtPrintOrCloseAndNeverLater)
{
    const std::string line(100, 'x');
    for (const int count : {1, 500, 5000}) {
        SCOPED_TRACE(count);
        files.open(at("a"), OpenMode::Output, 1);
        const SmallDisk disk(50);
        std::string failure;
        for (int printed = 0; printed < count && failure.empty(); ++printed)
            failure = failureOf([&] { files.print(1, line); });
        const std::string atClose = failureOf([&] { files.close(1); });
        EXPECT_EQ(failure.empty() ? atClose : failure, "Disk full");
        EXPECT_EQ(files.freeFile(), 1) << "the number is free all the same";
        EXPECT_EQ(failureOf([&] { files.close(1); }), "");
    }
}

TEST_F(NumberedFiles, RoomThatComesBackLosesNoLineThatWasPrinted)
{
    const std::string line(1000, 'x');
    files.open(at("a"), OpenMode::Output, 1);
    int printed = 0;
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
        for (const char* name : {"old", "second", "new"})
            EXPECT_EQ(failureOf([&] { files.writeWhole(at(name), std::string(100, 'x')); }), "Disk full") << name;
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
    const bool isRoot = geteuid() == 0;
    for (const std::string name : {"private", "link", "dangling", "second", "foreign"}) {
        const bool asNobody = isRoot && name == "foreign";
        ASSERT_EQ(asNobody ? seteuid(Nobody) : 0, 0);
        const std::string failure = failureOf([&] { files.writeLines(at(name), {"Köln", "after"}, Sync::Yes); });
        ASSERT_EQ(asNobody ? seteuid(0) : 0, 0);
        EXPECT_EQ(failure, "") << name;
        EXPECT_EQ(folder.read(name), "K\xF6ln\r\nafter\r\n") << name;
    }
    struct stat status = {};
    ASSERT_EQ(stat(folder.native("private").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
    ASSERT_EQ(stat(folder.native("foreign").c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, geteuid());
    EXPECT_EQ(folder.read("first"), folder.read("second"));
    for (const char* name : {"link", "dangling"})
        EXPECT_TRUE(std::filesystem::is_symlink(folder.native(name))) << name;
    EXPECT_EQ(folder.read("sub/made"), folder.read("sub/target"));
}

TEST_F(NumberedFiles, AnInjectedFaultIsWhatTheOperationFailsWith)
{
    folder.write("a", "line");
    std::vector<FileOperation> seen;
    std::optional<FileOperation> failing;
    files.setFaultHook([&](FileOperation operation, std::string_view path) {
        EXPECT_TRUE(path.starts_with(folder.inside())) << path;
        seen.push_back(operation);
        if (operation == failing)
            throw Failure(FailureKind::DiskFull);
    });

    const std::vector<std::pair<FileOperation, std::function<void()>>> operations{
        {FileOperation::Open, [&] { files.open(at("b"), OpenMode::Output, 9); }},
        {FileOperation::SetDate, [&] { files.setModified(at("a"), Instant()); }},
        {FileOperation::Copy, [&] { files.copy(at("a"), at("b")); }},
        {FileOperation::Delete, [&] { files.remove(at("a")); }},
        {FileOperation::Rename, [&] { files.rename(at("a"), at("b")); }},
        {FileOperation::MakeFolder, [&] { files.makeFolder(at("c")); }},
        {FileOperation::Attributes, [&] { files.attributes(at("a"), FolderEntry::Kind::File); }},
        {FileOperation::Print, [&] { files.writeWhole(at("b"), "x"); }},
        {FileOperation::Close, [&] { files.writeWhole(at("b"), "x"); }},
    };
    const Instant before = files.modified(at("a"));
    for (const auto& [operation, statement] : operations) {
        failing = operation;
        seen.clear();
        EXPECT_EQ(failureOf(statement), "Disk full");
        EXPECT_EQ(seen.back(), operation);
    }
    failing.reset();
    EXPECT_EQ(files.list(at("*")), Lines{"a"}) << "nothing was done";
    EXPECT_EQ(files.modified(at("a")), before);
}

} // namespace trovarium
