// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/GroupFile.h"
#include "store/InfoFile.h"
#include "store/Log.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

namespace trovarium {

using Lines = std::vector<std::string>;
using enum FileOperation;

class Store : public testing::Test {
protected:
    std::string bytes(std::string_view name) { return test.bytes(folder + std::string(name)); }
    Lines lists() { return test.files().list(folder + "*"); }
    void start()
    {
        readFolderSettings(album);
        CheckDirPaths(album, testDesktop());
    }
    // The group on show; a star marks the selected ones.
    Lines read()
    {
        Lines lines;
        for (int i = 0; i <= group.GroupList.upperBound(); ++i)
            lines.push_back(group.GroupList(i) + (group.GroupSelect(i) == 0 ? "" : "*"));
        return lines;
    }

    TestAlbum test;
    Album& album = test.album();
    GroupOnShow& group = album.group;
    const AlbumPaths own = test.paths();
    const std::string folder = own.SlideGroupPath;
    const std::string path = own.InfoPath + "a.jpg.info";
};

TEST_F(Store, AListIsReadLineByLine)
{
    test.put(folder + "G.lst", "a.jpg\r\n\r\n b.jpg \nZ\xFCrich.jpg\r\nŁódź.jpg");
    test.showGroup({"old", "old"}, {1, 2});
    EXPECT_TRUE(readGroupList(album, "G.lst"));
    EXPECT_EQ(read(), (Lines{"", "a.jpg", "", " b.jpg ", "Zürich.jpg", "Łódź.jpg"}));
}

TEST_F(Store, AListThatWasNotReadOrIsTooLongIsNeverRewritten)
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
    EXPECT_EQ(test.log(), "");

    const Lines lines(32768, "p.jpg");
    test.putGroup("G.lst", lines);
    ASSERT_TRUE(readGroupList(album, "G.lst"));
    group.GroupSelect(1) = 1;
    changesNothing(joinedLines(lines));
}

TEST_F(Store, AListLosesOnlyLinesThatAgreeInPositionAndName)
{
    test.files().open(test.library() + "\\reporting", OpenMode::Output, 1);
    struct Case {
        Lines file;
        std::vector<int> selected;
        Lines kept;
    };
    for (const auto& [file, selected, kept] :
        {Case{.file = {"a", "b", "c", "d"}, .selected = {2, 4}, .kept = {"a", "c"}},
            Case{.file = {"a", "B", "c", "d", "e"}, .selected = {2}, .kept = {"a", "c", "d", "e"}},
            Case{.file = {"b", "c", "d"}, .selected = {2, 3}, .kept = {"b", "c", "d"}}}) {
        test.putGroup("G.LST", file); // which is meant, in whatever case
        test.put(folder + "temp.group", "left behind");
        test.showGroup({"a", "b", "c", "d"}, selected);
        for (const FileOperation failing : {Open, LineInput, Print, Close, Copy}) {
            test.failAt(failing);
            EXPECT_FALSE(RemoveFromGroupFile(album, "G.lst"));
            test.files().setFaultHook({});
            EXPECT_EQ(bytes("G.LST"), joinedLines(file));
            EXPECT_EQ(test.files().freeFile(), 2);
        }
        EXPECT_TRUE(RemoveFromGroupFile(album, "G.lst"));
        EXPECT_EQ(bytes("G.LST"), joinedLines(kept));
        EXPECT_EQ(lists(), Lines{"G.LST"});
    }
}

TEST_F(Store, TheSelectedLinesMoveAsOneBlockOrAreAddedInAListOfAnyCase)
{
    test.putGroup("G.LST", {});
    test.showGroup({"a", "b"}, {0, 1}); // element 0 is no photograph, but its flag counts
    EXPECT_TRUE(AddToGroup(album, "G.lst"));
    EXPECT_EQ(bytes("G.LST"), joinedLines({"", "a"}));
    struct Case {
        std::vector<int> selected;
        int dropPosition;
        std::string names;
    };
    const Case cases[] = {
        {.selected = {2, 4}, .dropPosition = -1, .names = "bdace"},
        {.selected = {3, 5}, .dropPosition = 3, .names = "abced"},
        {.selected = {1, 3}, .dropPosition = -3, .names = "bacde"},
        {.selected = {1, 2}, .dropPosition = -6, .names = "cdeab"},
        {.selected = {2}, .dropPosition = 0, .names = "bacde"},
        {.selected = {1}, .dropPosition = 40000, .names = "bcdea"},
        {.selected = {}, .dropPosition = 2, .names = "abcde"},
    };
    for (const auto& [selected, dropPosition, names] : cases) {
        test.showGroup({"a", "b", "c", "d", "e"}, selected);
        EXPECT_TRUE(ReorderGroupFile(album, "G.lst", dropPosition));
        std::string order = bytes("G.LST");
        std::erase_if(order, [](char c) { return c == '\r' || c == '\n'; });
        EXPECT_EQ(order, names) << "dropped at " << dropPosition;
    }
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
    EXPECT_TRUE(isAllPhotosGroup("  all PHOTOS  ") && !isAllPhotosGroup("All Photos"));
}

