#include "store/InfoFile.h"

#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>

namespace trovarium {

namespace {

using enum FileOperation;

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
    TestAlbum test;
    Album& album = test.album();
    const std::string path = test.paths().InfoPath + "a.jpg.info";
};

} // namespace

TEST_F(InfoFile, ReadsItsLinesAsTheFormatTells)
{
    using Case = std::tuple<std::string, bool, std::string>;
    // Without a file link and size stay as they were.
    for (const auto& [bytes, whole, read] :
        {Case{"-", false, "last||||||||7x8"}, {"photopath=/x\r\nImagewidth=1\r\nIMAGEHEIGHT=2", true, "/x||||||||1x2"},
            {"TITLE=one\nTITLE= two \rno equals sign\nKEYWORDS=a=b", true, "last| two ||||||a=b|7x8"},
            {" TITLE=x\r\nTITLE =x\r\nPHOTOPATHX=x\r\n=x\r\n", true, "last||||||||7x8"},
            {"PLACE=Z\xFCrich\r\nPEOPLE=\xC5\x81ukasz\r\n", true, "last||||Łukasz|Zürich|||7x8"},
            {"ImageWidth=12.5px\r\nImageHeight=\r\n", true, "last||||||||12x0"},
            {"ImageWidth=32767.4\r\nImageHeight=-32768\r\n", true, "last||||||||32767x-32768"},
            {"YEAR=1\r\nImageWidth=32768\r\nTITLE=late\r\n", false, "last|||1|||||7x8"},
            {"ImageHeight=32767.5\r\n", false, "last||||||||7x8"}}) {
        if (bytes != "-")
            test.put(path, bytes);
        PhotoInfo info{"last", "t", "ph", "y", "pe", "pl", "e", "k", 7, 8};
        EXPECT_EQ(readInfoFile(album, "a.jpg.info", info), whole);
        EXPECT_EQ(shown(info), read) << bytes;
        EXPECT_EQ(test.files().freeFile(), 1) << bytes;
    }
}

TEST_F(InfoFile, IsWrittenAsTenLinesWhereItWasReadAndWholeOrNotAtAll)
{
    test.showGroup({"x.jpg", "A.jpg"});
    album.info = {"/x\\Łódź.jpg", "Zürich", "P", "1999", "Q", "R=1", "", "U", -640, 0};
    test.put(path, "TITLE=old\r\n");
    for (const FileOperation failing : {Open, Print, Close}) {
        test.failAt(failing);
        EXPECT_FALSE(SaveImageInfo(album, 2) || CreateInfoFile(test.files(), path, "x"));
        test.files().setFaultHook({});
        EXPECT_EQ(test.bytes(path), "TITLE=old\r\n");
    }
    EXPECT_TRUE(SaveImageInfo(album, 2) && !SaveImageInfo(album, 3));
    EXPECT_EQ(test.files().list(test.paths().InfoPath + "*"), std::vector<std::string>{"a.jpg.info"});
    EXPECT_EQ(test.bytes(path),
        "PhotoPath=/x\\Łódź.jpg\r\nTITLE=Z\xFCrich\r\nPHOTOGRAPHER=P\r\nYEAR=1999\r\nPEOPLE=Q\r\nPLACE=R=1\r\n"
        "EVENT=\r\nKEYWORDS=U\r\nImageWidth=-640\r\nImageHeight=0\r\n");
    PhotoInfo read{"", "", "", "", "", "", "left over", "", 0, 0};
    EXPECT_TRUE(readInfoFile(album, "a.jpg.info", read));
    EXPECT_EQ(shown(read), shown(album.info));

    ASSERT_TRUE(CreateInfoFile(test.files(), path, "\\Photos\\a.jpg"));
    EXPECT_EQ(test.bytes(path),
        joinedLines({"PhotoPath=\\Photos\\a.jpg", "TITLE=" + path,
            "PHOTOGRAPHER=", "YEAR=", "PEOPLE=", "PLACE=", "EVENT=", "KEYWORDS=", "ImageWidth=", "ImageHeight="}));
}

TEST_F(InfoFile, GivesTheLinkOfTheFirstLineThatBeginsWithItsKey)
{
    const std::string inside = test.library() + "\\";
    // The fall-back asks the program's folder and not the setting.
    test.paths().PhotoPath = "/elsewhere\\";
    for (const auto& [bytes, link] :
        {std::pair<std::string, std::string>{"PhotoPath=\\a.jpg\r\nPhotoPath=x\r\n", inside + "\\a.jpg"},
            {"TITLE=x\r\nphotopath=\\Photos/a.jpg", inside + "\\Photos\\a.jpg"},
            {"PhotoPath=/home/ann/Zürich b.jpg\r\n", "/home\\ann\\Zürich b.jpg"}, {"PHOTOPATHX=value\r\n", "=value"},
            {"PHOTOPATH\xE9=\\value\r\n", "=\\value"}, {"PhotoPath\r\n", ""},
            {" PhotoPath=x\r\nTITLE=PhotoPath=x\r\n", inside + "Photos\\a.jpg"}, {"", inside + "Photos\\a.jpg"}}) {
        test.put(path, bytes);
        EXPECT_EQ(GetPhotoLink(album, "a.jpg.info"), link) << bytes;
        EXPECT_EQ(test.files().freeFile(), 1) << bytes;
    }
    EXPECT_EQ(test.log(), "");
    EXPECT_EQ(GetPhotoLink(album, "none.jpg.info"), "");
    EXPECT_NE(test.log().find("in 'GetPhotoLink'. Error = File not found\r\n"), std::string::npos);
    test.put(path, "x\r\n");
    test.failAt(LineInput);
    EXPECT_EQ(GetPhotoLink(album, "a.jpg.info"), "");
    EXPECT_EQ(test.files().freeFile(), 2) << "a read that fails leaves its file open";
}

TEST_F(InfoFile, ItsLinkHoldsWhenThePhotographIsThereAndNotEmpty)
{
    test.put(test.paths().PhotoPath + "full.jpg", "x");
    test.put(test.paths().PhotoPath + "empty.jpg", "");
    for (const auto& [link, holds] : {std::pair{test.paths().PhotoPath + "full.jpg", true},
             {"\\Photos\\full.jpg", true}, {test.paths().PhotoPath + "empty.jpg", false},
             {"\\Photos\\empty.jpg", false}, {"\\Photos\\none.jpg", false}, {"full.jpg", false}, {"", false}})
        EXPECT_EQ(CheckPhotoLink(album, link), holds) << link;
    EXPECT_FALSE(isVideoFile("a.jpg") || isVideoFile("avi"));
    EXPECT_TRUE(isVideoFile("a.Avi") && isVideoFile("b.mov") && isVideoFile("c.MPG"));
}

} // namespace trovarium
