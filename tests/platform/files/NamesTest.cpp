#include "platform/files/FileService.h"
#include "support/FailureOf.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace trovarium {

namespace {

using Names = std::vector<std::string>;

class FileNames : public testing::Test {
protected:
    void makeFolder(const std::string& native) const { std::filesystem::create_directory(folder.native(native)); }
    std::string at(std::string_view name) const { return folder.inside(name); }

    TemporaryFolder folder;
    FileService files;
};

} // namespace

TEST_F(FileNames, OddNamesGoAroundThroughEveryOperation)
{
    const std::string longName = std::string(246, 'n') + ".jpg";
    const std::string longestName = std::string(251, 'x') + ".jpg";
    for (const std::string& name : Names{"a*b.jpg", "what?.jpg", " blanks  in.jpg ", "Köln 漢字.jpg", ".hidden.jpg",
             "a.b.c", "no extension", "-rf", "100%.jpg", longName, longestName}) {
        SCOPED_TRACE(name);
        const std::string path = at(name);
        files.writeWhole(path, "bytes");
        EXPECT_EQ(folder.read(name), "bytes");
        EXPECT_TRUE(files.exists(path));
        EXPECT_EQ(files.length(path), 5);
        files.copy(path, at("copy"));
        EXPECT_EQ(folder.read("copy"), "bytes");
        files.rename(at("copy"), at("renamed"));
        files.copy(at("renamed"), path);
        files.remove(at("renamed"));
        files.setModified(path, Instant(std::chrono::seconds(1000000000)));
        EXPECT_EQ(files.modified(path), Instant(std::chrono::seconds(1000000000)));
        files.remove(path);
        EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    }
}

TEST_F(FileNames, BothSeparatorsAndDoubledOnesAreTaken)
{
    makeFolder("sub");
    folder.write("sub/a.jpg", "1234");
    const std::string& native = folder.path();
    for (const std::string& path : Names{native + "/sub/a.jpg", native + "\\sub\\a.jpg", native + "\\\\sub\\\\a.jpg",
             native + "/sub\\/a.jpg", "/\\" + native.substr(1) + "\\sub\\a.jpg", native + "\\sub\\.\\..\\sub\\a.jpg"})
        EXPECT_EQ(files.length(path), 4) << path;
    EXPECT_EQ(fromNativePath("/home/ann/x"), "/home\\ann\\x");
    EXPECT_EQ(fromNativePath("/"), "/");
    EXPECT_EQ(fromNativePath("/a/\xE9/"), "/a\\é\\");
    EXPECT_EQ(toNativePath("/home\\ann/x"), "/home/ann/x");
}

TEST_F(FileNames, APathThatIsNotAbsoluteIsNeverLookedUpFromTheWorkingFolder)
{
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    folder.write("a.jpg", "");
    for (const std::string& path :
        Names{"a.jpg", ".\\a.jpg", "\\a.jpg", "c:\\a.jpg", at("a.jpg") + std::string("\0x", 2)}) {
        EXPECT_FALSE(files.exists(path)) << path;
        EXPECT_EQ(failureOf([&] { files.length(path); }), "Path not found") << path;
        EXPECT_EQ(failureOf([&] { files.open(path, OpenMode::Output, 1); }), "Path not found") << path;
        EXPECT_EQ(failureOf([&] { files.remove(path); }), "Path not found") << path;
    }
    EXPECT_FALSE(files.exists(""));
    EXPECT_EQ(failureOf([&] { files.length(""); }), "File not found");
    EXPECT_EQ(failureOf([&] { files.copy(at("a.jpg"), ""); }), "File not found");
    std::filesystem::current_path(before);
    EXPECT_TRUE(files.exists(at("a.jpg")));
}

TEST_F(FileNames, WhatIsOnlyReadFallsBackToTheOneNameInAnotherCase)
{
    folder.write("Fähre.JPG", "1234567");
    const std::string other = at("FÄHRE.jpg");
    EXPECT_EQ(files.length(other), 7);
    EXPECT_EQ(files.nativeForReading(other), folder.native("Fähre.JPG"));
    EXPECT_EQ(files.asItStands(other), at("Fähre.JPG"));
    files.copy(other, at("copy.jpg"));
    EXPECT_EQ(folder.read("copy.jpg"), "1234567");
    files.open(other, OpenMode::Input, 1);
    EXPECT_EQ(files.lineInput(1), "1234567");
    files.close(1);
}

TEST_F(FileNames, WhatIsWrittenMeansExactlyTheName)
{
    folder.write("A.JPG", "keep");
    EXPECT_FALSE(files.exists(at("a.jpg")));
    EXPECT_EQ(failureOf([&] { files.remove(at("a.jpg")); }), "File not found");
    EXPECT_EQ(failureOf([&] { files.remove(at("?.*")); }), "File not found") << "no pattern";
    EXPECT_EQ(failureOf([&] { files.rename(at("a.jpg"), at("b.jpg")); }), "File not found");
    EXPECT_EQ(failureOf([&] { files.setModified(at("a.jpg"), now()); }), "File not found");
    folder.write("source", "new");
    files.copy(at("source"), at("a.jpg"));
    files.open(at("a.JPG"), OpenMode::Append, 1);
    files.print(1, "line");
    files.close(1);
    EXPECT_EQ(folder.read("A.JPG"), "keep");
    EXPECT_EQ(folder.read("a.jpg"), "new");
    EXPECT_EQ(folder.read("a.JPG"), "line\r\n");
    EXPECT_EQ(files.length(at("a.jpg")), 3) << "the exact name wins";
    // Now none is *the* one that differs in case.
    for (const std::string& path : {at("a.jpg"), at("A.jpg"), at("none\\a.jpg")})
        EXPECT_EQ(files.asItStands(path), path);
    EXPECT_EQ(failureOf([&] { files.length(at("A.jpg")); }), "File not found");
}