TEST_F(Store, AnInformationFileIsReadAsItsFormatTells)
{
    const PhotoInfo before{"last", "t", "ph", "y", "pe", "pl", "e", "k", 7, 8};
    PhotoInfo none = before;
    EXPECT_FALSE(readInfoFile(album, "a.jpg.info", none));
    EXPECT_EQ(none.PhotoLink + none.Title + std::to_string(none.ImageWidth), "last7") << "without a file they stay";
    struct Case {
        std::string bytes;
        bool whole = true;
        std::string read;
    };
    const Case cases[] = {
        {.bytes = "photopath=/x\r\nImagewidth=1\r\nIMAGEHEIGHT=2", .read = "/x||||||||1x2"},
        {.bytes = "TITLE=one\nTITLE= two \rno equals sign\nKEYWORDS=a=b", .read = "last| two ||||||a=b|7x8"},
        {.bytes = " TITLE=x\r\nTITLE =x\r\nPHOTOPATHX=x\r\n=x\r\n", .read = "last||||||||7x8"},
        {.bytes = "PLACE=Z\xFCrich\r\nPEOPLE=\xC5\x81ukasz\r\n", .read = "last||||Łukasz|Zürich|||7x8"},
        {.bytes = "ImageWidth=12.5px\r\nImageHeight=\r\n", .read = "last||||||||12x0"},
        {.bytes = "YEAR=1\r\nImageWidth=32768\r\nTITLE=late\r\n", .whole = false, .read = "last|||1|||||7x8"},
    };
    for (const auto& [bytes, whole, read] : cases) {
        test.put(path, bytes);
        PhotoInfo info = before;
        EXPECT_EQ(readInfoFile(album, "a.jpg.info", info), whole);
        std::string fields;
        for (const std::string& field : {info.PhotoLink, info.Title, info.Photographer, info.Year, info.People,
                 info.Place, info.Event, info.Keywords})
            fields += field + "|";
        EXPECT_EQ(fields + std::to_string(info.ImageWidth) + "x" + std::to_string(info.ImageHeight), read) << bytes;
        EXPECT_EQ(test.files().freeFile(), 1) << bytes;
    }
}

TEST_F(Store, AnInformationFileIsWrittenAsTenLinesWhereItWasReadAndWholeOrNotAtAll)
{
    album.info = {"/x\\Łódź.jpg", "Zürich", "P", "1999", "Q", "R=1", "", "U", -640, 0};
    test.put(path, "TITLE=old\r\n");
    for (const FileOperation failing : {Open, Print, Close}) {
        test.failAt(failing);
        EXPECT_FALSE(SaveImageInfo(album, "A.jpg.info", album.info) || CreateInfoFile(test.files(), path, "x"));
        test.files().setFaultHook({});
        EXPECT_EQ(test.bytes(path), "TITLE=old\r\n");
    }
    EXPECT_TRUE(SaveImageInfo(album, "A.jpg.info", album.info));
    EXPECT_EQ(test.files().list(test.paths().InfoPath + "*"), std::vector<std::string>{"a.jpg.info"});
    EXPECT_EQ(test.bytes(path),
        "PhotoPath=/x\\Łódź.jpg\r\nTITLE=Z\xFCrich\r\nPHOTOGRAPHER=P\r\nYEAR=1999\r\nPEOPLE=Q\r\nPLACE=R=1\r\n"
        "EVENT=\r\nKEYWORDS=U\r\nImageWidth=-640\r\nImageHeight=0\r\n");
    ASSERT_TRUE(CreateInfoFile(test.files(), path, "\\Photos\\a.jpg"));
    EXPECT_EQ(test.bytes(path),
        joinedLines({"PhotoPath=\\Photos\\a.jpg", "TITLE=" + path,
            "PHOTOGRAPHER=", "YEAR=", "PEOPLE=", "PLACE=", "EVENT=", "KEYWORDS=", "ImageWidth=", "ImageHeight="}));
}

