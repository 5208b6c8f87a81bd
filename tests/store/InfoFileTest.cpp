#include "store/InfoFile.h"

#include "runtime/Failure.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace trovarium {

namespace {

std::string shown(const PhotoInfo& info)
{
    return "link " + info.PhotoLink + "|title " + info.Title + "|by " + info.Photographer + "|year " + info.Year
        + "|people " + info.People + "|place " + info.Place + "|event " + info.Event + "|notes " + info.Keywords + "|"
        + std::to_string(info.ImageWidth) + "x" + std::to_string(info.ImageHeight);
}

// What the record holds before each read.
PhotoInfo lastPhoto()
{
    return {"\\Photos\\last.jpg", "t", "ph", "y", "pe", "pl", "e", "k", 7, 8};
}

PhotoInfo cleared()
{
    PhotoInfo info;
    info.PhotoLink = "\\Photos\\last.jpg";
    info.ImageWidth = 7;
    info.ImageHeight = 8;
    return info;
}

PhotoInfo clearedWith(void (*change)(PhotoInfo&))
{
    PhotoInfo info = cleared();
    change(info);
    return info;
}

} // namespace

TEST(InfoFile, ReadsItsLinesAsTheFormatTells)
{
    struct Case {
        std::string bytes;
        bool whole;
        PhotoInfo info;
    };
    const Case cases[] = {
        {"PhotoPath=\\Photos\\a.jpg\r\nTITLE=T\r\nPHOTOGRAPHER=P\r\nYEAR=1999\r\nPEOPLE=Q\r\nPLACE=R\r\nEVENT=S\r\n"
         "KEYWORDS=U\r\nImageWidth=640\r\nImageHeight=-480\r\n",
            true, {"\\Photos\\a.jpg", "T", "P", "1999", "Q", "R", "S", "U", 640, -480}},
        {"", true, cleared()},
        {"photopath=/x\r\nImagewidth=1\r\nIMAGEHEIGHT=2", true, {"/x", "", "", "", "", "", "", "", 1, 2}},
        {"KEYWORDS=a=b\r\n", true, clearedWith([](PhotoInfo& info) { info.Keywords = "a=b"; })},
        {"TITLE=one\nTITLE= two \rno equals sign\n", true, clearedWith([](PhotoInfo& info) { info.Title = " two "; })},
        {" TITLE=x\r\nTITLE =x\r\nPHOTOPATHX=x\r\n=x\r\n", true, cleared()},
        {"PLACE=Z\xFCrich\r\nPEOPLE=\xC5\x81ukasz\r\n", true,
            clearedWith([](PhotoInfo& info) { info.Place = "Zürich", info.People = "Łukasz"; })},
        {"ImageWidth=12.5px\r\nImageHeight=\r\n", true,
            clearedWith([](PhotoInfo& info) { info.ImageWidth = 12, info.ImageHeight = 0; })},
        {"ImageWidth=32767.4\r\nImageHeight=-32768\r\n", true,
            clearedWith([](PhotoInfo& info) { info.ImageWidth = 32767, info.ImageHeight = -32768; })},
        {"YEAR=1\r\nImageWidth=32768\r\nTITLE=late\r\n", false, clearedWith([](PhotoInfo& info) { info.Year = "1"; })},
        {"ImageHeight=32767.5\r\n", false, cleared()},
        {"ImageHeight=1e99\r\n", false, cleared()},
    };
    TestAlbum test;
    for (const Case& one : cases) {
        test.put(test.paths().InfoPath + "a.jpg.info", one.bytes);
        PhotoInfo info = lastPhoto();
        EXPECT_EQ(readInfoFile(test.album(), "a.jpg.info", info), one.whole) << one.bytes;
        EXPECT_EQ(shown(info), shown(one.info)) << one.bytes;
        EXPECT_EQ(test.files().freeFile(), 1) << one.bytes;
    }
}

TEST(InfoFile, AnAbsentFileClearsTheTextsAndKeepsLinkAndSize)
{
    TestAlbum test;
    PhotoInfo info = lastPhoto();
    EXPECT_FALSE(readInfoFile(test.album(), "none.jpg.info", info));
    EXPECT_EQ(shown(info), shown(cleared()));
    EXPECT_FALSE(test.isThere(test.library() + "\\Trovarium.Log"));
}

TEST(InfoFile, IsSavedAsTenLinesUnderTheNameOfItsPosition)
{
    TestAlbum test;
    test.showGroup({"a.jpg", "b.jpg"});
    test.album().info = {"/x\\Łódź.jpg", "Zürich", "P", "1999", "Q", "R=1", "", "U", -640, 0};
    ASSERT_TRUE(SaveImageInfo(test.album(), 2));
    EXPECT_EQ(test.bytes(test.paths().InfoPath + "b.jpg.info"),
        "PhotoPath=/x\\Łódź.jpg\r\nTITLE=Z\xFCrich\r\nPHOTOGRAPHER=P\r\nYEAR=1999\r\nPEOPLE=Q\r\nPLACE=R=1\r\n"
        "EVENT=\r\nKEYWORDS=U\r\nImageWidth=-640\r\nImageHeight=0\r\n");
    PhotoInfo read;
    EXPECT_TRUE(readInfoFile(test.album(), "b.jpg.info", read));
    EXPECT_EQ(shown(read), shown(test.album().info));
    EXPECT_FALSE(SaveImageInfo(test.album(), 3));
    EXPECT_FALSE(SaveImageInfo(test.album(), -1));
}

