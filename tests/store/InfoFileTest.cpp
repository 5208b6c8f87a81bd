#include "store/InfoFile.h"

#include "runtime/Failure.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

namespace trovarium {

namespace {

std::string shown(const PhotoInfo& info)
{
    std::string text;
    for (const std::string& field :
        {info.PhotoLink, info.Title, info.Photographer, info.Year, info.People, info.Place, info.Event, info.Keywords})
        text += field + "|";
    return text + std::to_string(info.ImageWidth) + "x" + std::to_string(info.ImageHeight);
}

class InfoFile : public testing::Test {
protected:
    std::string path() { return test.paths().InfoPath + "a.jpg.info"; }
    std::string log() { return test.bytes(test.library() + "\\Trovarium.Log"); }
    void failAt(FileOperation failing, FailureKind kind)
    {
        test.files().setFaultHook([=](FileOperation operation, std::string_view) {
            if (operation == failing)
                throw Failure(kind);
        });
    }

    TestAlbum test;
};

} // namespace

TEST_F(InfoFile, ReadsItsLinesAsTheFormatTells)
{
    const struct {
        std::string bytes; // "-": no file
        bool whole;
        std::string info;
    } cases[] = {
        {"PhotoPath=\\Photos\\a.jpg\r\nTITLE=T\r\nPHOTOGRAPHER=P\r\nYEAR=1999\r\nPEOPLE=Q\r\nPLACE=R\r\nEVENT=S\r\n"
         "KEYWORDS=a=b\r\nImageWidth=640\r\nImageHeight=-480\r\n",
            true, "\\Photos\\a.jpg|T|P|1999|Q|R|S|a=b|640x-480"},
        {"-", false, "last||||||||7x8"}, // link and size stay as they were
        {"photopath=/x\r\nImagewidth=1\r\nIMAGEHEIGHT=2", true, "/x||||||||1x2"},
        {"TITLE=one\nTITLE= two \rno equals sign\n", true, "last| two |||||||7x8"},
        {" TITLE=x\r\nTITLE =x\r\nPHOTOPATHX=x\r\n=x\r\n", true, "last||||||||7x8"},
        {"PLACE=Z\xFCrich\r\nPEOPLE=\xC5\x81ukasz\r\n", true, "last||||Łukasz|Zürich|||7x8"},
        {"ImageWidth=12.5px\r\nImageHeight=\r\n", true, "last||||||||12x0"},
        {"ImageWidth=32767.4\r\nImageHeight=-32768\r\n", true, "last||||||||32767x-32768"},
        {"YEAR=1\r\nImageWidth=32768\r\nTITLE=late\r\n", false, "last|||1|||||7x8"},
        {"ImageHeight=32767.5\r\n", false, "last||||||||7x8"},
    };
    for (const auto& one : cases) {
        if (one.bytes != "-")
            test.put(path(), one.bytes);
        PhotoInfo info{"last", "t", "ph", "y", "pe", "pl", "e", "k", 7, 8};
        EXPECT_EQ(readInfoFile(test.album(), one.bytes == "-" ? "none.jpg.info" : "a.jpg.info", info), one.whole);
        EXPECT_EQ(shown(info), one.info) << one.bytes;
        EXPECT_EQ(test.files().freeFile(), 1) << one.bytes;
    }
    EXPECT_EQ(log(), "");
}

TEST_F(InfoFile, IsWrittenAsTenLinesAndANewOneIsTitledWithItsOwnPath)
{
    test.showGroup({"x.jpg", "a.jpg"});
    test.album().info = {"/x\\Łódź.jpg", "Zürich", "P", "1999", "Q", "R=1", "", "U", -640, 0};
    ASSERT_TRUE(SaveImageInfo(test.album(), 2));
    EXPECT_EQ(test.bytes(path()),
        "PhotoPath=/x\\Łódź.jpg\r\nTITLE=Z\xFCrich\r\nPHOTOGRAPHER=P\r\nYEAR=1999\r\nPEOPLE=Q\r\nPLACE=R=1\r\n"
        "EVENT=\r\nKEYWORDS=U\r\nImageWidth=-640\r\nImageHeight=0\r\n");
    PhotoInfo read;
    EXPECT_TRUE(readInfoFile(test.album(), "a.jpg.info", read));
    EXPECT_EQ(shown(read), shown(test.album().info));
    EXPECT_FALSE(SaveImageInfo(test.album(), 3));

    ASSERT_TRUE(CreateInfoFile(test.files(), path(), "\\Photos\\a.jpg"));
    EXPECT_EQ(test.bytes(path()),
        joinedLines({"PhotoPath=\\Photos\\a.jpg", "TITLE=" + path(),
            "PHOTOGRAPHER=", "YEAR=", "PEOPLE=", "PLACE=", "EVENT=", "KEYWORDS=", "ImageWidth=", "ImageHeight="}));
}

TEST_F(InfoFile, AFailingWriteLeavesWhatWasThereAndASaveGoesWhereItWasRead)
{
    test.showGroup({"A.jpg"});
    test.put(test.paths().InfoPath + "a.JPG.info", "TITLE=old\r\n");
    const auto before = test.allFiles();
    for (const FileOperation failing : {FileOperation::Open, FileOperation::Print, FileOperation::Close}) {
        failAt(failing, FailureKind::DiskFull);
        EXPECT_FALSE(SaveImageInfo(test.album(), 1));
        EXPECT_FALSE(CreateInfoFile(test.files(), test.paths().InfoPath + "b.jpg.info", "x"));
        test.files().setFaultHook({});
        EXPECT_EQ(test.allFiles(), before) << "half a file";
    }
    EXPECT_TRUE(SaveImageInfo(test.album(), 1));
    EXPECT_EQ(test.files().list(test.paths().InfoPath + "*"), std::vector<std::string>{"a.JPG.info"});
    EXPECT_EQ(log(), "");
}

TEST_F(InfoFile, GivesTheLinkOfTheFirstLineThatBeginsWithItsKey)
{
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
        {"PhotoPath\r\n", ""},
        {" PhotoPath=x\r\nTITLE=PhotoPath=x\r\n", library + "\\Photos\\a.jpg"},
    };
    // The fall-back asks the program's folder and not the setting.
    test.paths().PhotoPath = "/elsewhere\\";
    for (const auto& one : cases) {
        test.put(path(), one.bytes);
        EXPECT_EQ(GetPhotoLink(test.album(), "a.jpg.info"), one.link) << one.bytes;
        EXPECT_EQ(test.files().freeFile(), 1) << one.bytes;
    }
    EXPECT_EQ(log(), "");
    EXPECT_EQ(GetPhotoLink(test.album(), "none.jpg.info"), "");
    EXPECT_NE(log().find("in 'GetPhotoLink'. Error = File not found\r\n"), std::string::npos);

