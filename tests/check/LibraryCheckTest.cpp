#include "check/RepairPasses.h"
#include "check/VideoPlayer.h"
#include "check/frmFirstTime.h"
#include "check/frmSplash.h"
#include "check/frmThumbnail.h"
#include "platform/media/FilmSurface.h"
#include "platform/toolkit/Form.h"
#include "store/GroupFile.h"
#include "store/InfoFile.h"
#include "support/PlainBitmap.h"
#include "support/Robot.h"
#include "support/ScriptedPrompts.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace trovarium {

namespace {

using Names = std::vector<std::string>;

// Notes what it was told, and shows each clip as white all over; nothing of one that is called "damaged".
class RecordedPlayer : public VideoPlayer {
public:
    void OpenVideo(std::string_view path, PictureBox& window) override
    {
        told += path.substr(path.rfind('\\') + 1);
        window.filmSurface()->open();
        window.filmSurface()->moveTo({0, 0, static_cast<int>(window.Width()), static_cast<int>(window.Height())});
        if (path.find("damaged") == std::string_view::npos)
            window.filmSurface()->put({1, 1, {0xffffffff}});
    }
    void VideoCommand(std::string_view command) override { told += " " + std::string(command); }

    std::string told;
};

// A library with the forms of its check, put together as the start-up does it. Paths of photographs,
// thumbnails and information files are made from the photograph's name.
class LibraryCheck : public testing::Test {
protected:
    // Photographs are bitmaps; each has another date unless one is given.
    void addPhoto(const std::string& name, int width = 8, int height = 6)
    {
        test.put(photo(name), plainBitmap(width, height));
        // Far from now, so that a date that was not set shows.
        desktop.files().setModified(photo(name), Instant(std::chrono::seconds(1'000'000'000 + 4001 * ++photos)));
    }
    void addInfoFile(const std::string& name) { CreateInfoFile(desktop.files(), infoFile(name), "\\Photos\\" + name); }
    void addPhotosWithInfo(const Names& names, int width = 8, int height = 6)
    {
        for (const std::string& name : names) {
            addPhoto(name, width, height);
            addInfoFile(name);
        }
    }
    std::string photo(const std::string& name) { return test.paths().PhotoPath + name; }
    std::string thumbnail(const std::string& name) { return test.paths().ThumbnailPath + name; }
    std::string infoFile(const std::string& name) { return test.paths().InfoPath + name + ".info"; }
    std::string removedInfoFile(const std::string& name) { return infoFile("Removed\\" + name); }
    std::string groupList(const std::string& fileName) { return test.paths().SlideGroupPath + fileName; }
    bool logged(const std::string& words) { return test.log().find(words + "\r\n") != std::string::npos; }
    Instant dateOf(const std::string& path) { return desktop.files().modified(path); }
    bool isUpToDate(const std::string& name) { return dateOf(thumbnail(name)) == dateOf(photo(name)); }
    // Whether width and height stand so in the head of the bitmap.
    bool measures(const std::string& name, int width, int height)
    {
        return test.bytes(thumbnail(name)).substr(18, 8) == plainBitmap(width, height).substr(18, 8);
    }
    // Whether all pixels are alike.
    bool isBlank(const std::string& name)
    {
        const std::string bytes = test.bytes(thumbnail(name));
        return bytes.find_first_not_of(bytes.at(54), 54) == std::string::npos;
    }

    static std::string question(int missing)
    {
        return "Trovarium has detected " + std::to_string(missing)
            + " INFO file(s) without corresponding photo/image file(s).\rMove the INFO files to the 'Removed' folder?";
    }
    // The check of one start: the passes, then the repair of the groups unless it was skipped.
    void start()
    {
        test.album().AutoCheckBypass = false;
        splash().show();
        RepairPasses(test.album(), splash(), builder).CheckFolderContents();
        if (!test.album().AutoCheckBypass)
            RemoveMissingPhotosFromGroup(test.album(), desktop);
        splash().unload();
    }
    // Builds the thumbnails of these photographs, as any caller of the builder does.
    void build(const Names& names)
    {
        CheckedArray<std::string> list;
        for (const std::string& name : names)
            list.append(name);
        builder().SetMissingList(list);
        builder().showModal();
    }

    Desktop& desktop = testDesktop();
    TestAlbum test{desktop.files()};
    ScriptedPrompts prompts{desktop};
    RecordedPlayer player;
    FormHolder<frmThumbnail> builder{
        desktop, [this] { return std::make_unique<frmThumbnail>(desktop, test.album(), player); }};
    FormHolder<frmSplash> splash{desktop, [this] { return std::make_unique<frmSplash>(desktop, test.album()); }};
    int photos = 0;
};

} // namespace

// Two photographs and a list that repeats one of them and names others.
class GroupRepair : public LibraryCheck {
protected:
    GroupRepair()
    {
        addInfoFile("a.bmp");
        test.put(infoFile("b.bmp"), "x");
        test.put(infoFile("empty.bmp"), "");
        test.put(groupList("Rome.lst"), before);
    }
    void repair() { RemoveMissingPhotosFromGroup(test.album(), desktop, Meanwhile::RunEvents); }

    const std::string before = joinedLines({"b.bmp", "lost.bmp", "a.bmp", "", "empty.bmp", "b.bmp"});
};

TEST_F(GroupRepair, AFailureLeavesTheListAsItIs)
{
    using enum FileOperation;
    for (const auto& [operation, ending] : {std::pair{Open, "Rome.lst"}, {LineInput, "Rome.lst"}, {Print, "Rome.lst"},
             {Close, "Rome.lst"}, {Length, "b.bmp.info"}, {List, "Photo_Info\\?"}}) {
        SCOPED_TRACE(testing::Message() << static_cast<int>(operation) << ending);
        test.failAt(operation, ending);
        repair();
        desktop.files().setFaultHook({});
        EXPECT_EQ(test.bytes(groupList("Rome.lst")), before);
        EXPECT_EQ(desktop.files().freeFile(), 1) << "a file was left open";
        EXPECT_EQ(desktop.Screen().MousePointer(), DefaultPointer);
    }
    const std::string infoPath = test.paths().InfoPath;
    for (const char* folder : {"\\Unplugged\\", "\\Photo_Info"}) {
        test.paths().InfoPath = test.library() + folder;
        repair();
    }
    test.paths().InfoPath = infoPath;
    test.album().AutoCheckBypass = true;
    repair();
    EXPECT_EQ(test.bytes(groupList("Rome.lst")), before);
}

TEST_F(GroupRepair, KeepsOrderAndDoublesAndStopsInTheMiddleOfAListWhenItIsSkipped)
{
    test.putGroup("TmpGroup.lst", {"a.bmp"}); // of an earlier run, no group
    test.put(groupList("A.LST"), std::string(60'000, '\n') + "../x\na.bmp\n");
    int looks = 0;
    desktop.files().setFaultHook(
        [&](FileOperation operation, std::string_view) { looks += operation == FileOperation::Length; });
    Robot robot(desktop);
    splash().show();
    for (const bool isStart : {true, false}) {
        test.album().AutoCheckBypass = false;
        robot.atNextTurn([&] { robot.click(splash().cmdByPassAutoCheck); });
        isStart ? repair() : RemoveMissingPhotosFromGroup(test.album(), desktop); // as in the middle of an act
        EXPECT_EQ(test.groupLines("A.LST").size(), isStart ? 60'002U : 1U) << "skipped in the middle";
        EXPECT_EQ(test.groupLines("Rome.lst").size(), isStart ? 6U : 3U);
        EXPECT_EQ(looks, isStart ? 0 : 6) << "one for each name";
    }
    EXPECT_EQ(test.groupLines("Rome.lst"), (Names{"b.bmp", "a.bmp", "b.bmp"}));
    EXPECT_FALSE(test.isThere(groupList("TmpGroup.lst")));
    desktop.DoEvents();
}

TEST_F(GroupRepair, ABlankPathEndsTheProgram)
{
    test.paths().SlideGroupPath.clear();
    prompts.expectNotice("Critical Error-SubRemoveMissingPhotosFromGroup: SlideGroup path is blank!");
    EXPECT_EQ(desktop.guarded([this] { repair(); }), 1);
}

TEST_F(LibraryCheck, AnAlbumThatMovedKeepsItsWordsAndADiskThatIsAwayTakesNoneUnasked)
{
    Names names;
    for (int i = 100; i < 210; ++i)
        names.push_back(std::to_string(i) + ".bmp");
    addPhotosWithInfo(names);
    for (const std::string& name : names)
        test.put(infoFile(name), "PhotoPath=" + test.folder().inside("Old\\" + name) + "\r\n");
    // One of another case is this photograph's only when it leads to it.
    test.put(infoFile("img.bmp"), "TITLE=mine\r\n");
    test.put(infoFile("link.bmp"), "PhotoPath=" + photo("100.bmp") + "\r\n");
    for (const char* name : {"IMG.bmp", "LINK.bmp"})
        addPhoto(name);
    addPhoto(std::string(251, '-') + ".bmp"); // leaves no room for the ending of an information file
    start();
    EXPECT_TRUE(isUpToDate(names[1]) && isUpToDate("img.bmp"));
    names.insert(names.end(), {"img.bmp", "LINK.bmp", "link.bmp"});
    EXPECT_EQ(test.groupLines(AllPhotosGroup), names);

    const auto startWithout = [&](std::size_t first) {
        for (std::size_t i = first; i < first + 11; ++i)
            desktop.files().remove(photo(names[i]));
        start();
    };
    startWithout(1);
    names.erase(names.begin() + 1, names.begin() + 12); // a tenth of the album
    EXPECT_EQ(test.groupLines(AllPhotosGroup), names);
    EXPECT_FALSE(logged("'GetPhotoLink'. Error = File not found")) << "of a list that is not the folder's";
    const std::string thumbnailOfOne = test.bytes(thumbnail(names[1]));
    prompts.expectQuestion(question(11), Answer::No);
    startWithout(1);
    EXPECT_EQ(test.groupLines(AllPhotosGroup), names);
    EXPECT_EQ(test.bytes(thumbnail(names[1])), thumbnailOfOne);
}

TEST_F(LibraryCheck, WithoutAutoFixItAsksBeforeItSetsTextsAside)
{
    const Names gone{"gone1.bmp", "gone2.bmp"};
    addInfoFile(gone[0]);
    addInfoFile(gone[1]);
    desktop.files().makeFolder(test.paths().InfoPath + "Removed");
    test.put(removedInfoFile("gone1.bmp"), "an older one");
    const std::string content = test.bytes(infoFile("gone1.bmp"));
    const Names questions{question(2), "Are you sure?"};
    test.setSetting("Options", "AutoFix", "False");
    test.album().ReadOnlyLibrary = true; // no thumbnails in the way
    test.failAt(FileOperation::Rename, "gone2.bmp.info", FailureKind::DiskFull);
    using enum Answer;
    for (const std::vector<Answer>& answers : {std::vector{No}, {Yes, No}, {Yes, Yes}}) {
        const bool isMoved = answers == std::vector{Yes, Yes};
        test.putGroup("Rome.lst", gone);
        for (std::size_t i = 0; i < answers.size(); ++i)
            prompts.expectQuestion(questions[i], answers[i]);
        start();
        prompts.verify();
        EXPECT_EQ(test.isThere(infoFile("gone1.bmp")), !isMoved);
        EXPECT_EQ(test.bytes(removedInfoFile("gone1.bmp")), isMoved ? content : "an older one");
        EXPECT_EQ(test.bytes(removedInfoFile("gone1.bmp (2)")), isMoved ? "an older one" : "");
        EXPECT_TRUE(test.isThere(infoFile("gone2.bmp")));
        for (const std::string_view list : {AllPhotosGroup, std::string_view("Rome.lst")})
            EXPECT_EQ(test.groupLines(list), isMoved ? Names{"gone2.bmp"} : gone) << list;
    }

    EXPECT_EQ(prompts.asked()[0].title + prompts.asked()[2].title,
        "Missing Photo/Image File(s)Removed unassociated INFO file(s)");
}

TEST_F(LibraryCheck, WithoutAutoFixItAsksBeforeItMakesThumbnailsWhoseDateDiffers)
{
    test.setSetting("Options", "AutoFix", "False");
    addPhotosWithInfo({"absent.bmp", "SAME.bmp"});
    for (const auto& [name, secondsLater] : {std::pair{"newer.bmp", 1}, {"older.bmp", -1}, {"same.bmp", 0}}) {
        addPhotosWithInfo({name});
        test.put(thumbnail(name), "made");
        desktop.files().setModified(thumbnail(name), dateOf(photo(name)) + std::chrono::seconds(secondsLater));
    }
    desktop.files().setModified(photo("SAME.bmp"), dateOf(photo("same.bmp"))); // which has none of its own
    test.put(thumbnail("absent.bmp"), "");
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        prompts.expectQuestion("Trovarium has detected 4 photo/image file(s) with missing or out-of-date corresponding "
                               "thumbnail(s). Press 'YES' create thumbnail(s). Press 'NO' to ignore.",
            answer);
        start();
        EXPECT_EQ(test.isThere(thumbnail("SAME.bmp")), answer == Answer::Yes);
    }
    start(); // asks nothing more
    EXPECT_EQ(prompts.asked()[0].title, "Build Thumbnails");
}

TEST_F(LibraryCheck, SkippingDropsWhatThePassInHandGatheredAndAllThatFollows)
{
    const Names files{removedInfoFile("gone.bmp"), infoFile("gone.bmp"), thumbnail("a.bmp"), thumbnail("b.bmp"),
        infoFile("new1.bmp"), infoFile("new2.bmp"), groupList("  All Photos  .lst")};
    for (const char* name : {"a.bmp", "b.bmp", "new1.bmp", "new2.bmp"})
        addPhoto(name);
    using enum FileOperation;
    struct Case {
        FileOperation operation;
        std::string_view ending;
        std::string there; // which of `files`
        float share;       // of the bar
    };
    const Case cases[] = {
        {.operation = Length, .ending = "Photo_Info\\gone.bmp.info", .there = "-+-----", .share = 0.125F},
        {.operation = Length, .ending = "Photo_Thumbnails\\b.bmp", .there = "+------", .share = 0.25F},
        {.operation = Open, .ending = "Photo_Info\\new1.bmp.info", .there = "+-+++--", .share = 0.5F + 1 / 12.0F},
        {.operation = Print, .ending = "  All Photos  .lst", .there = "+-+++++", .share = 1},
    };
    for (const auto& [operation, ending, there, share] : cases) {
        for (const std::string& file : files)
            std::filesystem::remove(toNativePath(file)); // of the case before
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
        EXPECT_EQ(test.groupLines("Rome.lst"), (Names{"a.bmp", "lost.bmp"})) << "no group is repaired";
    }
    EXPECT_EQ(test.groupLines(AllPhotosGroup), (Names{"a.bmp", "b.bmp", "new1.bmp", "new2.bmp"})); // to its end
}

TEST_F(LibraryCheck, TheSplashFormTellsItsVersionAndFillsItsBarWhenItSkips)
{
    splash().show();
    EXPECT_EQ(splash().lblVersion.Caption(), "Version " TROVARIUM_VERSION);
    Robot robot(desktop);
    robot.atNextTurn([&] { robot.click(splash().cmdByPassAutoCheck); });
    RepairPasses(test.album(), splash(), builder).CheckFolderContents();
    EXPECT_EQ(splash().pctProgress.Width(), splash().shpProgress.Width());
    const frmFirstTime firstTime(desktop);
    EXPECT_TRUE(firstTime.Label5.WordWrap() && firstTime.Label6.Caption().ends_with(WebSite));
    EXPECT_FALSE(firstTime.Picture().empty() || splash().Picture().empty() || builder().Picture().empty());
    splash().unload();
}

TEST_F(LibraryCheck, AFailureEndsThePassAndReplacesNobodysWords)
{
    addPhoto("only.bmp");
    test.setSetting("Options", "AutoFix", "perhaps");
    start();
    EXPECT_TRUE(logged("'CheckFolderContents'. Error = Type mismatch"));
    test.setSetting("Options", "AutoFix", "False"); // a question would fail the test
    start();
    EXPECT_TRUE(test.isThere(infoFile("only.bmp")));
    EXPECT_TRUE(logged("'InfoFilesExist'. Error = Overflow")); // as with each single photograph
    start();
    EXPECT_TRUE(logged("'PhotoFilesExist'. Error = Overflow") && logged("'ThumbnailFilesExist'. Error = Overflow"));
    EXPECT_EQ(test.groupLines(AllPhotosGroup), Names{"only.bmp"});

    addPhoto("other.bmp");
    test.put(infoFile("only.bmp"), "PLACE=Oslo\r\n");
    test.failAt(FileOperation::Exists, "only.bmp.info");
    start();
    EXPECT_EQ(test.bytes(infoFile("only.bmp")), "PLACE=Oslo\r\n");
    EXPECT_FALSE(test.isThere(infoFile("other.bmp"))) << "the pass ends";
}

TEST_F(LibraryCheck, TheLongerSideIsAHundredPixelsAndTheDateThePhotographs)
{
    build(Names(32768, "a.bmp")); // more than a walk counts
    build({});
    EXPECT_FALSE(builder.isLoaded() || test.isThere(thumbnail("a.bmp")));
    struct Case {
        int width, height, shownWidth, shownHeight;
    };
    const Case cases[] = {
        {.width = 200, .height = 100, .shownWidth = 100, .shownHeight = 50},
        {.width = 300, .height = 300, .shownWidth = 100, .shownHeight = 100},
        {.width = 4, .height = 2, .shownWidth = 100, .shownHeight = 50},
        {.width = 900, .height = 3, .shownWidth = 100, .shownHeight = 1},
        {.width = 3, .height = 900, .shownWidth = 1, .shownHeight = 100},
    };
    for (const auto& [width, height, shownWidth, shownHeight] : cases) {
        addPhotosWithInfo({"a.bmp"}, width, height);
        build({"C:\\ignored\\a.bmp"});
        EXPECT_TRUE(measures("a.bmp", shownWidth, shownHeight)) << width << "x" << height;
        EXPECT_TRUE(isUpToDate("a.bmp") && !isBlank("a.bmp"));
    }
    const std::string outside = test.folder().inside("linked.bmp");
    desktop.files().copy(photo("a.bmp"), outside);
    test.put(infoFile("name.bmp"), "PhotoPath=" + outside + "\r\n");
    build({"name.bmp"});
    EXPECT_TRUE(measures("name.bmp", 1, 100) && dateOf(thumbnail("name.bmp")) == dateOf(outside));
}

TEST_F(LibraryCheck, AClipHasTheFrameOfItsPause)
{
    const Names clips{"b.mpg", "c.MOV", "damaged.Avi"};
    addPhotosWithInfo(clips);
    start(); // finds those that were left without
    EXPECT_EQ(player.told, "b.mpg play pausec.MOV play pausedamaged.Avi play pause");
    for (const std::string& name : clips) {
        EXPECT_TRUE(measures(name, 100, 75) && isBlank(name) && isUpToDate(name)) << name;
        EXPECT_EQ(test.bytes(thumbnail(name)).ends_with("\xff\xff\xff"), name != "damaged.Avi") << name;
    }
}

TEST_F(LibraryCheck, APictureThatCannotBeReadGetsAnEmptyThumbnail)
{
    addPhotosWithInfo({"bad.jpg", "good.bmp", "torn.bmp"});
    addInfoFile("gone.bmp");
    test.put(photo("bad.jpg"), "no picture at all");
    test.put(photo("torn.bmp"), plainBitmap(80, 80).substr(0, 60));
    // Behind a good one, so that a canvas that was not cleared shows.
    build({"good.bmp", "bad.jpg", "torn.bmp", "gone.bmp"});
    for (const char* name : {"bad.jpg", "gone.bmp", "torn.bmp"})
        EXPECT_TRUE(isBlank(name)) << name;
}

TEST_F(LibraryCheck, AThumbnailThatAFullDiskLeftOutOrUndatedIsBuiltByTheNextStart)
{
    addPhotosWithInfo({"good.bmp", "late.bmp"});
    test.failAt(FileOperation::Print, "Photo_Thumbnails\\good.bmp");
    start();
    EXPECT_FALSE(test.isThere(thumbnail("good.bmp")));
    EXPECT_TRUE(isUpToDate("late.bmp"));
    // Without its date it reads as out of date, and the next start builds it again.
    test.failAt(FileOperation::SetDate, "Photo_Thumbnails\\good.bmp");
    start();
    EXPECT_FALSE(isUpToDate("good.bmp"));
    desktop.files().setFaultHook({});
    start();
    EXPECT_TRUE(isUpToDate("good.bmp"));
    EXPECT_FALSE(SetFileDateTime(desktop.files(), photo("good.bmp"), "no date")
        || SetFileDateTime(desktop.files(), photo("none.bmp"), dateText(now())));
    EXPECT_TRUE(SetFileDateTime(desktop.files(), photo("good.bmp"), dateText(now())));
}

TEST_F(LibraryCheck, TheBuilderShowsThePictureInWorkAndStopsBehindItWhenItsWindowIsClosed)
{
    addPhotosWithInfo({"a.bmp", "b.bmp", "c.bmp", "d.bmp"});
    addPhoto("new.bmp");
    std::string shown;
    desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
        if (operation == FileOperation::Picture && path.ends_with("c.bmp"))
            Robot(desktop).close(builder());
        if (operation != FileOperation::SetDate || path.ends_with("c.bmp"))
            return;
        frmThumbnail& form = builder();
        form.Form_Activate(); // while it builds already
        shown += form.lbFilename.Caption() + form.lbPhotoSize(0).Caption() + form.lbPhotoSize(1).Caption();
        EXPECT_FLOAT_EQ(form.pctProgress.Width() / form.shpProgress.Width(), path.ends_with("b.bmp") ? 0.25F : 0);
    });
    start();
    desktop.files().setFaultHook({});
    EXPECT_EQ(shown, "a.bmp(width=8)(height=6)b.bmp(width=8)(height=6)");
    EXPECT_TRUE(isUpToDate("c.bmp") && !isBlank("c.bmp"));
    EXPECT_FALSE(test.isThere(thumbnail("d.bmp")));
    EXPECT_TRUE(test.isThere(infoFile("new.bmp"))) << "the start goes on";
    start();
    EXPECT_TRUE(isUpToDate("d.bmp"));
}

} // namespace trovarium
