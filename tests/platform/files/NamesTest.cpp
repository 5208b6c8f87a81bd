#include "platform/files/FileTest.h"

namespace trovarium {

namespace {

class FileNames : public FileTest {
protected:
    void makeFolder(const std::string& native) const { std::filesystem::create_directory(folder.native(native)); }
};

} // namespace

TEST_F(FileNames, OddNamesGoAroundThroughEveryOperation)
{
    for (const std::string& name :
        Names{"a*b.jpg", "what?.jpg", " blanks  in.jpg ", "Köln 漢字.jpg", ".hidden.jpg", "a.b.c", "no extension",
            "-rf", "100%.jpg", std::string(246, 'n') + ".jpg", std::string(251, 'x') + ".jpg"}) {
        expect({{"write " + name + " > bytes", ""}, {"exists " + name, "True"}, {"length " + name, "5"},
            {"copy " + name + " > copy", ""}, {"rename copy > renamed", ""}, {"write " + name + " > ", ""},
            {"copy renamed > " + name, ""}, {"remove renamed", ""}, {"date " + name, ""},
            {"modified " + name, "1000000000"}, {"read " + name, "bytes"}});
        EXPECT_EQ(folder.read(name), "bytes");
        EXPECT_EQ(did("remove " + name), "");
        EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    }
}

TEST_F(FileNames, WhatIsOnlyReadFallsBackToTheOneNameInAnotherCase)
{
    folder.write("Fähre.JPG", "1234567");
    expect({{"length FÄHRE.jpg", "7"}, {"asItStands FÄHRE.jpg", at("Fähre.JPG")}, {"copy FÄHRE.jpg > copy.jpg", ""},
        {"read FÄHRE.jpg", "1234567"}, {"length copy.jpg", "7"}});
    EXPECT_EQ(files.nativeForReading(at("FÄHRE.jpg")), folder.native("Fähre.JPG"));
}

TEST_F(FileNames, WhatIsWrittenMeansExactlyTheName)
{
    folder.write("A.JPG", "keep");
    folder.write("source", "new");
    expect(
        {{"exists a.jpg", "False"}, {"remove a.jpg", NoFile}, {"remove ?.*", NoFile}, {"rename a.jpg > b.jpg", NoFile},
            {"date a.jpg", NoFile}, {"copy source > a.jpg", ""}, {"append a.JPG > line", ""}});
    EXPECT_EQ(folder.read("A.JPG") + folder.read("a.jpg") + folder.read("a.JPG"), "keepnewline\r\n");
    // The exact name wins, and now none is *the* one that differs in case.
    expect({{"length a.jpg", "3"}, {"length A.jpg", NoFile}, {"asItStands a.jpg", at("a.jpg")},
        {"asItStands A.jpg", at("A.jpg")}, {"asItStands none\\a.jpg", at("none\\a.jpg")}});
}

TEST_F(FileNames, FoldersOnTheWayAreFoundInAnyCaseAlsoForWriting)
{
    for (const char* name : {"PHOTOS", "PHOTOS/Été", "Caf\xE9"})
        makeFolder(name);
    expect({{"write Photos\\été\\a.jpg > a", ""}, {"rename Photos\\été\\a.jpg > Photos\\été\\b.jpg", ""},
        {"list Photos\\été\\*", "b.jpg"}, {"folderExists photos\\", "True"}, {"makeFolder Photos", NoAccess},
        {"makeFolder Photos\\été\\New", ""}, {"listFolders ", "Café|PHOTOS"}, {"write CAFÉ\\a.jpg > 1", ""}});
    EXPECT_EQ(folder.read("PHOTOS/Été/b.jpg") + folder.read("Caf\xE9/a.jpg"), "a1");
    EXPECT_TRUE(std::filesystem::is_directory(folder.native("PHOTOS/Été/New")));
}

TEST_F(FileNames, ANameThatIsNoUtf8IsKnownByItsWindows1252Reading)
{
    folder.write("Caf\xE9 \x81.jpg", "12345");
    folder.write("\xE9.gif", "1");
    folder.write("é.gif", "22");
    expect({{"list *.jpg", "Café \u0081.jpg"}, {"length Café \u0081.jpg", "5"}, {"length CAFÉ \u0081.JPG", "5"},
        {"exists CAFÉ \u0081.jpg", "False"}, {"append Café \u0081.jpg > 6", ""}, {"copy Café \u0081.jpg > copy", ""},
        {"rename copy > Café \u0081.jpg", Taken}});
    EXPECT_EQ(folder.read("Caf\xE9 \x81.jpg"), "12345\r\n6\r\n") << "no second file under the same name";
    expect({{"rename Café \u0081.jpg > Thé.jpg", ""}, {"list *", "copy|Thé.jpg|é.gif"}, {"length é.gif", "2"},
        {"remove é.gif", ""}, {"length é.gif", "1"}}); // of two files that bear one name the other comes to light
    EXPECT_TRUE(std::filesystem::exists(folder.native("Thé.jpg"))) << "a new name is UTF-8";
}

} // namespace trovarium