TEST_F(Store, TheLinkIsThatOfTheFirstLineWithItsKey)
{
    const std::string inside = test.library() + "\\";
    // The fall-back asks the program's folder and not the setting.
    test.paths().PhotoPath = "/elsewhere\\";
    for (const auto& [bytes, link] :
        {std::pair<std::string, std::string>{"PhotoPath=\\a.jpg\r\nPhotoPath=x\r\n", inside + "\\a.jpg"},
            {"TITLE=x\r\nphotopath=\\Photos/a.jpg", inside + "\\Photos\\a.jpg"},
            {"PhotoPath=/home/ann/Zürich b.jpg\r\n", "/home\\ann\\Zürich b.jpg"}, {"PhotoPath\r\n", ""},
            {" PhotoPath=x\r\nTITLE=PhotoPath=x\r\n", inside + "Photos\\a.jpg"}, {"", inside + "Photos\\a.jpg"}}) {
        test.put(path, bytes);
        EXPECT_EQ(GetPhotoLink(album, "a.jpg.info"), link) << bytes;
        EXPECT_EQ(test.files().freeFile(), 1) << bytes;
    }
    EXPECT_EQ(test.log(), "");
}

TEST_F(Store, ALinkToNoFileAsInAnAlbumThatMovedMeansTheCopyOfThatName)
{
    test.put(own.PhotoPath + "a.jpg", "");
    test.failAt(FileOperation::Length, "away\\a.jpg");
    for (const auto& [linked, link] : {std::pair<std::string, std::string>{"/old/a.jpg", own.PhotoPath + "a.jpg"},
             {"C:\\old\\a.jpg", own.PhotoPath + "a.jpg"}, {"/away/a.jpg", "/away\\a.jpg"}, {path, path}, {"", ""},
             {"\\b.jpg", test.library() + "\\\\b.jpg"}}) {
        test.put(path, "PhotoPath=" + linked + "\r\n");
        EXPECT_EQ(GetPhotoLink(album, "a.jpg.info"), link) << linked;
    }
    test.put(own.InfoPath + "abc", "PhotoPath=" + path + "\r\n");
    EXPECT_EQ(GetPhotoLink(album, "abc"), path);
    EXPECT_EQ(test.log(), "") << "a short name is no failure";
}

TEST_F(Store, ANameThatLeadsElsewhereAndAnInformationFileThatCannotBeReadHaveNoLink)
{
    test.put(own.InfoPath + ".info", "PhotoPath=x\r\n");
    test.put(test.library() + "\\out.info", "PhotoPath=x\r\n");
    for (const char* name : {"", ".info", "..\\out.info", "../out.INFO", "Removed\\..\\a.jpg.info"})
        EXPECT_FALSE(GetPhotoLink(album, name) != "" || readInfoFile(album, name, album.info)
            || SaveImageInfo(album, name, album.info))
            << name;
    EXPECT_EQ(GetPhotoLink(album, "none.jpg.info"), "");
    test.put(path, "x\r\n");
    test.failAt(LineInput);
    EXPECT_EQ(GetPhotoLink(album, "a.jpg.info"), "");
    EXPECT_EQ(test.files().freeFile(), 2) << "a read that fails leaves its file open";
}

TEST_F(Store, ALinkHoldsWhenThePhotographIsThereAndNotEmpty)
{
    test.put(own.PhotoPath + "full.jpg", "x");
    test.put(own.PhotoPath + "empty.jpg", "");
    for (const auto& [link, holds] : {std::pair{own.PhotoPath + "full.jpg", true}, {"\\Photos\\full.jpg", true},
             {own.PhotoPath + "empty.jpg", false}, {"\\Photos\\empty.jpg", false}, {"\\Photos\\none.jpg", false},
             {"full.jpg", false}, {"", false}})
        EXPECT_EQ(CheckPhotoLink(album, link), holds) << link;
}