TEST(InfoFile, ANewOneIsTitledWithItsOwnPath)
{
    TestAlbum test;
    const std::string path = test.paths().InfoPath + "a.jpg.info";
    ASSERT_TRUE(CreateInfoFile(test.files(), path, "\\Photos\\a.jpg"));
    EXPECT_EQ(test.bytes(path),
        "PhotoPath=\\Photos\\a.jpg\r\nTITLE=" + path
            + "\r\nPHOTOGRAPHER=\r\nYEAR=\r\nPEOPLE=\r\nPLACE=\r\nEVENT=\r\nKEYWORDS=\r\nImageWidth=\r\n"
              "ImageHeight=\r\n");
}

TEST(InfoFile, AFailingWriteIsToldAndLeavesNoFileOpen)
{
    TestAlbum test;
    test.showGroup({"a.jpg"});
    for (const FileOperation failing : {FileOperation::Open, FileOperation::Print, FileOperation::Close}) {
        test.files().setFaultHook([&](FileOperation operation, std::string_view) {
            if (operation == failing)
                throw Failure(FailureKind::DiskFull);
        });
        EXPECT_FALSE(SaveImageInfo(test.album(), 1));
        EXPECT_FALSE(CreateInfoFile(test.files(), test.paths().InfoPath + "b.jpg.info", "x"));
        test.files().setFaultHook({});
        EXPECT_TRUE(SaveImageInfo(test.album(), 1));
    }
    EXPECT_FALSE(test.isThere(test.library() + "\\Trovarium.Log"));
}

TEST(PhotoLink, ComesFromTheFirstLineThatBeginsWithItsKey)
{
    TestAlbum test;
    const std::string library = test.library();
    const struct {
        std::string bytes;
        std::string link;
    } cases[] = {
        {"PhotoPath=\\Photos\\a.jpg\r\nPhotoPath=x\r\n", library + "\\\\Photos\\a.jpg"},
        {"TITLE=x\r\nphotopath=\\Photos/a.jpg", library + "\\\\Photos\\a.jpg"},
        {"PhotoPath=/home/ann/Zürich b.jpg\r\n", "/home\\ann\\Zürich b.jpg"},
        {"PHOTOPATHX=value\r\n", "=value"},
        {"PHOTOPATH\xE9=\\value\r\n", "=\\value"},
        {"PhotoPath=\r\n", ""},
        {"PhotoPath\r\n", ""},
        {"", library + "\\Photos\\a.jpg"},
        {" PhotoPath=x\r\nTITLE=PhotoPath=x\r\n", library + "\\Photos\\a.jpg"},
    };
    // The fall-back asks the program's folder and not the setting.
    test.paths().PhotoPath = "/elsewhere\\";
    for (const auto& one : cases) {
        test.put(test.paths().InfoPath + "a.jpg.info", one.bytes);
        EXPECT_EQ(GetPhotoLink(test.album(), "a.jpg.info"), one.link) << one.bytes;
        EXPECT_EQ(test.files().freeFile(), 1) << one.bytes;
    }
    EXPECT_FALSE(test.isThere(library + "\\Trovarium.Log"));

    EXPECT_EQ(GetPhotoLink(test.album(), "none.jpg.info"), "");
    EXPECT_NE(test.bytes(library + "\\Trovarium.Log")
                  .find(": An error has occurred in 'GetPhotoLink'. Error = File not found\r\n"),
        std::string::npos);
}

TEST(PhotoLink, AReadThatFailsIsLoggedAndLeavesItsFileOpen)
{
    TestAlbum test;
    test.put(test.paths().InfoPath + "a.jpg.info", "TITLE=x\r\nPhotoPath=y\r\n");
    test.files().setFaultHook([](FileOperation operation, std::string_view) {
        if (operation == FileOperation::LineInput)
            throw Failure(FailureKind::DeviceIo);
    });
    EXPECT_EQ(GetPhotoLink(test.album(), "a.jpg.info"), "");
    EXPECT_EQ(test.files().freeFile(), 2);
    EXPECT_NE(test.bytes(test.library() + "\\Trovarium.Log").find("'GetPhotoLink'. Error = Device I/O error"),
        std::string::npos);
}

TEST(PhotoLink, HoldsWhenTheFileIsThereAndNotEmpty)
{
    TestAlbum test;
    test.put(test.paths().PhotoPath + "full.jpg", "x");
    test.put(test.paths().PhotoPath + "empty.jpg", "");
    const struct {
        std::string path;
        bool holds;
        bool logged;
    } cases[] = {
        {test.paths().PhotoPath + "full.jpg", true, false},
        {"\\Photos\\full.jpg", true, false},
        {test.paths().PhotoPath + "empty.jpg", false, false},
        {"\\Photos\\empty.jpg", false, false},
        {"\\Photos\\none.jpg", false, true},
        {"", false, true},
        {"full.jpg", false, true},
    };
    const std::string log = test.library() + "\\Trovarium.Log";
    for (const auto& one : cases) {
        EXPECT_EQ(CheckPhotoLink(test.album(), one.path), one.holds) << one.path;
        EXPECT_EQ(test.isThere(log), one.logged) << one.path;
        if (one.logged) {
            EXPECT_NE(test.bytes(log).find("An error has occurred in 'CheckPhotoLink'. Error = "), std::string::npos);
            test.files().remove(log);
        }
    }
}

} // namespace trovarium
