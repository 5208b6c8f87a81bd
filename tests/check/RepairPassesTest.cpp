#include "LibraryCheck.h"

#include "store/GroupFile.h"

#include <algorithm>
#include <filesystem>

namespace trovarium {

namespace {

std::string missingFilesText(int count)
{
    return "Trovarium has detected " + std::to_string(count)
        + " INFO file(s) without corresponding photo/image file(s).\rMove the INFO files to the 'Removed' folder?";
}

std::string buildText(int count)
{
    return "Trovarium has detected " + std::to_string(count)
        + " photo/image file(s) with missing or out-of-date corresponding thumbnail(s). Press 'YES' create "
          "thumbnail(s). Press 'NO' to ignore.";
}

} // namespace

using RepairPassesTest = LibraryCheck;

TEST_F(RepairPassesTest, OddNamesSettleEachWithFilesOfItsOwn)
{
    const std::vector<std::string> kept{"aXb.bmp", "CASE.BMP", "Case.bmp"};
    const std::vector<std::string> odd{
        " blank.bmp", "a*b.bmp", "a=b.bmp", "what?.bmp", std::string(246, 'n') + ".bmp", "Café.bmp", "漢字.bmp"};
    // The last leaves no room for the ending of an information file.
    const std::vector<std::string> leftAlone{".hidden.bmp", std::string(251, 'x') + ".bmp"};
    std::vector<std::string> names;
    for (const auto& some : {kept, odd, leftAlone})
        names.insert(names.end(), some.begin(), some.end());
    const auto widthOf = [&](const std::string& name) {
        return 10 + static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
    };
    for (const std::string& name : names)
        addPhoto(name, widthOf(name), 100);
    std::filesystem::rename(toNativePath(photo("Café.bmp")), toNativePath(photo("Caf\xE9.bmp")));
    names.resize(kept.size() + odd.size());
    const auto linesOf = [this](std::string_view list) {
        EXPECT_TRUE(readGroupList(test.album(), list));
        std::vector<std::string> lines;
        for (int i = 1; i <= test.album().group.GroupList.upperBound(); ++i)
            lines.push_back(test.album().group.GroupList(i));
        return lines;
    };
    const auto before = test.allFiles();

    start();
    test.putGroup("Trip.lst", names);
    start();
    for (const std::string& name : names) {
        EXPECT_EQ(sizeOfBitmap(test.bytes(thumbnail(name))), (BitmapSize{widthOf(name), 100})) << name;
        EXPECT_EQ(dateOf(thumbnail(name)), dateOf(photo(name))) << name;
    }
    for (const std::string& name : leftAlone)
        EXPECT_FALSE(test.isThere(thumbnail(name))) << name;
    EXPECT_EQ(linesOf("Trip.lst"), names);
    std::vector<std::string> all = linesOf(AllPhotosGroup);
    EXPECT_TRUE(std::is_permutation(all.begin(), all.end(), names.begin(), names.end()));
    const auto after = test.allFiles();
    EXPECT_TRUE(std::includes(after.begin(), after.end(), before.begin(), before.end()));

    for (const std::string& name : odd)
        desktop.files().remove(photo(name));
    start();
    for (const std::string& name : odd)
        EXPECT_TRUE(test.isThere(removedInfoFile(name)) && !test.isThere(infoFile(name))) << name;
    EXPECT_EQ(linesOf("Trip.lst"), kept);
    EXPECT_EQ(linesOf(AllPhotosGroup), kept);
}

TEST_F(RepairPassesTest, AnInformationFileWithoutItsPhotographIsSetAside)
{
    struct Case {
        const char* autoFix; // null: never set
        std::vector<Answer> answers;
        bool isMoved;
    };
    const std::vector<Case> cases{{nullptr, {}, true}, {"True", {}, true}, {"False", {Answer::Yes, Answer::Yes}, true},
        {"False", {Answer::No}, false}, {"False", {Answer::Yes, Answer::No}, false}};
    const std::vector<std::string> all{"a.bmp", "b.bmp"};
    addPhotosWithInfo(all);
    for (const std::string& name : all)
        addUpToDateThumbnail(name);
    for (const Case& tried : cases) {
        SCOPED_TRACE(&tried - cases.data());
        addInfoFile("gone.bmp");
        const std::string content = test.bytes(infoFile("gone.bmp"));
        const std::string group = joinedLines({"b.bmp", "gone.bmp", "a.bmp"});
        test.put(groupList("Rome.lst"), group);
        if (tried.autoFix != nullptr)
            test.setSetting("Options", "AutoFix", tried.autoFix);
        for (std::size_t i = 0; i < tried.answers.size(); ++i)
            prompts.expectQuestion(i == 0 ? missingFilesText(1) : "Are you sure?", tried.answers[i]);
        // What stays is met again by the next pass, as a photograph without thumbnail.
        if (!tried.isMoved)
            prompts.expectQuestion(buildText(1), Answer::No);

        start();

        prompts.verify();
        EXPECT_EQ(test.isThere(infoFile("gone.bmp")), !tried.isMoved);
        EXPECT_EQ(test.bytes(removedInfoFile("gone.bmp")), tried.isMoved ? content : "");
        EXPECT_EQ(allPhotos(), joinedLines(all) + (tried.isMoved ? "" : "gone.bmp\r\n"));
        EXPECT_EQ(test.bytes(groupList("Rome.lst")), tried.isMoved ? joinedLines({"b.bmp", "a.bmp"}) : group);
        std::filesystem::remove(toNativePath(infoFile("gone.bmp")));
        std::filesystem::remove(toNativePath(removedInfoFile("gone.bmp")));
    }
    std::vector<std::string> titles;
    for (const ScriptedPrompts::Asked& asked : prompts.asked())
        titles.push_back(asked.title);
    const std::string missing = "Missing Photo/Image File(s)";
    const std::string removed = "Removed unassociated INFO file(s)";
    EXPECT_EQ(titles,
        (std::vector<std::string>{
            missing, removed, missing, "Build Thumbnails", missing, removed, "Build Thumbnails"}));
}

TEST_F(RepairPassesTest, AnInformationFileThatCouldNotBeSetAsideStays)
{
    for (const char* name : {"gone1.bmp", "gone2.bmp"})
        addInfoFile(name);
    std::filesystem::create_directory(toNativePath(test.paths().InfoPath + "Removed"));
    test.put(removedInfoFile("gone1.bmp"), "an older one");
    test.album().ReadOnlyLibrary = true; // no thumbnails in the way
    failAt(FileOperation::Copy, "gone2.bmp.info", FailureKind::DiskFull);
    start();
    EXPECT_FALSE(test.isThere(infoFile("gone1.bmp")));
    EXPECT_TRUE(test.bytes(removedInfoFile("gone1.bmp")).starts_with("PhotoPath=\\Photos\\gone1.bmp\r\n"));
    EXPECT_TRUE(test.isThere(infoFile("gone2.bmp")));
    EXPECT_EQ(logged("CheckPhotoLink", "File not found"), 2);
}

TEST_F(RepairPassesTest, ASettingThatIsNoBooleanIsLoggedAndOnlyTheGroupsAreRepaired)
{
    addPhoto("a.bmp");
    addPhoto("b.bmp");
    addInfoFile("gone.bmp");
    test.put(groupList("Rome.lst"), joinedLines({"gone.bmp", "lost.bmp"}));
    test.setSetting("Options", "AutoFix", "perhaps");
    start();
    EXPECT_EQ(logged("CheckFolderContents", "Type mismatch"), 1) << log();
    EXPECT_TRUE(test.isThere(infoFile("gone.bmp")));
    EXPECT_FALSE(test.isThere(infoFile("a.bmp")));
    EXPECT_FALSE(test.isThere(groupList("  All Photos  .lst")));
    EXPECT_EQ(test.bytes(groupList("Rome.lst")), joinedLines({"gone.bmp"}));
}

TEST_F(RepairPassesTest, SkippingDropsWhatThePassInHandGatheredAndAllThatFollows)
{
    struct Case {
        const char* pass;
        FileOperation operation;
        std::string pathEnding;
        bool isMoved, isBuilt, hasNewInfo, hasList;
    };
    const std::vector<Case> cases{
        {"photographs", FileOperation::Length, "Photo_Info\\gone.bmp.info", false, false, false, false},
        {"thumbnails", FileOperation::Length, "Photo_Thumbnails\\b.bmp", true, false, false, false},
        {"information files", FileOperation::Open, "Photo_Info\\new1.bmp.info", true, true, true, false},
        {"list of all", FileOperation::Print, "  All Photos  .lst", true, true, true, true},
    };
    for (const char* name : {"a.bmp", "b.bmp", "new1.bmp", "new2.bmp"})
        addPhoto(name);
    for (const Case& tried : cases) {
        SCOPED_TRACE(tried.pass);
        for (const char* name : {"a.bmp", "b.bmp", "gone.bmp"})
            addInfoFile(name);
        test.put(groupList("Rome.lst"), joinedLines({"a.bmp", "lost.bmp"}));
        skipAt(tried.operation, tried.pathEnding);
        start();
        desktop.files().setFaultHook({});

        EXPECT_TRUE(test.album().AutoCheckBypass);
        EXPECT_EQ(test.isThere(removedInfoFile("gone.bmp")), tried.isMoved);
        EXPECT_EQ(test.isThere(infoFile("gone.bmp")), !tried.isMoved);
        EXPECT_EQ(test.isThere(thumbnail("a.bmp")), tried.isBuilt);
        EXPECT_EQ(test.isThere(infoFile("new1.bmp")), tried.hasNewInfo);
        EXPECT_EQ(test.isThere(infoFile("new2.bmp")), tried.hasList);
        // The list itself is written to its end, and no group is repaired.
        EXPECT_EQ(allPhotos(), tried.hasList ? joinedLines({"a.bmp", "b.bmp", "new1.bmp", "new2.bmp"}) : std::string());
        EXPECT_EQ(test.bytes(groupList("Rome.lst")), joinedLines({"a.bmp", "lost.bmp"}));
        for (const std::string& file : {removedInfoFile("gone.bmp"), thumbnail("a.bmp"), thumbnail("b.bmp"),
                 infoFile("new1.bmp"), infoFile("new2.bmp")})
            std::filesystem::remove(toNativePath(file));
    }
}

TEST_F(RepairPassesTest, ASinglePhotographFailsInEachPassAfterItsFile)
{
    addPhoto("only.bmp");
    test.setSetting("Options", "AutoFix", "False"); // a question would fail the test
    start();
    EXPECT_TRUE(test.isThere(infoFile("only.bmp")));
    EXPECT_EQ(logged("InfoFilesExist", "Overflow"), 1) << log();
    start();
    EXPECT_EQ(logged("PhotoFilesExist", "Overflow"), 1) << log();
    EXPECT_EQ(logged("ThumbnailFilesExist", "Overflow"), 1) << log();
    EXPECT_EQ(logged("InfoFilesExist", "Overflow"), 2) << log();
    EXPECT_FALSE(test.isThere(thumbnail("only.bmp")));
    EXPECT_EQ(allPhotos(), "only.bmp\r\n");
}

TEST_F(RepairPassesTest, ThumbnailsThatDifferAtAllAreAskedFor)
{
    test.setSetting("Options", "AutoFix", "False");
    const std::vector<std::string> names{"absent.bmp", "empty.bmp", "newer.bmp", "older.bmp", "same.bmp"};
    addPhotosWithInfo(names);
    for (const std::string& name : names)
        addUpToDateThumbnail(name);
    std::filesystem::remove(toNativePath(thumbnail("absent.bmp")));
    const Instant date = dateOf(photo("empty.bmp"));
    test.put(thumbnail("empty.bmp"), "");
    desktop.files().setModified(thumbnail("empty.bmp"), date);
    using std::chrono::seconds;
    desktop.files().setModified(thumbnail("newer.bmp"), dateOf(photo("newer.bmp")) + seconds(1));
    desktop.files().setModified(thumbnail("older.bmp"), dateOf(photo("older.bmp")) - seconds(1));
    addPhotosWithInfo({"SAME.bmp"});
    desktop.files().setModified(photo("SAME.bmp"), dateOf(photo("same.bmp")));

    prompts.expectQuestion(buildText(5), Answer::No);
    start();
    EXPECT_FALSE(test.isThere(thumbnail("absent.bmp")));
    prompts.expectQuestion(buildText(5), Answer::Yes);
    start();
    start(); // asks nothing more

    test.album().ReadOnlyLibrary = true;
    std::filesystem::remove(toNativePath(thumbnail("same.bmp")));
    start();
    EXPECT_FALSE(test.isThere(thumbnail("same.bmp")));
}

TEST_F(RepairPassesTest, AFileThatCannotBeSeenIsNotReplacedAndStopsNoOther)
{
    for (const char* name : {"a.bmp", "b.bmp"})
        addPhoto(name);
    test.put(infoFile("a.bmp"), "PLACE=Oslo\r\n");
    failAt(FileOperation::Exists, "a.bmp.info", FailureKind::DeviceIo);
    start();
    EXPECT_EQ(test.bytes(infoFile("a.bmp")), "PLACE=Oslo\r\n");
    EXPECT_TRUE(test.isThere(infoFile("b.bmp")));
    EXPECT_EQ(logged("InfoFilesExist", "Device I/O error"), 1) << log();
    failAt(FileOperation::Exists, "Photo_Thumbnails\\a.bmp", FailureKind::DeviceIo);
    start();
    EXPECT_TRUE(test.isThere(thumbnail("b.bmp")));
}

TEST_F(RepairPassesTest, ANameTooShortForItsEndingIsLoggedByOnePassAndLeftOutByAnother)
{
    addPhotosWithInfo({"a.bmp", "b.bmp"});
    test.put(test.paths().InfoPath + "tiny", "PhotoPath=\\Photos\\a.bmp\r\n");
    start();
    EXPECT_EQ(logged("ThumbnailFilesExist", "Invalid procedure call or argument"), 1) << log();
    EXPECT_FALSE(test.isThere(thumbnail("a.bmp")));
    EXPECT_EQ(allPhotos(), joinedLines({"a.bmp", "b.bmp"}));
}

TEST_F(RepairPassesTest, AFolderBeyondTheCountersEndsThePassBeforeItsFirstFile)
{
    constexpr int FirstTooMany = 32'768;
    test.put(photo("0"), "");
    for (int i = 1; i < FirstTooMany; ++i)
        std::filesystem::create_hard_link(toNativePath(photo("0")), toNativePath(photo(std::to_string(i))));
    start();
    EXPECT_EQ(logged("InfoFilesExist", "Overflow"), 1) << log();
    EXPECT_TRUE(std::filesystem::is_empty(toNativePath(test.paths().InfoPath)));
}

} // namespace trovarium