TEST_F(FileNames, FoldersOnTheWayAreFoundInAnyCaseAlsoForWriting)
{
    makeFolder("PHOTOS");
    makeFolder("PHOTOS/Été");
    const std::string sub = at("Photos\\été\\");
    files.writeWhole(sub + "a.jpg", "a");
    EXPECT_EQ(folder.read("PHOTOS/Été/a.jpg"), "a");
    files.rename(sub + "a.jpg", sub + "b.jpg");
    EXPECT_EQ(files.list(sub + "*"), Names{"b.jpg"});
    EXPECT_TRUE(files.folderExists(at("photos\\")));
    EXPECT_EQ(failureOf([&] { files.makeFolder(at("Photos")); }), "Path/File access error")
        << "an empty folder beside the full one would hide a library";
    files.makeFolder(sub + "New");
    EXPECT_TRUE(std::filesystem::is_directory(folder.native("PHOTOS/Été/New")));
    makeFolder("Caf\xE9");
    EXPECT_EQ(files.listFolders(folder.inside()), (Names{"Café", "PHOTOS"}));
    files.writeWhole(at("CAFÉ\\a.jpg"), "1");
    EXPECT_TRUE(std::filesystem::exists(folder.native("Caf\xE9/a.jpg")));
}

TEST_F(FileNames, AMissingFolderIsPathNotFoundAndAMissingFileFileNotFound)
{
    folder.write("file", "");
    for (const std::string& path : Names{at("none\\a.jpg"), at("file\\a.jpg")}) {
        EXPECT_EQ(failureOf([&] { files.length(path); }), "Path not found");
        EXPECT_EQ(failureOf([&] { files.open(path, OpenMode::Output, 1); }), "Path not found");
        EXPECT_EQ(failureOf([&] { files.remove(path); }), "Path not found");
        EXPECT_EQ(failureOf([&] { files.rename(at("file"), path); }), "Path not found");
    }
    for (const std::string& name : {std::string("none"), std::string(300, 'x')})
        EXPECT_EQ(failureOf([&] { files.length(at(name)); }), "File not found");
    EXPECT_EQ(
        failureOf([&] { files.open(at(std::string(300, 'x')), OpenMode::Output, 1); }), "Bad file name or number");
    EXPECT_EQ(failureOf([&] { files.length(at(std::string(400'000, '\\') + "d")); }), "Path not found");
    EXPECT_EQ(failureOf([&] { files.length(at("file\\")); }), "File not found");
}

TEST_F(FileNames, ANameThatIsNoUtf8IsKnownByItsWindows1252Reading)
{
    folder.write("Caf\xE9 \x81.jpg", "12345");
    const std::string path = at("Café \u0081.jpg");
    EXPECT_EQ(files.list(at("*.jpg")), Names{"Café \u0081.jpg"});
    EXPECT_EQ(files.length(path), 5);
    EXPECT_EQ(files.length(at("CAFÉ \u0081.JPG")), 5);
    EXPECT_FALSE(files.exists(at("CAFÉ \u0081.jpg")));

    files.open(path, OpenMode::Append, 1);
    files.print(1, "6");
    files.close(1);
    EXPECT_EQ(folder.read("Caf\xE9 \x81.jpg"), "12345\r\n6\r\n") << "no second file under the same name";
    files.copy(path, at("copy"));
    EXPECT_EQ(failureOf([&] { files.rename(at("copy"), path); }), "File already exists");
    files.rename(path, at("Thé.jpg"));
    EXPECT_EQ(files.list(at("*")), (Names{"copy", "Thé.jpg"}));
    EXPECT_TRUE(std::filesystem::exists(folder.native("Thé.jpg"))) << "a new name is UTF-8";
}

TEST_F(FileNames, OfTwoFilesThatBearOneNameTheUtf8OneHasIt)
{
    folder.write("\xE9.jpg", "1");
    folder.write("é.jpg", "22");
    EXPECT_EQ(files.list(at("*")), Names{"é.jpg"});
    EXPECT_EQ(files.length(at("é.jpg")), 2);
    files.remove(at("é.jpg"));
    EXPECT_EQ(files.length(at("é.jpg")), 1) << "the other comes to light";
}

TEST_F(FileNames, OwnChangesOfFilesAndFoldersAreSeenByTheFallBack)
{
    folder.write("old.jpg", "1");
    EXPECT_EQ(files.length(at("OLD.JPG")), 1);
    files.writeWhole(at("made.jpg"), "22");
    EXPECT_EQ(files.length(at("MADE.JPG")), 2);
    files.copy(at("made.jpg"), at("copied.jpg"));
    EXPECT_EQ(files.length(at("COPIED.JPG")), 2);
    files.rename(at("copied.jpg"), at("renamed.jpg"));
    EXPECT_EQ(files.length(at("RENAMED.JPG")), 2);
    EXPECT_EQ(failureOf([&] { files.length(at("COPIED.JPG")); }), "File not found");
    files.remove(at("old.jpg"));
    EXPECT_EQ(failureOf([&] { files.length(at("OLD.JPG")); }), "File not found");
    files.makeFolder(at("sub"));
    files.writeWhole(at("SUB\\in.jpg"), "");
    EXPECT_EQ(files.list(at("Sub\\*")), Names{"in.jpg"});
    EXPECT_EQ(files.length(at("sub\\IN.jpg")), 0);
    files.rename(at("sub"), at("two"));
    EXPECT_EQ(failureOf([&] { files.length(at("sub\\IN.jpg")); }), "Path not found");
    EXPECT_EQ(files.length(at("two\\IN.jpg")), 0);
}

} // namespace trovarium
