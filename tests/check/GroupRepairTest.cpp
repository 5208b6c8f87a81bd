#include "LibraryCheck.h"

#include "check/GroupRepair.h"

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
    repair();
    for (const std::string& list : lists)
        EXPECT_EQ(test.bytes(groupList(list)), joinedLines({"b.bmp", "a.bmp", "b.bmp"})) << list;
    EXPECT_TRUE(test.isThere(groupList("Empty.lst")));
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

TEST_F(GroupRepairTest, AScratchFileOfAnEarlierRunIsNoGroup)
{
    for (const std::string list : {"", "b.bmp\r\n"}) {
        test.put(groupList("TmpGroup.lst"), joinedLines({"a.bmp", "b.bmp"}));
        if (!list.empty())
            test.put(groupList("Rome.lst"), list);
        repair();
        EXPECT_FALSE(isScratchThere());
        EXPECT_EQ(test.bytes(groupList("Rome.lst")), list);
    }
}

TEST_F(GroupRepairTest, ABlankPathEndsTheProgram)
{
    test.paths().SlideGroupPath.clear();
    prompts.expectNotice("Critical Error-SubRemoveMissingPhotosFromGroup: SlideGroup path is blank!");
    EXPECT_EQ(desktop.guarded([this] { repair(); }), 1);
}

} // namespace trovarium
