#include "store/LibraryFolders.h"

#include "runtime/Numbers.h"
#include "store/InfoFile.h"
#include "store/Log.h"
#include "support/FailureOf.h"
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

const Instant Day{std::chrono::sys_days{std::chrono::year{2001} / 2 / 3}};

class LibraryFolders : public testing::Test {
protected:
    void put(const std::string& path, std::string_view text, Instant date)
    {
        test.put(path, text);
        test.files().setModified(path, date);
    }
    // As each start does it.
    void start()
    {
        readFolderSettings(album);
        CheckDirPaths(album, testDesktop());
    }
    std::string titleOf(const std::string& name)
    {
        PhotoInfo info;
        return readInfoFile(album, name + ".info", info) ? info.Title : "unread";
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
            {"a,b,c,d", ",", 2, "a|b"}, {"", ",", 20, ""},
            {"0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21", ",", 20,
                "0|1|2|3|4|5|6|7|8|9|10|11|12|13|14|15|16|17|18|19"}}) {
        FieldArray fields{"left over"};
        ParseFields(album, text, delimiters, fields, maxFields);
        std::string joined;
        for (const std::string& field : fields)
            joined += field + "|";
        EXPECT_EQ(joined.substr(0, joined.find_last_not_of('|') + 1), parsed);
    }
    FieldArray fields;
    EXPECT_EQ(test.log(), "");
    ParseFields(album, "a", ",", fields, 22);
    EXPECT_NE(test.log().find("in 'Form_Click'. Error = Subscript out of range\r\n"), std::string::npos);
}

TEST_F(LibraryFolders, NestedOnesAreMadeDownToTheTwentiethLevelOrFailQuietly)
{
    std::string path = test.folder().inside("a");
    auto levels = static_cast<int>(std::count(path.begin(), path.end(), '\\')); // part 0 is the first
    std::string twentieth;
    for (int i = 0; i < 25; ++i, ++levels) {
        if (levels == MaxNestedFolders - 1)
            twentieth = path;
        path += "\\" + std::to_string(i);
    }
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(MakeNestedFolders(album, path + "\\"));
        EXPECT_TRUE(fs::is_empty(toNativePath(twentieth)));
    }
    EXPECT_TRUE(MakeNestedFolders(album, test.folder().inside("a\\0\\")));
    EXPECT_TRUE(MakeNestedFolders(album, test.folder().inside("b\\c\\")));
    EXPECT_TRUE(test.isThere(test.folder().inside("b\\c")));
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
    const std::string random = "CD-" + formatWhole(FixedRandom().next() * 1e6); // the same at each start
    EXPECT_EQ(GetMediaFolderName(album, test.library()), random);
}

TEST_F(LibraryFolders, NewerFilesAreCopiedAndOthersLeft)
{
    const std::string target = test.folder().inside("target\\");
    fs::create_directory(toNativePath(target));
    for (const std::string name : {"absent", "newer", "same", "older", "broken"})
        put(own.InfoPath + name, "medium", Day);
    for (const auto& [name, seconds] : {std::pair{"newer", -1}, {"same", 0}, {"older", 1}})
        put(target + name, "copy", Day + std::chrono::seconds(seconds));
    test.failAt(FileOperation::Copy, "broken");
    EXPECT_TRUE(CopyNewerFiles(album, own.InfoPath + "*.*", target));
    for (const auto& [name, bytes] :
        {std::pair{"absent", "medium"}, {"newer", "medium"}, {"same", "copy"}, {"older", "copy"}, {"broken", ""}})
        EXPECT_EQ(test.bytes(target + name), bytes) << name;
    EXPECT_EQ(test.files().modified(target + "absent"), Day);
    EXPECT_EQ(test.log(), "");
}

// Nothing below the program's folder can be written: not the test, not the log, not a scratch file.
TEST_F(LibraryFolders, OfAReadOnlyOneTheTextsMoveAndKeepEditsUntilTheMediumIsNewer)
{
    test.put(own.PhotoPath + "a.jpg", "12345");
    for (const std::string name : {"a.jpg", "b.jpg"})
        put(own.InfoPath + name + ".info", "TITLE=medium\r\n", Day);
    put(own.SlideGroupPath + "Trip.lst", "a.jpg\r\n", Day);
    test.setSetting("Installation", "Path", test.folder().native("not/there/yet")); // in the system's form
    test.files().setFaultHook(readOnlyBelow(test.library()));
    start();
    const std::string moved = test.folder().inside("not\\there\\yet\\CD-5\\");
    EXPECT_EQ(test.paths().InfoPath, moved + "Photo_Info\\");
    EXPECT_EQ(test.bytes(moved + "Photo_Slidegroups\\Trip.lst"), "a.jpg\r\n");
    EXPECT_EQ(test.paths().PhotoPath, own.PhotoPath);
    logFailure(album, "Main", Failure(FailureKind::FileNotFound));
    EXPECT_EQ(test.log(), "");

    test.showGroup({"a.jpg", "b.jpg"});
    album.info.Title = "edited";
    ASSERT_TRUE(SaveImageInfo(album, 1) && SaveImageInfo(album, 2));
    put(own.InfoPath + "b.jpg.info", "TITLE=new medium\r\n", now() + std::chrono::hours(1));
    start();
    EXPECT_EQ(titleOf("a.jpg"), "edited");
    EXPECT_EQ(titleOf("b.jpg"), "new medium");
}

TEST_F(LibraryFolders, StandWhereTheSettingsPutThem)
{
    using Case = std::tuple<std::string AlbumPaths::*, std::string, std::string>;
    for (const auto& [path, key, folder] : {Case{&AlbumPaths::PhotoPath, "Photos", "Photos"},
             {&AlbumPaths::ThumbnailPath, "Thumbnails", "Photo_Thumbnails"},
             {&AlbumPaths::InfoPath, "Info", "Photo_Info"},
             {&AlbumPaths::SlideGroupPath, "SlideGroups", "Photo_SlideGroups"},
             {&AlbumPaths::AudioPath, "AudioClips", "Photo_Audio"},
             {&AlbumPaths::MidiPath, "MidiMusic", "Photo_Midi"}}) {
        EXPECT_EQ(test.paths().*path, test.library() + "\\" + folder + "\\");
        for (const std::string value : {"", "/elsewhere"}) { // no backslash is added
            test.setSetting("SourceFolders", key, value);
            start();
            EXPECT_EQ(test.paths().*path, value) << key;
        }
    }
    EXPECT_FALSE(album.ReadOnlyLibrary);
    fs::remove_all(test.settingsFolder());
    fs::create_directories(test.settingsFolder() + "/settings.txt");
    EXPECT_FALSE(album.Settings().SetOWSetting("Trovarium", "Options", "AutoFix", "True"));
    album.settingsStore.reset();
    EXPECT_EQ(failureOf([&] { album.Settings(); }), "Object not set");
}

} // namespace trovarium
