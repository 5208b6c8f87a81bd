#include "store/LibraryFolders.h"

#include "store/InfoFile.h"
#include "store/Log.h"
#include "support/Robot.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <tuple>
#include <utility>

namespace trovarium {

namespace {

namespace fs = std::filesystem;

class LibraryFolders : public testing::Test {
protected:
    // As each start does it.
    void start()
    {
        readFolderSettings(album);
        CheckDirPaths(album, testDesktop());
    }
    void putInfo(const std::string& name, const std::string& title, Instant date)
    {
        test.put(own.InfoPath + name + ".info", "TITLE=" + title + "\r\n");
        test.files().setModified(own.InfoPath + name + ".info", date);
    }
    // Those of "a", "b" and "c".
    std::string titles()
    {
        std::string all;
        for (const std::string name : {"a", "b", "c"}) {
            PhotoInfo info;
            readInfoFile(album, name + ".info", info);
            all += info.Title + "|";
        }
        return all;
    }

    TestAlbum test;
    Album& album = test.album();
    const AlbumPaths own = test.paths();
};

} // namespace

TEST_F(LibraryFolders, PathsAreSplitAtTheLastBackslashAndParsedIntoTrimmedFields)
{
    EXPECT_EQ(SplitPath("/ann\\a.jpg").Folder + "|" + SplitPath("/ann\\a.jpg").FileName, "/ann\\|a.jpg");
    EXPECT_EQ(SplitPath("a.jpg").Folder + "|" + SplitPath("a.jpg").FileName, "|a.jpg");
    using Case = std::tuple<std::string_view, std::string_view, std::int16_t, std::string_view>;
    for (const auto& [text, delimiters, maxFields, parsed] :
        {Case{"/home\\ Zoë \\\\ x\\ y ", "\\", 20, "/home|Zoë||x|y"}, {"a,b;c", ",;", 20, "a|b|c"},
            {"a,b,c,d", ",", 2, "a|b"}, {"", ",", 20, ""}}) {
        FieldArray fields{"left over"};
        ParseFields(album, text, delimiters, fields, maxFields);
        std::string joined;
        for (const std::string& field : fields)
            joined += field + "|";
        EXPECT_EQ(joined.substr(0, joined.find_last_not_of('|') + 1), parsed);
    }
    FieldArray fields;
    ParseFields(album, "a", ",", fields, 22);
    EXPECT_NE(test.log().find("in 'Form_Click'. Error = Subscript out of range\r\n"), std::string::npos);
}

TEST_F(LibraryFolders, NestedOnesAreMadeDownToTheTwentiethLevelOrFailQuietly)
{
    std::string path = test.folder().inside();
    for (int i = 0; i < 25; ++i)
        path += "\\" + std::to_string(i);
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(MakeNestedFolders(album, path + "\\"));
    while (!test.isThere(path))
        path.erase(path.rfind('\\'));
    EXPECT_EQ(std::count(path.begin(), path.end(), '\\'), MaxNestedFolders - 1);
    EXPECT_TRUE(MakeNestedFolders(album, test.folder().inside("0\\b\\c\\")));
    EXPECT_TRUE(test.isThere(test.folder().inside("0\\b\\c")));
    test.put(test.folder().inside("file"), "x"); // in the way
    EXPECT_FALSE(MakeNestedFolders(album, test.folder().inside("file\\a\\")));
}

TEST_F(LibraryFolders, TheReadOnlyTestLeavesNothingBehindAndSparesAFileOfItsName)
{
    const auto before = test.allFiles();
    EXPECT_FALSE(IsFolderReadOnly(album, test.library()) || IsFolderReadOnly(album, ""));
    EXPECT_EQ(test.allFiles(), before);
    test.put(test.library() + "\\test.txt", "mine");
    EXPECT_FALSE(IsFolderReadOnly(album, test.library() + "\\"));
    test.failAt(FileOperation::Exists);
    EXPECT_FALSE(IsFolderReadOnly(album, test.library()));
    test.files().setFaultHook({});
    EXPECT_EQ(test.bytes(test.library() + "\\test.txt"), "mine");
    EXPECT_FALSE(album.ReadOnlyLibrary);
    EXPECT_TRUE(IsFolderReadOnly(album, test.library() + "\\none"));
    EXPECT_FALSE(IsFolderReadOnly(album, test.library()));
    EXPECT_TRUE(album.ReadOnlyLibrary);
}

TEST_F(LibraryFolders, TheNameOfAMediumIsTheSizeOfAllPhotographs)
{
    EXPECT_EQ(GetMediaFolderName(album, test.library() + "\\none"), "CD-0");
    test.put(own.PhotoPath + "b.txt", "1234567");
    const std::string film = own.PhotoPath + "film.avi";
    test.put(film, "");
    fs::resize_file(toNativePath(film), 2'147'483'647 - 7);
    EXPECT_EQ(GetMediaFolderName(album, test.library()), "CD-2147483647");
    fs::resize_file(toNativePath(film), 2'147'483'647 - 6);
    EXPECT_EQ(GetMediaFolderName(album, test.library()), "CD-236456") << "which is the same at each start";
}

// Nothing below the program's folder can be written: not the test, not the log, not a scratch file.
TEST_F(LibraryFolders, OfAReadOnlyOneTheTextsMoveAndKeepEditsUntilTheMediumIsNewer)
{
    const Instant day{std::chrono::sys_days{std::chrono::year{2001} / 2 / 3}};
    test.put(own.PhotoPath + "a.jpg", "12345");
    for (const std::string name : {"a", "b", "c"})
        putInfo(name, "medium", day);
    test.putGroup("Trip.lst", {"a.jpg"});
    test.setSetting("Installation", "Path", test.folder().native("not/there/yet")); // in the system's form
    const FaultHook readOnly = readOnlyBelow(test.library());
    test.files().setFaultHook([&](FileOperation operation, std::string_view path) {
        readOnly(operation, path);
        if (operation == FileOperation::Copy && path.ends_with("b.info"))
            throw Failure(FailureKind::DiskFull);
    });
    start();
    const std::string moved = test.folder().inside("not\\there\\yet\\CD-5\\");
    EXPECT_EQ(test.paths().InfoPath, moved + "Photo_Info\\");
    EXPECT_EQ(test.bytes(moved + "Photo_Slidegroups\\Trip.lst"), "a.jpg\r\n");
    EXPECT_EQ(test.paths().PhotoPath, own.PhotoPath);
    EXPECT_EQ(titles(), "medium||medium|");
    logFailure(album, "Main", Failure(FailureKind::FileNotFound));
    EXPECT_EQ(test.log(), "");

    test.files().setFaultHook({});
    test.showGroup({"a"});
    album.info.Title = "edited";
    ASSERT_TRUE(SaveImageInfo(album, 1));
    putInfo("c", "of the same date", day);
    test.files().setFaultHook(readOnly);
    start();
    EXPECT_EQ(titles(), "edited|medium|medium|");
    test.files().setFaultHook({});
    putInfo("b", "new medium", day + std::chrono::seconds(1));
    test.files().setFaultHook(readOnly);
    start();
    EXPECT_EQ(titles(), "edited|new medium|medium|");
}

TEST_F(LibraryFolders, StandWhereTheSettingsPutThem)
{
    EXPECT_EQ(own.ThumbnailPath + own.AudioPath + own.MidiPath,
        test.library() + "\\Photo_Thumbnails\\" + test.library() + "\\Photo_Audio\\" + test.library()
            + "\\Photo_Midi\\");
    for (const auto& [path, key] :
        {std::pair{&AlbumPaths::PhotoPath, "Photos"}, {&AlbumPaths::ThumbnailPath, "Thumbnails"},
            {&AlbumPaths::InfoPath, "Info"}, {&AlbumPaths::SlideGroupPath, "SlideGroups"},
            {&AlbumPaths::AudioPath, "AudioClips"}, {&AlbumPaths::MidiPath, "MidiMusic"}}) {
        for (const std::string value : {"", "/elsewhere"}) { // no backslash is added
            test.setSetting("SourceFolders", key, value);
            start();
            EXPECT_EQ(test.paths().*path, value) << key;
        }
    }
    EXPECT_FALSE(album.ReadOnlyLibrary);
}

} // namespace trovarium
