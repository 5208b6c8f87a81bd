// SPDX-License-Identifier: GPL-3.0-or-later

#include "check/RepairPasses.h"
#include "check/VideoPlayer.h"
#include "check/frmSplash.h"
#include "check/frmThumbnail.h"
#include "platform/toolkit/Form.h"
#include "store/GroupFile.h"
#include "store/InfoFile.h"
#include "support/ScriptedPrompts.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

namespace trovarium {

using Names = std::vector<std::string>;

class NoPlayer : public VideoPlayer {
public:
    void OpenVideo(std::string_view, PictureBox&) override { }
    void VideoCommand(std::string_view) override { }
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
    Instant dateOf(const std::string& path) { return desktop.files().modified(path); }
    bool isUpToDate(const std::string& name) { return dateOf(thumbnail(name)) == dateOf(photo(name)); }
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
    NoPlayer player;
    FormHolder<frmThumbnail> builder{
        desktop, [this] { return std::make_unique<frmThumbnail>(desktop, test.album(), player); }};
    FormHolder<frmSplash> splash{desktop, [this] { return std::make_unique<frmSplash>(desktop, test.album()); }};
    int photos = 0;
};

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
    };
    const Case cases[] = {
        {.operation = Open, .ending = "Photo_Info\\gone.bmp.info", .there = "-+-----"},
        {.operation = Date, .ending = "Photo_Thumbnails\\b.bmp", .there = "+------"},
        {.operation = Open, .ending = "Photo_Info\\new1.bmp.info", .there = "+-+++--"},
        {.operation = Print, .ending = "  All Photos  .lst", .there = "+-+++++"},
    };
    for (const auto& [operation, ending, there] : cases) {
        for (const std::string& file : files)
            std::filesystem::remove(toNativePath(file)); // of the case before
        for (const char* name : {"a.bmp", "b.bmp", "gone.bmp"})
            addInfoFile(name);
        test.putGroup("Rome.lst", {"a.bmp", "lost.bmp"});
        desktop.files().setFaultHook([&, where = operation, end = ending](FileOperation done, std::string_view path) {
            if (done == where && path.ends_with(end))
                Robot(desktop).click(splash().cmdByPassAutoCheck);
        });
        start();
        desktop.files().setFaultHook({});
        std::string found;
        for (const std::string& file : files)
            found += test.isThere(file) ? "+" : "-";
        EXPECT_EQ(found, there) << ending;
        EXPECT_EQ(test.groupLines("Rome.lst"), (Names{"a.bmp", "lost.bmp"})) << "no group is repaired";
    }
    EXPECT_EQ(test.groupLines(AllPhotosGroup), (Names{"a.bmp", "b.bmp", "new1.bmp", "new2.bmp"})); // to its end
}

TEST_F(LibraryCheck, AFailureEndsThePassAndReplacesNobodysWords)
{
    addPhoto("only.bmp");
    addPhoto("other.bmp");
    test.put(infoFile("only.bmp"), "PLACE=Oslo\r\n");
    test.failAt(FileOperation::Exists, "only.bmp.info");
    start();
    EXPECT_EQ(test.bytes(infoFile("only.bmp")), "PLACE=Oslo\r\n");
    EXPECT_FALSE(test.isThere(infoFile("other.bmp"))) << "the pass ends";
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
}

} // namespace trovarium
