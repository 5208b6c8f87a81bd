#include "store/GroupFile.h"

#include "support/FailureOf.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>

namespace trovarium {

namespace {

using Lines = std::vector<std::string>;
using enum FileOperation;

class GroupFile : public testing::Test {
protected:
    std::string bytes(std::string_view name) { return test.bytes(folder + std::string(name)); }
    Lines lists() { return test.files().list(folder + "*"); }
    // A star marks the selected ones.
    Lines read()
    {
        Lines lines;
        for (int i = 0; i <= group.GroupList.upperBound(); ++i)
            lines.push_back(group.GroupList(i) + (group.GroupSelect(i) == 0 ? "" : "*"));
        return lines;
    }

    TestAlbum test;
    Album& album = test.album();
    GroupOnShow& group = test.album().group;
    const std::string folder = test.paths().SlideGroupPath;
};

} // namespace

TEST_F(GroupFile, ReadsLinesAsTheyStandBehindAnEmptyFirstElement)
{
    for (const auto& [bytes, lines] : {std::pair<std::string, Lines>{"", {""}},
             {"a.jpg\r\n\r\n b.jpg \nc.jpg", {"", "a.jpg", "", " b.jpg ", "c.jpg"}},
             {"Z\xFCrich.jpg\r\nŁódź.jpg\r\n", {"", "Zürich.jpg", "Łódź.jpg"}}}) {
        test.put(folder + "G.lst", bytes);
        test.showGroup({"old", "old"}, {1, 2});
        EXPECT_TRUE(readGroupList(album, "G.lst")) << bytes;
        EXPECT_EQ(read(), lines);
    }
}

TEST_F(GroupFile, OneThatWasNotReadToItsEndOrIsTooLongForAWalkIsNeverRewritten)
{
    const auto changesNothing = [this](const std::string& before) {
        EXPECT_FALSE(ReorderGroupFile(album, "G.lst", 2) || AddToGroup(album, "G.lst"));
        EXPECT_FALSE(RemoveFromGroupFile(album, "G.lst"));
        EXPECT_TRUE(bytes("G.lst") == before);
        EXPECT_EQ(test.files().freeFile(), 1);
    };
    test.putGroup("G.lst", {"a", "b"});
    test.showGroup({"c"}, {1}); // as many as are read
    test.failAt(LineInput, "", FailureKind::DeviceIo, 2);
    EXPECT_FALSE(readGroupList(album, "G.lst"));
    EXPECT_EQ(read(), (Lines{"", "a*"})) << "the old flags stay";
    test.files().setFaultHook({});
    changesNothing(joinedLines({"a", "b"}));
    EXPECT_FALSE(readGroupList(album, "none.lst"));
    EXPECT_EQ(read(), Lines{""});
    EXPECT_EQ(test.log(), "");

    const Lines lines(32768, "p.jpg");
    test.putGroup("G.lst", lines);
    ASSERT_TRUE(readGroupList(album, "G.lst"));
    group.GroupSelect(1) = 1;
    changesNothing(joinedLines(lines));
}

TEST_F(GroupFile, LosesOnlyLinesThatAgreeInPositionAndName)
{
    using Case = std::tuple<Lines, std::vector<int>, Lines>;
    for (const auto& [file, selected, kept] : {Case{{"a", "b", "c", "d"}, {2, 4}, {"a", "c"}},
             {{"a", "B", "c", "d", "e"}, {2}, {"a", "c", "d", "e"}}, {{"b", "c", "d"}, {2, 3}, {"b", "c", "d"}}}) {
        test.putGroup("G.lst", file);
        test.put(folder + "temp.group", "left behind");
        test.showGroup({"a", "b", "c", "d"}, selected);
        for (const FileOperation failing : {Open, LineInput, Print, Close, Copy}) {
            test.failAt(failing);
            EXPECT_FALSE(RemoveFromGroupFile(album, "G.lst"));
            test.files().setFaultHook({});
            EXPECT_EQ(bytes("G.lst"), joinedLines(file));
            EXPECT_EQ(test.files().freeFile(), 1);
        }
        EXPECT_TRUE(RemoveFromGroupFile(album, "G.lst"));
        EXPECT_EQ(bytes("G.lst"), joinedLines(kept));
        EXPECT_EQ(lists(), Lines{"G.lst"});
    }
}

TEST_F(GroupFile, MovesTheSelectedLinesAsOneBlock)
{
    using Case = std::tuple<std::vector<int>, int, std::string>;
    for (const auto& [selected, dropPosition, names] :
        {Case{{2, 4}, -1, "bdace"}, {{2, 4}, 1, "abdce"}, {{3, 5}, 3, "abced"}, {{1, 3}, -3, "bacde"},
            {{1, 2}, -6, "cdeab"}, {{2}, 0, "bacde"}, {{1, 4}, -1, "adbce"}, {{1}, 40000, "bcdea"}, {{}, 2, "abcde"}}) {
        test.showGroup({"a", "b", "c", "d", "e"}, selected);
        EXPECT_TRUE(ReorderGroupFile(album, "G.lst", dropPosition));
        std::string order = bytes("G.lst");
        std::erase_if(order, [](char c) { return c == '\r' || c == '\n'; });
        EXPECT_EQ(order, names) << "dropped at " << dropPosition;
    }
}

TEST_F(GroupFile, AListOfAnotherCaseIsTheOneThatIsMeant)
{
    test.putGroup("Trip.LST", {"a", "b"});
    test.showGroup({"a", "b"}, {0, 1}); // element 0 is no photograph, but its flag counts
    EXPECT_TRUE(AddToGroup(album, "Trip.lst"));
    EXPECT_EQ(bytes("Trip.LST"), joinedLines({"a", "b", "", "a"}));
    EXPECT_TRUE(RemoveFromGroupFile(album, "Trip.lst"));
    EXPECT_TRUE(ReorderGroupFile(album, "Trip.lst", 2));
    EXPECT_EQ(bytes("Trip.LST"), joinedLines({"b", "a"}));
    EXPECT_EQ(lists(), Lines{"Trip.LST"});
    renameGroupList(album, "Trip.lst", "trip.lst");
    EXPECT_EQ(lists(), Lines{"trip.lst"});
    test.putGroup("Rome.LST", {});
    EXPECT_EQ(failureOf([&] { renameGroupList(album, "Trip.lst", "Rome.lst"); }), "File already exists");
    EXPECT_EQ(lists(), (Lines{"Rome.LST", "trip.lst"}));
}

TEST(GroupName, IsMendedWhereAFileCannotBearItAndMarksTheGroupOfAllInAnyCase)
{
    for (const auto& [name, mended] :
        {std::pair{"a.b/c", "a_b_c"}, {"\"|.<>?*:/\\", "__________"}, {" Zürich & co ", " Zürich & co "}}) {
        std::string text = name;
        EXPECT_EQ(CheckGroupName(text), std::string_view(name) == mended) << name;
        EXPECT_EQ(text, mended);
    }
    EXPECT_EQ(groupNameOf("a.b.lst"), "a");
    EXPECT_TRUE(isAllPhotosGroup("  all PHOTOS  "));
    EXPECT_FALSE(isAllPhotosGroup("All Photos"));
}

} // namespace trovarium
