// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/FileTest.h"
#include "platform/files/PathResolver.h"
#include "runtime/Text.h"

#include <ctime>
#include <unistd.h>

namespace trovarium {

using Folders = FileTest;

TEST_F(Folders, PatternsMatchNamesWithoutRegardToCase)
{
    for (const char* name : {"a.jpg", "B.JPG", "c.jpeg", "ab.gif", "x.tar.gz", "é.jpg", "漢.bmp", "[1].jpg"})
        folder.write(name, "");
    expect({{"list *.*", "a.jpg|ab.gif|B.JPG|c.jpeg|x.tar.gz|[1].jpg|é.jpg|漢.bmp"},
        {"list *.jpg", "a.jpg|B.JPG|[1].jpg|é.jpg"}, {"list ?.jpg", "a.jpg|B.JPG|é.jpg"}, {"list É.*", "é.jpg"},
        {"list ??.bmp", ""}, {"list *?a*", "x.tar.gz"}, {"list *.gif; *.bmp", "ab.gif|漢.bmp"},
        {"list [1].jpg", "[1].jpg"}, {"list a*b*.g*f*", "ab.gif"}, {"list ;", ""}, {"list b.jpg", "B.JPG"},
        {"list *.none", ""}, {"listFolders none", ""}});
    for (const std::string path : {"none\\*.*", "a.jpg\\*.*", "!relative\\*.*", "!"})
        expect({{"list " + path, ""}});
    folder.write(std::string(200, 'a'), "");
    expect({{"list a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b", ""}}); // and in good time
}

TEST_F(Folders, OnlyPlainFilesAndFoldersThatCanBeNamedAreListed)
{
    folder.write("plain", "123");
    for (const char* name : {".hidden", "back\\slash", "line\nend", "line\rend"})
        folder.write(name, "");
    for (const char* name : {"sub", ".hiddensub", "sub\\odd"})
        makeFolder(name);
    expect({{"pipe pipe", "0"}, {"link to file > plain", ""}, {"link to folder > sub", ""},
        {"link dangling > none", ""}, {"link loop > loop", ""}});
    std::string all;
    for (const FolderEntry& entry : files.listAll(at("*"), "*s*;TO*"))
        all += entry.name + "|" + numberText(files.attributes(at(entry.name), entry.kind)) + "|"
            + (entry.length ? numberText(*entry.length) + "|" : "");
    EXPECT_EQ(all, ".|16|..|16|plain|0|sub|16|to file|0|3|");
    expect({{"list *", "plain|to file"}, {"listFolders ", "sub"}, {"exists to file", "True"},
        {"exists dangling", "False"}, {"exists loop", "False"}, {"exists .hidden", "True"},
        {"folderExists to folder", "True"}, {"folderExists plain", "False"}, {"attributes none", NoFile},
        {"attributes plain", "0"}, {"attributes sub", "16"}});
}

TEST_F(Folders, ACopyIsWholeAndDatedAsItsSourceAndADateIsSetAlone)
{
    std::string bytes;
    while (bytes.size() < 3000000)
        bytes += numberText(bytes.size());
    expect({{"put source > " + bytes, ""}, {"put target > something that was there", ""}});
    stamp("source", {-5, 500000000});
    ASSERT_EQ(chmod(folder.native("source").c_str(), 0444), 0);
    expect({{"copy source > target", ""}, {"modified target", "-5"}});
    const struct stat copied = status("target");
    EXPECT_EQ(copied.st_mtim.tv_nsec, 500000000);
    EXPECT_TRUE(copied.st_atim.tv_sec > 0 && (copied.st_mode & 0600U) == 0600U) << "and it can be written";
    expect({{"date target", ""}, {"modified target", "1000000000"}});
    EXPECT_EQ(status("target").st_atim.tv_sec, copied.st_atim.tv_sec);
    EXPECT_TRUE(folder.read("target") == bytes);
}

TEST_F(Folders, ACopyThatFailsLeavesTheTargetAndARenameNeverReplaces)
{
    expect({{"put a > text", ""}, {"put b > target", ""}, {"makeFolder sub", ""}, {"hardLink A > a", ""},
        {"link soft > a", ""}, {"link dangling > none", ""}});
    for (const std::string name : {"a", "A", "soft", "sub"}) // the first three are one file
        expect({{"copy a > " + name, Denied}, {"rename b > " + name, Taken}});
    expect({{"copy none > b", NoFile}, {"rename a > A", Taken}, {"rename a > dangling", Taken},
        {"rename none > c", NoFile}, {"same A > a", "True"}, {"same soft > a", "True"}, {"same a > b", "False"},
        {"same a > none", "False"}, {"same a > none\\a", "False"}});
    expect({{"copy b > soft", ""}, {"read soft", "target"}, {"read a", "text"}, {"rename A > sub\\moved", ""},
        {"read sub\\moved", "text"}});
}

TEST_F(Folders, ARenameBetweenFileSystemsMovesTheFile)
{
    std::string made = "/dev/shm/trovarium-test-XXXXXX"; // another file system, where the machine has it
    const TemporaryFolder there(mkdtemp(made.data()));   // else one more folder here
    const std::string far = "!" + there.inside("b");
    folder.write("a", "text");
    stamp("a", {1000000000, 0});
    expect({{"rename a > " + far, ""}, {"exists a", "False"}, {"modified " + far, "1000000000"},
        {"write a > second", ""}, {"rename a > " + far, Taken}, {"read a", "second"}, {"remove a", ""},
        {"rename " + far + " > a", ""}, {"read a", "text"}, {"exists " + far, "False"}});
}

TEST_F(Folders, WhatAKilledRunLeftHiddenIsRemovedAndNothingElse)
{
    const std::string dead = ".new-99999999-"; // no process has such a number
    const std::string young = dead + "2";      // another machine may be writing it
    const std::string alive = ".new-" + std::to_string(getpid()) + "-0";
    makeFolder("sub");
    for (const std::string& name :
        {alive, dead, dead + "0", dead + "1x", young, std::string(".new--99999999-0"), "sub/" + dead + "0"}) {
        folder.write(name, "half");
        stamp(name, {std::time(nullptr) - (name == young ? 23 : 25) * 3600L, 0});
    }
    expect({{"link " + dead + "3 > none", ""}, {"makeFolder " + dead + "4", ""}, {"list *", ""}, {"list sub\\*", ""}});
    std::set<std::string> left = onDisk();
    left.erase(dead + "0");
    files.removeLeftOvers(folder.inside());
    EXPECT_EQ(onDisk(), left);
    EXPECT_EQ(did("bytes sub\\" + dead + "0"), "half") << "another folder's";
}

TEST_F(Folders, AListingIsKeptUpToDateByOwnChangesAndReadAgainAfterThoseOfOthersInTheSameTick)
{
    using What = PathResolver::Edit::What;
    PathResolver resolver;
    const auto found = [&](const std::string& name) {
        return resolver.readableName(folder.path(), name).value_or("none");
    };
    const auto apply = [&](What what, const std::string& leaf, const std::function<void()>& change) {
        resolver.applyChange({{what, NativePath{folder.path(), leaf}}}, change);
    };
    stamp(".", {1'000'000'000, 0});
    EXPECT_EQ(found("OWN"), "none");
    for (const std::string name : {"own", "other1", "other2"}) {
        const auto put = [&] {
            folder.write(name, "");
            stamp(".", {4'000'000'000, 0}); // fresh for the whole test, and set again by every change
        };
        name == "own" ? apply(What::Added, name, put) : put();
        EXPECT_EQ(found(upper(name)), name);
    }
    for (int number = 0; number < 600; ++number) { // too many to be listed again for each change
        const std::string name = "new" + std::to_string(number);
        EXPECT_EQ(found(upper(name)), "none");
        apply(What::Added, name, [&] { folder.write(name, ""); });
        EXPECT_EQ(found(upper(name)), name);
    }
    EXPECT_THROW(apply(What::Removed, "new0", [] { throw Failure(FailureKind::PermissionDenied); }), Failure);
    EXPECT_EQ(found("NEW0"), "new0");
    apply(What::Removed, "new0", [&] { std::filesystem::remove(folder.native("new0")); });
    EXPECT_EQ(found("NEW0"), "none");
}

TEST_F(Folders, OddNamesGoAroundAndWhatIsMissingOrCannotBeIsTold)
{
    expect({{"put file > bytes", ""}, {"makeFolder sub", ""}});
    for (const std::string name :
        {"a*b?.jpg", " blanks  in ", "Köln 漢字.jpg", ".hidden", "-rf", "100%", "sub/\\a", "sub\\.\\..\\sub\\a"})
        expect({{"copy file > " + name, ""}, {"rename " + name + " > moved", ""}, {"write " + name + " > new", ""},
            {"date " + name, ""}, {"read " + name, "new"}, {"remove " + name, ""}, {"remove moved", ""}});
    for (const std::string& path : Names{"file", ".\\file", "\\" + at("file").substr(1), at("file") + '\0'})
        expect({{"exists !" + path, "False"}, {"length !" + path, NoFolder}});
    const std::string endless(300, 'x');
    for (const std::string name : {"none\\a.jpg", "file\\a.jpg"})
        expect({{"length " + name, NoFolder}, {"empty " + name, NoFolder}, {"remove " + name, NoFolder},
            {"rename file > " + name, NoFolder}, {"resolveExistingName " + name, at(name)}});
    expect({{"length none", NoFile}, {"length " + endless, NoFile}, {"empty " + endless, BadName},
        {"copy file > " + endless, BadName}, {"length file\\", NoFile}, {"length !", NoFile}, {"copy file > !", NoFile},
        {"length " + std::string(5'000, '\\') + "d", NoFolder}, {"makeFolder new", ""}, {"makeFolder sub", NoAccess},
        {"makeFolder new\\below\\", ""}, {"makeFolder file", NoAccess}, {"makeFolder !/", NoAccess},
        {"makeFolder a\\b", NoFolder}, {"listFolders new", "below"}});
}

TEST_F(Folders, WhatIsReadFallsBackToTheOneNameInAnotherCaseAndWhatIsWrittenMeansExactlyTheName)
{
    std::filesystem::create_directories(folder.native("SUB/Caf\xE9"));
    expect({{"put FÄ.JPG > keep", ""}, {"put source > new", ""}, {"read fä.jpg", "keep"},
        {"resolveExistingName fä.jpg", at("FÄ.JPG")}, {"copy fä.jpg > copy", ""}, {"length COPY", "4"},
        {"exists fä.jpg", "False"}, {"remove fä.jpg", NoFile}, {"remove ?Ä.*", NoFile},
        {"rename fä.jpg > b.jpg", NoFile}, {"date fä.jpg", NoFile}, {"rename copy > b", ""}, {"length COPY", NoFile},
        {"makeFolder Sub", NoAccess}, {"write sub\\CAFÉ\\a > 1", ""}, {"length Sub\\Café\\A", "1"},
        {"rename SUB\\Café > two", ""}, {"length SUB\\Café\\A", NoFolder}, {"length TWO\\A", "1"}});
    EXPECT_EQ(files.nativeForReading(at("fä.jpg")), folder.native("FÄ.JPG"));
    // The exact name wins, and then none is *the* one that differs in case.
    expect({{"copy source > fä.jpg", ""}, {"append fä.JPG > line", ""}, {"bytes FÄ.JPG", "keep"},
        {"bytes fä.jpg", "new"}, {"bytes fä.JPG", "line\r\n"}, {"length FÄ.jpg", NoFile},
        {"resolveExistingName fä.jpg", at("fä.jpg")}, {"resolveExistingName FÄ.jpg", at("FÄ.jpg")}});
}

TEST_F(Folders, ANameThatIsNoUtf8IsKnownByItsWindows1252Reading)
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