    failAt(FileOperation::LineInput, FailureKind::DeviceIo);
    EXPECT_EQ(GetPhotoLink(test.album(), "a.jpg.info"), "");
    EXPECT_EQ(test.files().freeFile(), 2) << "a read that fails leaves its file open";
    EXPECT_NE(log().find("in 'GetPhotoLink'. Error = Device I/O error"), std::string::npos);
}

TEST_F(InfoFile, ItsLinkHoldsWhenThePhotographIsThereAndNotEmpty)
{
    test.put(test.paths().PhotoPath + "full.jpg", "x");
    test.put(test.paths().PhotoPath + "empty.jpg", "");
    const struct {
        std::string link;
        bool holds;
        bool logged;
    } cases[] = {
        {test.paths().PhotoPath + "full.jpg", true, false},
        {"\\Photos\\full.jpg", true, false},
        {"\\Photos\\empty.jpg", false, false},
        {"\\Photos\\none.jpg", false, true},
        {"full.jpg", false, true},
        {"", false, true},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(CheckPhotoLink(test.album(), one.link), one.holds) << one.link;
        EXPECT_EQ(log().find("in 'CheckPhotoLink'. Error = ") != std::string::npos, one.logged) << one.link;
        test.put(test.library() + "\\Trovarium.Log", "");
    }
}

} // namespace trovarium
