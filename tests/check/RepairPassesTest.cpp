#include "LibraryCheck.h"

#include "store/GroupFile.h"

#include <algorithm>
#include <tuple>

namespace trovarium {

namespace {

std::string buildText(int count)
{
    return "Trovarium has detected " + std::to_string(count)
        + " photo/image file(s) with missing or out-of-date corresponding thumbnail(s). Press 'YES' create "
          "thumbnail(s). Press 'NO' to ignore.";
}

class RepairPassesTest : public LibraryCheck {
protected:
    Names linesOf(std::string_view list) { return test.groupLines(list); }
};

} // namespace

TEST_F(RepairPassesTest, OddNamesSettleEachWithFilesOfItsOwn)
{
    const Names kept{"aXb.bmp", "CASE.BMP", "Case.bmp"};
    const Names odd{
        " blank.bmp", "a*b.bmp", "a=b.bmp", "what?.bmp", std::string(246, 'n') + ".bmp", "Café.bmp", "漢字.bmp"};
    // The last leaves no room for the ending of an information file.
    const Names leftAlone{".hidden.bmp", std::string(251, 'x') + ".bmp"};
    Names names = kept;
    names.insert(names.end(), odd.begin(), odd.end());
    int width = 10;
    for (const Names& some : {names, leftAlone})
        for (const std::string& name : some)
            addPhoto(name, width++, 100);
    std::filesystem::rename(toNativePath(photo("Café.bmp")), toNativePath(photo("Caf\xE9.bmp")));
    const auto before = test.allFiles();

    start();
    test.putGroup("Trip.lst", names);
    start();
    width = 10;
    for (const std::string& name : names) {
        EXPECT_EQ(sizeOfBitmap(test.bytes(thumbnail(name))), std::pair(width++, 100)) << name;
        EXPECT_TRUE(isUpToDate(name)) << name;
    }
    for (const std::string& name : leftAlone)
        EXPECT_FALSE(test.isThere(thumbnail(name))) << name;
    EXPECT_EQ(linesOf("Trip.lst"), names);
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

TEST_F(RepairPassesTest, AnInformationFileWithoutItsPhotographIsSetAsideWhenThatIsWantedAndCanBeDone)
{
    const Names all{"a.bmp", "b.bmp"};
    addPhotosWithInfo(all);
    for (const std::string& name : all)
        addUpToDateThumbnail(name);
    const Names group{"b.bmp", "gone.bmp", "a.bmp"};
    const Names questions{"Trovarium has detected 1 INFO file(s) without corresponding photo/image file(s).\rMove the "
                          "INFO files to the 'Removed' folder?",
        "Are you sure?"};
    test.setSetting("Options", "AutoFix", "False");
    using enum Answer;
    for (const std::vector<Answer>& answers : {std::vector{Yes, Yes}, {No}, {Yes, No}}) {
        const bool isMoved = answers == std::vector{Yes, Yes};
        SCOPED_TRACE(testing::Message() << answers.size() << isMoved);
        addInfoFile("gone.bmp");
        const std::string content = test.bytes(infoFile("gone.bmp"));
        test.putGroup("Rome.lst", group);
        for (std::size_t i = 0; i < answers.size(); ++i)
            prompts.expectQuestion(questions[i], answers[i]);
        // What stays is met again by the next pass, as a photograph without thumbnail.
        if (!isMoved)
            prompts.expectQuestion(buildText(1), No);
        start();
        prompts.verify();
        EXPECT_EQ(test.isThere(infoFile("gone.bmp")), !isMoved);
        EXPECT_EQ(test.bytes(removedInfoFile("gone.bmp")), isMoved ? content : "");
        EXPECT_EQ(linesOf(AllPhotosGroup), isMoved ? all : (Names{"a.bmp", "b.bmp", "gone.bmp"}));
        EXPECT_EQ(linesOf("Rome.lst"), isMoved ? (Names{"b.bmp", "a.bmp"}) : group);
        remove({infoFile("gone.bmp"), removedInfoFile("gone.bmp")});
    }
    EXPECT_EQ(prompts.asked()[0].title + prompts.asked()[1].title + prompts.asked()[3].title,
        "Missing Photo/Image File(s)Removed unassociated INFO file(s)Build Thumbnails");

    test.setSetting("Options", "AutoFix", "True");
    test.album().ReadOnlyLibrary = true; // no thumbnails in the way
    for (const char* name : {"gone1.bmp", "gone2.bmp"})
        addInfoFile(name);
    test.put(removedInfoFile("gone1.bmp"), "an older one");
    test.failAt(FileOperation::Copy, "gone2.bmp.info", FailureKind::DiskFull);
    start();
    EXPECT_TRUE(test.bytes(removedInfoFile("gone1.bmp")).starts_with("PhotoPath=\\Photos\\gone1.bmp\r\n"));
    EXPECT_TRUE(test.isThere(infoFile("gone2.bmp")) && !test.isThere(infoFile("gone1.bmp")));
}

TEST_F(RepairPassesTest, SkippingDropsWhatThePassInHandGatheredAndAllThatFollows)
{
    const Names files{removedInfoFile("gone.bmp"), infoFile("gone.bmp"), thumbnail("a.bmp"), thumbnail("b.bmp"),
        infoFile("new1.bmp"), infoFile("new2.bmp"), groupList("  All Photos  .lst")};
    for (const char* name : {"a.bmp", "b.bmp", "new1.bmp", "new2.bmp"})
        addPhoto(name);
    using enum FileOperation;
    for (const auto& [operation, ending, there, share] :
        {std::tuple{Length, "Photo_Info\\gone.bmp.info", "-+-----", 0.125F},
            {Length, "Photo_Thumbnails\\b.bmp", "+------", 0.25F},
            {Open, "Photo_Info\\new1.bmp.info", "+-+++--", 0.5F + 1 / 12.0F},
            {Print, "  All Photos  .lst", "+-+++++", 0.75F + 2 / 12.0F}}) {
        for (const char* name : {"a.bmp", "b.bmp", "gone.bmp"})
            addInfoFile(name);
        test.putGroup("Rome.lst", {"a.bmp", "lost.bmp"});
        float bar = 0;
        desktop.files().setFaultHook([&, where = operation, end = ending](FileOperation done, std::string_view path) {
            if (done != where || !path.ends_with(end))
                return;
            Robot(desktop).click(splash().cmdByPassAutoCheck);
            bar = splash().pctProgress.Width() / splash().shpProgress.Width();
        });
        start();
        desktop.files().setFaultHook({});
        EXPECT_NEAR(bar, share, 0.001) << ending;
        std::string found;
        for (const std::string& file : files)
            found += test.isThere(file) ? "+" : "-";
        EXPECT_EQ(found, there) << ending;
        EXPECT_EQ(linesOf("Rome.lst"), (Names{"a.bmp", "lost.bmp"})) << "no group is repaired";
        remove({files.begin(), files.end() - 1});
    }
    EXPECT_EQ(linesOf(AllPhotosGroup), (Names{"a.bmp", "b.bmp", "new1.bmp", "new2.bmp"})) << "written to its end";
}

TEST_F(RepairPassesTest, TheSplashFormTellsItsVersionAndOnlyItsButtonSkipsAtTheFirstFileIfNeedBe)
{
    for (const char* name : {"gone1.bmp", "gone2.bmp"})
        addInfoFile(name);
    splash().show();
    EXPECT_EQ(splash().lblVersion.Caption(), "Version " TROVARIUM_VERSION);
    splash().Click.raise();
    splash().KeyPress.raise(27);
    EXPECT_FALSE(test.album().AutoCheckBypass);
    Robot robot(desktop);
    robot.atNextTurn([&] { robot.click(splash().cmdByPassAutoCheck); });
    RepairPasses(test.album(), splash(), builder).CheckFolderContents();
    for (const float beyond : {1.5F, -0.1F})
        splash().UpdateSplashProgress(beyond, 1);
    EXPECT_EQ(splash().pctProgress.Width(), splash().shpProgress.Width());
    EXPECT_TRUE(test.isThere(infoFile("gone1.bmp")));
    EXPECT_EQ(linesOf(AllPhotosGroup), Names());
    const frmFirstTime firstTime(desktop);
    EXPECT_TRUE(firstTime.Label5.WordWrap() && firstTime.Label7.WordWrap());
    EXPECT_FALSE(firstTime.Picture().empty() || splash().Picture().empty() || builder().Picture().empty());
    splash().tmrSplash.Enabled = true;
    splash().Unload.raise();
    EXPECT_FALSE(splash().tmrSplash.Enabled());
    splash().tmrSplash.Tick.raise();
    EXPECT_FALSE(splash.isLoaded());
}

TEST_F(RepairPassesTest, AFailureEndsThePassAndReplacesNobodysWords)
{
    addPhoto("only.bmp");
    test.setSetting("Options", "AutoFix", "perhaps");
    start();
    EXPECT_TRUE(logged("CheckFolderContents", "Type mismatch"));
    test.setSetting("Options", "AutoFix", "False"); // a question would fail the test
    start();
    EXPECT_TRUE(test.isThere(infoFile("only.bmp")));
    EXPECT_TRUE(logged("InfoFilesExist", "Overflow")); // as with each single photograph
    start();
    for (const char* pass : {"PhotoFilesExist", "ThumbnailFilesExist"})
        EXPECT_TRUE(logged(pass, "Overflow"));
    EXPECT_FALSE(test.isThere(thumbnail("only.bmp")));
    EXPECT_EQ(linesOf(AllPhotosGroup), Names{"only.bmp"});

    addPhoto("other.bmp");
    test.put(infoFile("only.bmp"), "PLACE=Oslo\r\n");
    test.failAt(FileOperation::Exists, "only.bmp.info");
    start();
    EXPECT_EQ(test.bytes(infoFile("only.bmp")), "PLACE=Oslo\r\n");
    EXPECT_FALSE(test.isThere(infoFile("other.bmp")));
    desktop.files().setFaultHook({});
    test.put(test.paths().InfoPath + "tiny", "PhotoPath=\\Photos\\only.bmp\r\n"); // has no ending to take off
    start();
    EXPECT_TRUE(logged("ThumbnailFilesExist", "Invalid procedure call or argument"));
    EXPECT_EQ(linesOf(AllPhotosGroup), (Names{"only.bmp", "other.bmp"}));
}

TEST_F(RepairPassesTest, ThumbnailsThatDifferAtAllAreAskedFor)
{
    test.setSetting("Options", "AutoFix", "False");
    const Names names{"absent.bmp", "empty.bmp", "newer.bmp", "older.bmp", "same.bmp"};
    addPhotosWithInfo(names);
    for (const std::string& name : names)
        addUpToDateThumbnail(name);
    const auto date = [this](const std::string& path, const std::string& photograph, int secondsLater = 0) {
        desktop.files().setModified(path, dateOf(photo(photograph)) + std::chrono::seconds(secondsLater));
    };
    remove({thumbnail("absent.bmp")});
    test.put(thumbnail("empty.bmp"), "");
    date(thumbnail("empty.bmp"), "empty.bmp");
    date(thumbnail("newer.bmp"), "newer.bmp", 1);
    date(thumbnail("older.bmp"), "older.bmp", -1);
    addPhotosWithInfo({"SAME.bmp"}); // which has none of its own
    date(photo("SAME.bmp"), "same.bmp");

    prompts.expectQuestion(buildText(5), Answer::No);
    start();
    EXPECT_FALSE(test.isThere(thumbnail("absent.bmp")));
    prompts.expectQuestion(buildText(5), Answer::Yes);
    start();
    start(); // asks nothing more
    test.album().ReadOnlyLibrary = true;
    remove({thumbnail("same.bmp")});
    start();
}

} // namespace trovarium
