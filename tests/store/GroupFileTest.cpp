#include "store/GroupFile.h"

#include "runtime/Failure.h"
#include "support/FailureOf.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <utility>

namespace trovarium {

namespace {

using Lines = std::vector<std::string>;

Lines groupLines(const GroupOnShow& group)
{
    Lines lines;
    for (int i = 0; i <= group.GroupList.upperBound(); ++i)
        lines.push_back(group.GroupList(i));
    return lines;
}

FaultHook failAt(FileOperation failing, int count)
{
    return [failing, count](FileOperation operation, std::string_view) mutable {
        if (operation == failing && --count == 0)
            throw Failure(FailureKind::DeviceIo);
    };
}

class GroupFile : public testing::Test {
protected:
    std::string bytes(std::string_view name) { return test.bytes(test.paths().SlideGroupPath + std::string(name)); }

    TestAlbum test;
};

} // namespace

TEST_F(GroupFile, ReadsLinesAsTheyStandBehindAnEmptyFirstElement)
{
    const struct {
        std::string bytes;
        Lines lines;
    } cases[] = {
        {"", {""}},
        {"a.jpg\r\n\r\n b.jpg \nc.jpg", {"", "a.jpg", "", " b.jpg ", "c.jpg"}},
        {"Z\xFCrich.jpg\r\nŁódź.jpg\r\n", {"", "Zürich.jpg", "Łódź.jpg"}},
    };
    for (const auto& one : cases) {
        test.put(test.paths().SlideGroupPath + "G.lst", one.bytes);
        test.showGroup({"old", "old"}, {1, 2});
        EXPECT_TRUE(readGroupList(test.album(), "G.lst")) << one.bytes;
        EXPECT_EQ(groupLines(test.album().group), one.lines);
        ASSERT_EQ(test.album().group.GroupSelect.upperBound(), test.album().group.GroupList.upperBound());
        for (int i = 0; i <= test.album().group.GroupSelect.upperBound(); ++i)
            EXPECT_EQ(test.album().group.GroupSelect(i), 0);
    }
}

TEST_F(GroupFile, AReadThatFailsLeavesWhatWasReadAndTheOldFlags)
{
    test.putGroup("G.lst", {"a", "b", "c"});
    test.showGroup({"old"}, {1});
    test.files().setFaultHook(failAt(FileOperation::LineInput, 3));
    EXPECT_FALSE(readGroupList(test.album(), "G.lst"));
    EXPECT_EQ(groupLines(test.album().group), (Lines{"", "a", "b"}));
    EXPECT_EQ(test.album().group.GroupSelect(1), 1);
    EXPECT_EQ(test.files().freeFile(), 1);
    EXPECT_FALSE(readGroupList(test.album(), "none.lst"));
    EXPECT_EQ(groupLines(test.album().group), Lines{""});
    EXPECT_FALSE(test.isThere(test.library() + "\\Trovarium.Log"));
}

TEST_F(GroupFile, AddsTheSelectedLinesAtItsEnd)
{
    test.putGroup("Target.lst", {"z"});
    test.showGroup({"a", "b", "c"}, {1, 3});
    EXPECT_TRUE(AddToGroup(test.album(), "Target.lst"));
    EXPECT_EQ(bytes("Target.lst"), joinedLines({"z", "a", "c"}));
    // Element 0 is no photograph, but its flag counts.
    test.showGroup({"a"}, {0});
    EXPECT_TRUE(AddToGroup(test.album(), "New.lst"));
    EXPECT_EQ(bytes("New.lst"), "\r\n");
}

TEST_F(GroupFile, LosesOnlyLinesThatAgreeInPositionAndName)
{
    const struct {
        Lines file;
        std::vector<int> selected;
        Lines kept;
    } cases[] = {
        {{"a", "b", "c", "d"}, {2, 4}, {"a", "c"}},
        {{"a", "B", "c", "d"}, {2}, {"a", "c", "d"}},
        {{"b", "c", "d"}, {2, 3}, {"b", "c", "d"}},
        {{"a", "b"}, {}, {"a", "b"}},
    };
    for (const auto& one : cases) {
        test.putGroup("G.lst", one.file);
        test.put(test.paths().SlideGroupPath + "temp.group", "left behind");
        const std::string list = toNativePath(test.paths().SlideGroupPath + "G.lst");
        std::filesystem::permissions(list, std::filesystem::perms::owner_all);
        test.showGroup({"a", "b", "c", "d"}, one.selected);
        EXPECT_TRUE(RemoveFromGroupFile(test.album(), "G.lst"));
        EXPECT_EQ(bytes("G.lst"), joinedLines(one.kept));
        EXPECT_EQ(std::filesystem::status(list).permissions(), std::filesystem::perms::owner_all);
        EXPECT_FALSE(test.isThere(test.paths().SlideGroupPath + "temp.group"));
    }
}

TEST_F(GroupFile, ARemovalThatFailsKeepsTheList)
{
    const std::string whole = joinedLines({"a", "b", "c"});
    for (const FileOperation failing : {FileOperation::Open, FileOperation::LineInput, FileOperation::Print,
             FileOperation::Close, FileOperation::Copy}) {
        test.putGroup("G.lst", {"a", "b", "c"});
        test.showGroup({"a", "b", "c"}, {1});
        test.files().setFaultHook(failAt(failing, 1));
        EXPECT_FALSE(RemoveFromGroupFile(test.album(), "G.lst"));
        test.files().setFaultHook({});
        EXPECT_EQ(bytes("G.lst"), whole);
        EXPECT_EQ(test.files().freeFile(), 1);
    }
}

TEST_F(GroupFile, MovesTheSelectedLinesAsOneBlock)
{
    const struct {
        std::vector<int> selected;
        int dropPosition;
        std::string order;
    } cases[] = {
        {{2, 4}, -1, "bdace"},
        {{2, 4}, 1, "abdce"},
        {{3, 5}, 3, "abced"},
        {{1, 3}, -3, "bacde"},
        {{1, 2}, -6, "cdeab"},
        {{2}, 0, "bacde"},
        {{1, 4}, -1, "adbce"},
        {{1}, 40000, "bcdea"},
        {{}, 2, "abcde"},
    };
    for (const auto& one : cases) {
        test.showGroup({"a", "b", "c", "d", "e"}, one.selected);
        EXPECT_TRUE(ReorderGroupFile(test.album(), "G.lst", one.dropPosition));
        Lines order;
        for (const char name : one.order)
            order.emplace_back(1, name);
        EXPECT_EQ(bytes("G.lst"), joinedLines(order)) << "dropped at " << one.dropPosition;
    }
}

TEST_F(GroupFile, NoListIsChangedByFlagsThatBelongToAnother)
{
    test.putGroup("G.lst", {"a", "b"});
    test.showGroup({"c"}, {1}); // as many as are read
    test.files().setFaultHook(failAt(FileOperation::LineInput, 2));
    EXPECT_FALSE(readGroupList(test.album(), "G.lst"));
    EXPECT_FALSE(ReorderGroupFile(test.album(), "G.lst", 2));
    EXPECT_FALSE(AddToGroup(test.album(), "G.lst"));
    EXPECT_FALSE(RemoveFromGroupFile(test.album(), "G.lst"));
    EXPECT_EQ(bytes("G.lst"), joinedLines({"a", "b"}));
}

TEST_F(GroupFile, AListOfAnotherCaseIsTheOneThatIsMeant)
{
    const std::string folder = test.paths().SlideGroupPath;
    const auto lists = [&] { return test.files().list(folder + "*"); };
    test.putGroup("Trip.LST", {"a", "b"});
    test.showGroup({"a", "b"}, {1});
    EXPECT_TRUE(AddToGroup(test.album(), "Trip.lst"));
    EXPECT_TRUE(RemoveFromGroupFile(test.album(), "Trip.lst"));
    EXPECT_EQ(bytes("Trip.LST"), joinedLines({"b", "a"}));
    EXPECT_TRUE(ReorderGroupFile(test.album(), "Trip.lst", 1));
    EXPECT_EQ(bytes("Trip.LST"), joinedLines({"a", "b"}));
    EXPECT_EQ(lists(), Lines{"Trip.LST"});
    renameGroupList(test.album(), "Trip.lst", "trip.lst");
    EXPECT_EQ(lists(), Lines{"trip.lst"});
    test.putGroup("Rome.LST", {});
    EXPECT_EQ(failureOf([&] { renameGroupList(test.album(), "Trip.lst", "Rome.lst"); }), "File already exists");
    EXPECT_EQ(lists(), (Lines{"Rome.LST", "trip.lst"}));
}

TEST_F(GroupFile, MoreLinesThanAWalkCountsLoadButAreNeverRewritten)
{
    const Lines lines(32768, "p.jpg");
    test.putGroup("G.lst", lines);
    test.putGroup("Target.lst", {"z"});
    ASSERT_TRUE(readGroupList(test.album(), "G.lst"));
    EXPECT_EQ(test.album().group.GroupList.upperBound(), 32768);
    test.album().group.GroupSelect(1) = 1;
    EXPECT_FALSE(AddToGroup(test.album(), "Target.lst"));
    EXPECT_EQ(bytes("Target.lst"), joinedLines({"z"}));
    EXPECT_FALSE(ReorderGroupFile(test.album(), "G.lst", 5));
    EXPECT_FALSE(RemoveFromGroupFile(test.album(), "G.lst"));
    EXPECT_TRUE(bytes("G.lst") == joinedLines(lines));
}

TEST(GroupName, IsMendedWhereAFileCannotBearItAndMarksTheGroupOfAllInAnyCase)
{
    for (const auto& [name, mended] : {std::pair{"a.b/c", "a_b_c"}, {"\"|.<>?*:/\\", "__________"}}) {
        std::string text = name;
        EXPECT_FALSE(CheckGroupName(text)) << name;
        EXPECT_EQ(text, mended);
    }
    std::string good = " Zürich & co ";
    EXPECT_TRUE(CheckGroupName(good));
    EXPECT_EQ(good, " Zürich & co ");
    EXPECT_EQ(groupNameOf("a.b.lst"), "a");
    EXPECT_TRUE(isAllPhotosGroup("  all PHOTOS  "));
    EXPECT_FALSE(isAllPhotosGroup("All Photos"));
}

} // namespace trovarium
