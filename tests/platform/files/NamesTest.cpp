#include "platform/files/FileTest.h"

namespace trovarium {

using FileNames = FileTest;

TEST_F(FileNames, OddNamesGoAroundAndBothSeparatorsPartAnAbsolutePath)
{
    makeFolder("sub");
    for (const std::string name : {"a*b?.jpg", " blanks  in ", "Köln 漢字.jpg", ".hidden", "-rf", "100%", "sub/a",
             "sub\\\\a", "sub/\\a", "sub\\.\\..\\sub\\a"})
        expect({{"write " + name + " > bytes", ""}, {"copy " + name + " > copy", ""}, {"remove " + name, ""},
            {"rename copy > " + name, ""}, {"date " + name, ""}, {"read " + name, "bytes"}});
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    for (const std::string& path : Names{"sub\\a", ".\\sub\\a", "\\" + at("sub\\a").substr(1), at("sub\\a") + '\0'})
        expect({{"exists !" + path, "False"}, {"length !" + path, NoFolder}, {"copy !" + path + " > b", NoFolder}});
    std::filesystem::current_path(before);
    EXPECT_EQ(fromNativePath("/home/ann") + fromNativePath("/") + fromNativePath("/\xE9/"), "/home\\ann//é\\");
}

TEST_F(FileNames, WhatIsMissingAndWhatCannotBe)
{
    folder.write("file", "");
    const std::string endless(300, 'x');
    for (const std::string name : {"none\\a.jpg", "file\\a.jpg"})
        expect({{"length " + name, NoFolder}, {"empty " + name, NoFolder}, {"remove " + name, NoFolder},
            {"rename file > " + name, NoFolder}, {"asItStands " + name, at(name)}});
    expect({{"length none", NoFile}, {"length " + endless, NoFile}, {"empty " + endless, BadName},
        {"copy file > " + endless, BadName}, {"length file\\", NoFile}, {"length !", NoFile}, {"copy file > !", NoFile},
        {"length " + std::string(400'000, '\\') + "d", NoFolder}, {"makeFolder new", ""}, {"makeFolder new", NoAccess},
        {"makeFolder new\\below\\", ""}, {"makeFolder file", NoAccess}, {"makeFolder !/", NoAccess},
        {"makeFolder a\\b", NoFolder}, {"listFolders new", "below"}});
}

TEST_F(FileNames, WhatIsReadFallsBackToTheOneNameInAnotherCaseAndWhatIsWrittenMeansExactlyTheName)
{
    expect({{"put FÄ.JPG > keep", ""}, {"put source > new", ""}, {"read fä.jpg", "keep"},
        {"asItStands fä.jpg", at("FÄ.JPG")}, {"copy fä.jpg > copy", ""}, {"length copy", "4"},
        {"exists fä.jpg", "False"}, {"remove fä.jpg", NoFile}, {"remove ?Ä.*", NoFile},
        {"rename fä.jpg > b.jpg", NoFile}, {"date fä.jpg", NoFile}});
    EXPECT_EQ(files.nativeForReading(at("fä.jpg")), folder.native("FÄ.JPG"));
    // The exact name wins, and then none is *the* one that differs in case.
    expect({{"copy source > fä.jpg", ""}, {"append fä.JPG > line", ""}, {"bytes FÄ.JPG", "keep"},
        {"bytes fä.jpg", "new"}, {"bytes fä.JPG", "line\r\n"}, {"length FÄ.jpg", NoFile},
        {"asItStands fä.jpg", at("fä.jpg")}, {"asItStands FÄ.jpg", at("FÄ.jpg")}});
}

TEST_F(FileNames, FoldersOnTheWayAreFoundInAnyCaseAndOwnChangesAreSeenByTheFallBack)
{
    makeFolder("PHOTOS");
    makeFolder("PHOTOS/Caf\xE9");
    expect({{"write Photos\\CAFÉ\\a > a", ""}, {"length PHOTOS\\Café\\A", "1"},
        {"rename Photos\\Café\\a > Photos\\Café\\b", ""}, {"length Photos\\Café\\A", NoFile},
        {"copy Photos\\Café\\B > photos\\Café\\c", ""}, {"length PHOTOS\\Café\\C", "1"}, {"remove Photos\\Café\\c", ""},
        {"length PHOTOS\\Café\\C", NoFile}, {"list Photos\\Café\\*", "b"}, {"makeFolder Photos", NoAccess},
        {"folderExists photos\\", "True"}, {"makeFolder Photos\\CAFÉ\\New", ""}, {"listFolders photos\\CAFÉ", "New"},
        {"rename PHOTOS\\Café > two", ""}, {"length PHOTOS\\Café\\B", NoFolder}, {"length TWO\\B", "1"}});
}

TEST_F(FileNames, ANameThatIsNoUtf8IsKnownByItsWindows1252Reading)
{
    folder.write("Caf\xE9 \x81.jpg", "12345");
    folder.write("\xE9", "1");
    folder.write("é", "22");
    expect({{"list *.jpg", "Café \u0081.jpg"}, {"length CAFÉ \u0081.JPG", "5"}, {"exists CAFÉ \u0081.jpg", "False"},
        {"append Café \u0081.jpg > 6", ""}, {"copy Café \u0081.jpg > copy", ""},
        {"rename copy > Café \u0081.jpg", Taken}, {"length Café \u0081.jpg", "10"}});
    // Of two files that bear one name the other comes to light when the first is gone.
    expect({{"rename Café \u0081.jpg > Thé.jpg", ""}, {"list *", "copy|Thé.jpg|é"}, {"length é", "2"}, {"remove é", ""},
        {"append é > 3", ""}});
    EXPECT_EQ(onDisk(), (std::set<std::string>{"Thé.jpg", "copy", "\xE9"})) << "a new name is UTF-8";
    EXPECT_EQ(folder.read("\xE9"), "1\r\n3\r\n");
}

} // namespace trovarium
