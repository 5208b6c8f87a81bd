#include "store/LibraryFolders.h"

#include "runtime/Failure.h"
#include "runtime/Numbers.h"
#include "store/InfoFile.h"
#include "store/Log.h"
#include "support/Robot.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <utility>

namespace trovarium {

namespace {

namespace fs = std::filesystem;

std::string joined(const FieldArray& fields)
{
    std::string text;
    for (const std::string& field : fields)
        text += field + "|";
    return text.substr(0, text.find_last_not_of('|') + 1);
}

} // namespace

TEST(Paths, AreSplitAtTheLastBackslash)
{
    for (const auto& [path, folder, name] : {std::array{"/home\\ann\\a.jpg", "/home\\ann\\", "a.jpg"},
             {"a.jpg", "", "a.jpg"}, {"\\a.jpg", "\\", "a.jpg"}, {"/ann\\", "/ann\\", ""}}) {
        EXPECT_EQ(SplitPath(path).Folder, folder);
        EXPECT_EQ(SplitPath(path).FileName, name);
    }
}

TEST(Paths, AreParsedIntoTrimmedFields)
{
    const struct {
        std::string_view text;
        std::string_view delimiters;
        std::int16_t maxFields;
        std::string_view fields;
    } cases[] = {
        {"/home\\ Zoë \\\\ x\\", "\\", 20, "/home|Zoë||x"},
        {"a,b;c", ",;", 20, "a|b|c"},
        {"a,b,c,d", ",", 2, "a|b"},
        {"", ",", 20, ""},
        {"0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21", ",", 20,
            "0|1|2|3|4|5|6|7|8|9|10|11|12|13|14|15|16|17|18|19"},
    };
    TestAlbum test;
    const std::string log = test.library() + "\\Trovarium.Log";
    for (const auto& one : cases) {
        FieldArray fields;
        fields[0] = "left over";
        ParseFields(test.album(), one.text, one.delimiters, fields, one.maxFields);
        EXPECT_EQ(joined(fields), one.fields);
    }
    EXPECT_FALSE(test.isThere(log));
    FieldArray fields;
    ParseFields(test.album(), "a", ",", fields, 22);
    EXPECT_NE(test.bytes(log).find("in 'Form_Click'. Error = Subscript out of range\r\n"), std::string::npos);
}

TEST(NestedFolders, AreMadeDownToTheTwentiethLevelOrFailQuietly)
{
    TestAlbum test;
    std::string path = test.folder().inside() + "\\a";
    auto levels = static_cast<int>(std::count(path.begin(), path.end(), '\\')); // part 0 is the first
    std::string twentieth;
    for (int i = 0; i < 25; ++i, ++levels) {
        if (levels == MaxNestedFolders - 1)
            twentieth = path;
        path += "\\" + std::to_string(i);
    }
    EXPECT_TRUE(MakeNestedFolders(test.album(), path + "\\"));
    EXPECT_TRUE(test.files().folderExists(twentieth));
    EXPECT_TRUE(MakeNestedFolders(test.album(), path + "\\"));
    EXPECT_TRUE(fs::is_empty(toNativePath(twentieth)));

    // A file in the way is a quiet failure.
    test.put(test.folder().inside() + "\\file", "x");
    EXPECT_FALSE(MakeNestedFolders(test.album(), test.folder().inside() + "\\file\\a\\"));
    EXPECT_FALSE(test.isThere(test.library() + "\\Trovarium.Log"));
}

TEST(ReadOnlyTest, LeavesNothingBehindAndSparesAFileOfItsName)
{
    TestAlbum test;
    const auto before = test.allFiles();
    EXPECT_FALSE(IsFolderReadOnly(test.album(), test.library()));
    EXPECT_FALSE(IsFolderReadOnly(test.album(), ""));
    EXPECT_EQ(test.allFiles(), before);
    EXPECT_FALSE(test.album().ReadOnlyLibrary);

    test.put(test.library() + "\\test.txt", "mine");
    EXPECT_FALSE(IsFolderReadOnly(test.album(), test.library()));
    test.files().setFaultHook([](FileOperation operation, std::string_view) {
        if (operation == FileOperation::Exists)
            throw Failure(FailureKind::DeviceIo);
    });
    EXPECT_FALSE(IsFolderReadOnly(test.album(), test.library()));
    test.files().setFaultHook({});
    EXPECT_EQ(test.bytes(test.library() + "\\test.txt"), "mine");

    EXPECT_TRUE(IsFolderReadOnly(test.album(), test.library() + "\\none"));
    EXPECT_TRUE(test.album().ReadOnlyLibrary);
    EXPECT_FALSE(IsFolderReadOnly(test.album(), test.library()));
    EXPECT_TRUE(test.album().ReadOnlyLibrary);
}

TEST(MediaFolderName, IsTheSizeOfAllPhotographs)
{
    TestAlbum test;
    test.put(test.paths().PhotoPath + "a.jpg", "12345");
    test.put(test.paths().PhotoPath + "b.txt", "1234567");
    EXPECT_EQ(GetMediaFolderName(test.album(), test.library()), "CD-12");
    EXPECT_EQ(GetMediaFolderName(test.album(), test.library() + "\\none"), "CD-0");

    // Beyond 32 bits a random name stands, the same at each start.
    const std::string film = toNativePath(test.paths().PhotoPath + "film.avi");
    test.put(test.paths().PhotoPath + "film.avi", "");
    fs::resize_file(film, 2'147'483'647 - 12);
    EXPECT_EQ(GetMediaFolderName(test.album(), test.library()), "CD-2147483647");
    fs::resize_file(film, 2'147'483'647 - 11);
    const std::string random = GetMediaFolderName(test.album(), test.library());
    EXPECT_EQ(random, "CD-" + formatWhole(FixedRandom().next() * 1e6));
    EXPECT_EQ(GetMediaFolderName(test.album(), test.library()), random);
}

TEST(NewerFiles, AreCopiedAndOthersLeft)
{
    TestAlbum test;
    const Instant day{std::chrono::sys_days{std::chrono::year{2001} / 2 / 3}};
    const std::string target = test.folder().inside() + "\\target\\";
    fs::create_directory(toNativePath(target));
    const auto put = [&](const std::string& path, std::string_view text, Instant date) {
        test.put(path, text);
        test.files().setModified(path, date);
    };
    const std::string source = test.paths().InfoPath;
    for (const std::string name : {"absent", "newer", "same", "older", "broken"})
        put(source + name, "medium", day);
    put(target + "newer", "copy", day - std::chrono::seconds(1));
    put(target + "same", "copy", day);
    put(target + "older", "copy", day + std::chrono::seconds(1));
    test.files().setFaultHook([](FileOperation operation, std::string_view path) {
        if (operation == FileOperation::Copy && path.ends_with("broken"))
            throw Failure(FailureKind::DeviceIo);
    });

    EXPECT_TRUE(CopyNewerFiles(test.album(), source + "*.*", target));
    for (const auto& [name, bytes] :
        {std::pair{"absent", "medium"}, {"newer", "medium"}, {"same", "copy"}, {"older", "copy"}})
        EXPECT_EQ(test.bytes(target + name), bytes) << name;
    EXPECT_FALSE(test.isThere(target + "broken"));
    EXPECT_EQ(test.files().modified(target + "absent"), day);
    EXPECT_FALSE(test.isThere(test.library() + "\\Trovarium.Log"));
}

// Nothing below the program's folder can be written: not the test, not the log, not a scratch file.
class ReadOnlyLibrary : public testing::Test {
protected:
    ReadOnlyLibrary()
    {
        test.put(test.paths().PhotoPath + "a.jpg", "12345");
        for (const std::string name : {"a.jpg", "b.jpg"})
            putOnMedium(test.paths().InfoPath + name + ".info", "TITLE=medium\r\n", mediumDate);
        putOnMedium(test.paths().SlideGroupPath + "Trip.lst", "a.jpg\r\n", mediumDate);
        test.setSetting("Installation", "Path", test.folder().native("not/there/yet")); // in the system's form
        test.files().setFaultHook(readOnlyBelow(test.library()));
    }

    void putOnMedium(const std::string& path, std::string_view text, Instant date)
    {
        test.put(path, text);
        test.files().setModified(path, date);
    }

    // As each start does it.
    void start()
    {
        readFolderSettings(test.album());
        CheckDirPaths(test.album(), testDesktop());
    }

    std::string titleOf(const std::string& name)
    {
        PhotoInfo info;
        return readInfoFile(test.album(), name + ".info", info) ? info.Title : "unread";
    }

    TestAlbum test;
    const Instant mediumDate{std::chrono::sys_days{std::chrono::year{2001} / 2 / 3}};
    const AlbumPaths onMedium = test.paths();
};

TEST_F(ReadOnlyLibrary, KeepsItsTextsInTheInstalledCopyAndASilentLog)
{
    start();
    EXPECT_TRUE(test.album().ReadOnlyLibrary);
    const std::string moved = test.folder().inside("not\\there\\yet\\CD-5\\");
    EXPECT_EQ(test.paths().InfoPath, moved + "Photo_Info\\");
    EXPECT_EQ(test.paths().SlideGroupPath, moved + "Photo_Slidegroups\\");
    EXPECT_EQ(test.bytes(test.paths().SlideGroupPath + "Trip.lst"), "a.jpg\r\n");
    EXPECT_EQ(test.paths().PhotoPath, onMedium.PhotoPath);
    EXPECT_EQ(test.paths().ThumbnailPath, onMedium.ThumbnailPath);
    EXPECT_EQ(test.paths().AudioPath, onMedium.AudioPath);
    logFailure(test.album(), "Main", Failure(FailureKind::FileNotFound));
    EXPECT_FALSE(test.isThere(test.library() + "\\Trovarium.Log"));
}

TEST_F(ReadOnlyLibrary, KeepsEditsUntilTheMediumIsNewer)
{
    start();
    test.showGroup({"a.jpg", "b.jpg"});
    test.album().info.Title = "edited";
    ASSERT_TRUE(SaveImageInfo(test.album(), 1));
    ASSERT_TRUE(SaveImageInfo(test.album(), 2));
    putOnMedium(onMedium.InfoPath + "b.jpg.info", "TITLE=new medium\r\n", now() + std::chrono::hours(1));
    start();
    EXPECT_EQ(titleOf("a.jpg"), "edited");
    EXPECT_EQ(titleOf("b.jpg"), "new medium");
}

TEST(WritableLibrary, StaysWhereTheSettingsPutIt)
{
    TestAlbum test;
    const struct {
        std::string AlbumPaths::*path;
        std::string_view key;
        std::string_view folder;
    } cases[] = {
        {&AlbumPaths::PhotoPath, "Photos", "Photos"},
        {&AlbumPaths::ThumbnailPath, "Thumbnails", "Photo_Thumbnails"},
        {&AlbumPaths::InfoPath, "Info", "Photo_Info"},
        {&AlbumPaths::SlideGroupPath, "SlideGroups", "Photo_SlideGroups"},
        {&AlbumPaths::AudioPath, "AudioClips", "Photo_Audio"},
        {&AlbumPaths::MidiPath, "MidiMusic", "Photo_Midi"},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(test.paths().*one.path, test.library() + "\\" + std::string(one.folder) + "\\");
        test.setSetting("SourceFolders", one.key, "/elsewhere"); // no backslash is added
        readFolderSettings(test.album());
        EXPECT_EQ(test.paths().*one.path, "/elsewhere") << one.key;
    }
    CheckDirPaths(test.album(), testDesktop());
    EXPECT_EQ(test.paths().SlideGroupPath, "/elsewhere");
    EXPECT_FALSE(test.album().ReadOnlyLibrary);
}

} // namespace trovarium
