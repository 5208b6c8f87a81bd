#include "MainWindow.h"

#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "runtime/Failure.h"

namespace trovarium {

namespace {

class RemovalTest : public MainWindow {
protected:
    void openThreeGroups()
    {
        putPhotos(names(5));
        test.put(clip("p2.jpg"), "RIFF");
        putGroup("  All Photos  ", names(5));
        putGroup("Alps", {"p2.jpg", "p3.jpg", "p2.jpg"});
        putGroup("Rome", {"p1.jpg", "p2.jpg"});
        putGroup("Bath", {"p4.jpg", "p5.jpg"});
        open();
        pressRowNamed("Alps");
    }
    void expectQuestion(Answer answer)
    {
        prompts.expectQuestion("Are you sure you want to remove selected photograph(s) from the program? The removed "
                               "photograph(s) will be place in the following folder -> "
                + toNativePath(test.paths().PhotoPath + "Removed"),
            answer);
    }
    std::string photo(const std::string& name) { return test.paths().PhotoPath + name; }
    std::string thumbnail(const std::string& name) { return test.paths().ThumbnailPath + name; }
    std::string info(const std::string& name) { return test.paths().InfoPath + name + ".info"; }
    std::string clip(const std::string& name) { return test.paths().AudioPath + name + ".wav"; }
    std::string asideOf(const std::string& path)
    {
        const std::size_t cut = path.rfind('\\') + 1;
        return path.substr(0, cut) + "Removed\\" + path.substr(cut);
    }
};

} // namespace

TEST_F(RemovalTest, APhotographOfThreeGroupsLeavesThemAll)
{
    openThreeGroups();
    const std::map<std::string, std::string> before{{photo("p2.jpg"), test.bytes(photo("p2.jpg"))},
        {info("p2.jpg"), test.bytes(info("p2.jpg"))}, {clip("p2.jpg"), "RIFF"}};
    test.put(asideOf(photo("p2.jpg")) + ".keep", "of an earlier time");
    select({1, 3}); // the same one twice
    expectQuestion(Answer::Yes);
    robot.choose(main().mnuEditRemoveFromAlbum);

    EXPECT_EQ(prompts.asked().front().title, "Remove photos from Album");
    for (const auto& [path, bytes] : before) {
        EXPECT_FALSE(test.isThere(path)) << path;
        EXPECT_EQ(test.bytes(asideOf(path)), bytes) << path;
    }
    EXPECT_FALSE(test.isThere(thumbnail("p2.jpg")));
    EXPECT_EQ(linesOf("  All Photos  "), (std::vector<std::string>{"p1.jpg", "p3.jpg", "p4.jpg", "p5.jpg"}));
    EXPECT_EQ(linesOf("Alps"), std::vector<std::string>{"p3.jpg"});
    EXPECT_EQ(linesOf("Rome"), std::vector<std::string>{"p1.jpg"});
    EXPECT_EQ(linesOf("Bath"), (std::vector<std::string>{"p4.jpg", "p5.jpg"}));
    EXPECT_EQ(cells(), std::vector<std::string>{"p3.jpg"});
    EXPECT_EQ(main().MousePointer(), DefaultPointer);
    EXPECT_EQ(desktop.Screen().MousePointer(), DefaultPointer);
}

TEST_F(RemovalTest, ANoOrAnEmptySelectionLosesNothing)
{
    openThreeGroups();
    select({1});
    auto before = test.allFiles();
    expectQuestion(Answer::No);
    robot.choose(main().mnuEditRemoveFromAlbum);
    EXPECT_EQ(test.allFiles(), before);

    select({});
    expectQuestion(Answer::Yes);
    robot.choose(main().mnuEditRemoveFromAlbum);
    EXPECT_EQ(test.allFiles(), before);
    EXPECT_TRUE(desktop.files().folderExists(test.paths().PhotoPath + "Removed"));
}

TEST_F(RemovalTest, AFlagBeyondAListThatCouldNotBeReadStopsNoStep)
{
    openThreeGroups();
    test.files().remove(test.paths().SlideGroupPath + "Bath.lst");
    pressRowNamed("Bath");
    robot.click(main().imgThumbnail(0)); // still the page of the group before
    ASSERT_EQ(selectedPositions(), std::vector<int>{1});
    expectQuestion(Answer::Yes);
    robot.choose(main().mnuEditRemoveFromAlbum);
    EXPECT_EQ(main().MousePointer(), DefaultPointer);
    EXPECT_TRUE(test.isThere(photo("p2.jpg")));
    EXPECT_EQ(linesOf("Alps"), (std::vector<std::string>{"p2.jpg", "p3.jpg", "p2.jpg"}));
}

TEST_F(RemovalTest, ALinkedPhotographLeavesTheLibraryAndStaysOnTheDisk)
{
    openThreeGroups();
    const std::string outside = test.folder().inside("linked.jpg");
    test.put(outside, plainBitmap(9, 9));
    test.put(info("linked.jpg"), "PhotoPath=" + outside + "\r\n");
    putGroup("Alps", {"linked.jpg", "p3.jpg"});
    pressRowNamed("Alps");
    select({1});
    expectQuestion(Answer::Yes);
    robot.choose(main().mnuEditRemoveFromAlbum);
    EXPECT_TRUE(test.isThere(outside));
    EXPECT_FALSE(test.isThere(info("linked.jpg")));
    EXPECT_TRUE(test.isThere(asideOf(info("linked.jpg"))));
    EXPECT_EQ(linesOf("Alps"), std::vector<std::string>{"p3.jpg"});
}

TEST_F(RemovalTest, AFullDiskStopsNoStep)
{
    openThreeGroups();
    select({1});
    desktop.files().setFaultHook([](FileOperation operation, std::string_view path) {
        if (operation == FileOperation::MakeFolder
            || (operation == FileOperation::Copy && path.find("\\Removed\\") != path.npos))
            throw Failure(FailureKind::DiskFull);
    });
    expectQuestion(Answer::Yes);
    robot.choose(main().mnuEditRemoveFromAlbum);
    EXPECT_FALSE(test.isThere(asideOf(photo("p2.jpg"))));
    EXPECT_FALSE(test.isThere(photo("p2.jpg"))) << "deleted whatever became of the copy";
    EXPECT_TRUE(test.isThere(info("p2.jpg"))) << "what a person wrote stays, and its lines with it";
    EXPECT_EQ(linesOf("Alps"), (std::vector<std::string>{"p2.jpg", "p3.jpg", "p2.jpg"}));
    EXPECT_EQ(main().MousePointer(), DefaultPointer);
}

} // namespace trovarium
