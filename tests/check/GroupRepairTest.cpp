#include "LibraryCheck.h"

#include "check/GroupRepair.h"

#include <filesystem>
#include <utility>

namespace trovarium {

class GroupRepairTest : public LibraryCheck {
protected:
    GroupRepairTest()
    {
        for (const char* name : {"a.bmp", "b.bmp"})
            addInfoFile(name);
        test.put(infoFile("empty.bmp"), "");
    }
    void repair() { RemoveMissingPhotosFromGroup(test.album(), desktop); }
    bool isScratchThere() { return test.isThere(groupList("TmpGroup.lst")); }
};

TEST_F(GroupRepairTest, KeepsOrderAndDoublesOfWhatIsThereInEveryFileOfTheFolder)
{
    const std::string before = joinedLines({"b.bmp", "lost.bmp", "a.bmp", "", "empty.bmp", "b.bmp"});
    const std::vector<std::string> lists{"  All Photos  .lst", "Rome.lst", "notes.txt", "temp.group"};
    for (const std::string& list : lists)
        test.put(groupList(list), before);
    test.put(groupList("Empty.lst"), "");
    test.put(groupList("TmpGroup.lst"), joinedLines({"a.bmp"})); // of an earlier run, no group
    const Instant longAgo{std::chrono::seconds(1'000'000'000)};
    desktop.files().setModified(groupList("Empty.lst"), longAgo);
    std::filesystem::permissions(toNativePath(groupList("Rome.lst")), std::filesystem::perms::owner_all);
    std::filesystem::create_symlink("notes.txt", toNativePath(groupList("Link.lst")));
    repair();
    for (const std::string& list : lists)
        EXPECT_EQ(test.bytes(groupList(list)), joinedLines({"b.bmp", "a.bmp", "b.bmp"})) << list;
    EXPECT_TRUE(test.isThere(groupList("Empty.lst")));
    EXPECT_NE(dateOf(groupList("Empty.lst")), longAgo) << "a list is dated by each check";
    EXPECT_EQ(
        std::filesystem::status(toNativePath(groupList("Rome.lst"))).permissions(), std::filesystem::perms::owner_all);
    EXPECT_TRUE(std::filesystem::is_symlink(toNativePath(groupList("Link.lst"))));
    EXPECT_FALSE(isScratchThere());
    EXPECT_EQ(desktop.Screen().MousePointer(), DefaultPointer);
}

TEST_F(GroupRepairTest, AFailureLeavesTheListAsItStands)
{
    const struct {
        FileOperation operation;
        std::string pathEnding;
        FailureKind kind;
    } cases[] = {
        {FileOperation::Open, "Rome.lst", FailureKind::PathFileAccess},
        {FileOperation::LineInput, "Rome.lst", FailureKind::DeviceIo},
        {FileOperation::Close, "Rome.lst", FailureKind::DeviceIo},
        {FileOperation::Open, "TmpGroup.lst", FailureKind::PathFileAccess},
        {FileOperation::Print, "TmpGroup.lst", FailureKind::DiskFull},
        {FileOperation::Close, "TmpGroup.lst", FailureKind::DiskFull},
        {FileOperation::Copy, "Rome.lst", FailureKind::DiskFull},
        {FileOperation::Length, "b.bmp.info", FailureKind::DeviceIo},
        {FileOperation::List, "Photo_Info\\*.*", FailureKind::DeviceIo},
    };
    const std::string before = joinedLines({"a.bmp", "lost.bmp", "b.bmp"});
    for (const auto& tried : cases) {
        SCOPED_TRACE(&tried - cases);
        test.put(groupList("Rome.lst"), before);
        failAt(tried.operation, tried.pathEnding, tried.kind);
        repair();
        desktop.files().setFaultHook({});
        EXPECT_EQ(test.bytes(groupList("Rome.lst")), before);
        EXPECT_FALSE(isScratchThere());
        EXPECT_EQ(desktop.files().freeFile(), 1) << "a file was left open";
    }
    repair();
    EXPECT_EQ(test.bytes(groupList("Rome.lst")), joinedLines({"a.bmp", "b.bmp"}));
}

TEST_F(GroupRepairTest, NothingIsRewrittenWithoutTheFolderOfTheInformationFilesOrAfterASkip)
{
    const std::string before = joinedLines({"a.bmp", "lost.bmp"});
    test.put(groupList("Rome.lst"), before);
    const std::string infoPath = std::exchange(test.paths().InfoPath, test.library() + "\\Unplugged\\");
    repair();
    EXPECT_EQ(test.bytes(groupList("Rome.lst")), before);
    EXPECT_EQ(desktop.Screen().MousePointer(), DefaultPointer);
    test.paths().InfoPath = infoPath;
    test.album().AutoCheckBypass = true;
    repair();
    EXPECT_EQ(test.bytes(groupList("Rome.lst")), before);
}

TEST_F(GroupRepairTest, ABlankPathEndsTheProgram)
{
    test.paths().SlideGroupPath.clear();
    prompts.expectNotice("Critical Error-SubRemoveMissingPhotosFromGroup: SlideGroup path is blank!");
    EXPECT_EQ(desktop.guarded([this] { repair(); }), 1);
}

} // namespace trovarium
