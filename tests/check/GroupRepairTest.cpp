#include "LibraryCheck.h"

namespace trovarium {

using GroupRepairTest = LibraryCheck;

TEST_F(GroupRepairTest, KeepsOrderAndDoublesOfWhatIsThereAndByAFailureTheListAsItStands)
{
    const std::string scratch = groupList("TmpGroup.lst");
    const auto repair = [this] { RemoveMissingPhotosFromGroup(test.album(), desktop); };
    for (const char* name : {"a.bmp", "b.bmp"})
        addInfoFile(name);
    test.put(infoFile("empty.bmp"), "");
    const std::vector<std::string> lists{"  All Photos  .lst", "notes.txt"};
    for (const std::string& list : lists)
        test.putGroup(list, {"b.bmp", "lost.bmp", "a.bmp", "", "empty.bmp", "b.bmp"});
    test.putGroup("Empty.lst", {});
    test.putGroup("TmpGroup.lst", {"a.bmp"}); // of an earlier run, no group
    const Instant longAgo{std::chrono::seconds(1'000'000'000)};
    desktop.files().setModified(groupList("Empty.lst"), longAgo);
    repair();
    for (const std::string& list : lists)
        EXPECT_EQ(test.bytes(groupList(list)), joinedLines({"b.bmp", "a.bmp", "b.bmp"})) << list;
    EXPECT_NE(dateOf(groupList("Empty.lst")), longAgo) << "a list is dated by each check";
    EXPECT_FALSE(test.isThere(scratch));

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
        EXPECT_FALSE(test.isThere(scratch));
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
    EXPECT_EQ(desktop.guarded(repair), 1);
}

} // namespace trovarium
