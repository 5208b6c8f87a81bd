#include "LibraryCheck.h"

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
    const std::vector<std::string> lists{"  All Photos  .lst", "Rome.lst", "notes.txt", "temp.group"};
    for (const std::string& list : lists)
        test.putGroup(list, {"b.bmp", "lost.bmp", "a.bmp", "", "empty.bmp", "b.bmp"});
    test.putGroup("Empty.lst", {});
    test.putGroup("TmpGroup.lst", {"a.bmp"}); // of an earlier run, no group
    const Instant longAgo{std::chrono::seconds(1'000'000'000)};
    desktop.files().setModified(groupList("Empty.lst"), longAgo);
    const std::string rome = toNativePath(groupList("Rome.lst"));
    std::filesystem::permissions(rome, std::filesystem::perms::owner_all);
    std::filesystem::create_symlink("notes.txt", toNativePath(groupList("Link.lst")));
    repair();
    for (const std::string& list : lists)
        EXPECT_EQ(test.bytes(groupList(list)), joinedLines({"b.bmp", "a.bmp", "b.bmp"})) << list;
    EXPECT_NE(dateOf(groupList("Empty.lst")), longAgo) << "a list is dated by each check";
    EXPECT_EQ(std::filesystem::status(rome).permissions(), std::filesystem::perms::owner_all);
    EXPECT_TRUE(std::filesystem::is_symlink(toNativePath(groupList("Link.lst"))));
    EXPECT_FALSE(isScratchThere());
}

TEST_F(GroupRepairTest, AFailureLeavesTheListAsItStands)
{
    using enum FileOperation;
    const std::string before = joinedLines({"a.bmp", "lost.bmp", "b.bmp"});
    test.put(groupList("Rome.lst"), before);
    for (const auto& [operation, ending] : {std::pair{Open, "Rome.lst"}, {LineInput, "Rome.lst"}, {Close, "Rome.lst"},
             {Open, "TmpGroup.lst"}, {Print, "TmpGroup.lst"}, {Close, "TmpGroup.lst"}, {Copy, "Rome.lst"},
             {Length, "b.bmp.info"}, {List, "Photo_Info\\*.*"}}) {
        SCOPED_TRACE(testing::Message() << static_cast<int>(operation) << ending);
        test.failAt(operation, ending);
        repair();
        desktop.files().setFaultHook({});
        EXPECT_EQ(test.bytes(groupList("Rome.lst")), before);
        EXPECT_FALSE(isScratchThere());
        EXPECT_EQ(desktop.files().freeFile(), 1) << "a file was left open";
        EXPECT_EQ(desktop.Screen().MousePointer(), DefaultPointer);
    }
    const std::string infoPath = std::exchange(test.paths().InfoPath, test.library() + "\\Unplugged\\");
    repair();
    test.paths().InfoPath = infoPath;
    test.album().AutoCheckBypass = true;
    repair();
    EXPECT_EQ(test.bytes(groupList("Rome.lst")), before);
    test.paths().SlideGroupPath.clear();
    prompts.expectNotice("Critical Error-SubRemoveMissingPhotosFromGroup: SlideGroup path is blank!");
    EXPECT_EQ(desktop.guarded([this] { repair(); }), 1);
}

} // namespace trovarium