TEST_F(Store, TheReadOnlyTestSparesAFileOfItsNameAndLeavesNothingBehind)
{
    const auto before = test.allFiles();
    EXPECT_FALSE(IsFolderReadOnly(album, test.library()) || IsFolderReadOnly(album, ""));
    EXPECT_EQ(test.allFiles(), before);
    test.put(test.library() + "\\test.txt", "mine");
    EXPECT_FALSE(IsFolderReadOnly(album, test.library() + "\\"));
    test.failAt(FileOperation::Exists);
    EXPECT_FALSE(IsFolderReadOnly(album, test.library()));
    EXPECT_EQ(test.bytes(test.library() + "\\test.txt"), "mine");
    EXPECT_FALSE(album.ReadOnlyLibrary);
    EXPECT_TRUE(IsFolderReadOnly(album, test.library() + "\\none"));
    EXPECT_TRUE(album.ReadOnlyLibrary);
}

// Nothing below the program's folder can be written: not the test, not the log, not a scratch file.
TEST_F(Store, OfAReadOnlyLibraryTheTextsMoveAndKeepEditsUntilTheMediumIsNewer)
{
    const Instant day{std::chrono::sys_days{std::chrono::year{2001} / 2 / 3}};
    const auto put = [&](const std::string& name, const std::string& text, Instant date) {
        test.put(own.InfoPath + name, text);
        FileService().setModified(own.InfoPath + name, date);
    };
    for (const std::string name : {"a", "b", "c"})
        put(name, "medium", day);
    test.put(own.PhotoPath + "a.jpg", "12345");
    test.putGroup("Trip.lst", {"a.jpg"});
    test.setSetting("Installation", "Path", test.folder().native("not/there/yet")); // in the system's form
    const FaultHook readOnly = readOnlyBelow(test.library());
    test.files().setFaultHook([&](FileOperation operation, std::string_view path) {
        readOnly(operation, path);
        if (operation == FileOperation::Copy && path.ends_with("b"))
            throw Failure(FailureKind::DiskFull);
    });
    start();
    const std::string moved = test.folder().inside("not\\there\\yet\\CD-5\\");
    const std::string info = moved + "Photo_Info\\";
    EXPECT_EQ(test.bytes(moved + "Photo_Slidegroups\\Trip.lst"), "a.jpg\r\n");
    const auto texts = [&] {
        return test.bytes(info + "a") + "|" + test.bytes(info + "b") + "|" + test.bytes(info + "c");
    };
    EXPECT_EQ(texts(), "medium||medium");

    test.files().setFaultHook(readOnly);
    test.put(info + "a", "edited");
    put("c", "of the same date", day);
    start();
    EXPECT_EQ(texts(), "edited|medium|medium");
    put("b", "new medium", day + std::chrono::seconds(1));
    start();
    EXPECT_EQ(texts(), "edited|new medium|medium");
}

TEST_F(Store, FoldersStandWhereTheSettingsPutThem)
{
    for (const auto& [path, key] :
        {std::pair{&AlbumPaths::PhotoPath, "Photos"}, {&AlbumPaths::ThumbnailPath, "Thumbnails"},
            {&AlbumPaths::InfoPath, "Info"}, {&AlbumPaths::SlideGroupPath, "SlideGroups"},
            {&AlbumPaths::AudioPath, "AudioClips"}, {&AlbumPaths::MidiPath, "MidiMusic"}}) {
        test.setSetting("SourceFolders", key, "/elsewhere"); // no backslash is added
        test.setSetting("Options", key, "of another section");
        start();
        EXPECT_EQ(test.paths().*path, "/elsewhere") << key;
    }
}

TEST_F(Store, ALogBeyondEightyThousandBytesLosesItsFirstLinesAndNothingByAFailure)
{
    const std::string logPath = test.library() + "\\Trovarium.Log";
    const std::string rest(70'000, 'x');
    const std::string beyond = joinedLines({"head", std::string(9'999, 'x'), "10,000", "c", rest});
    test.put(logPath, beyond);
    test.failAt(Copy, "Trovarium.Log");
    WriteLogLine(album, logPath, "new");
    test.files().setFaultHook({});
    EXPECT_TRUE(test.log() == beyond);
    WriteLogLine(album, logPath, "new");
    EXPECT_TRUE(test.log().starts_with(joinedLines({"head", "c", rest})) && test.log().ends_with("M: new\r\n"));
}

} // namespace trovarium
