// SPDX-License-Identifier: GPL-3.0-or-later

#include "MainWindow.h"

namespace trovarium {

struct RemovalTest : MainWindow {
    // "Alps" has the second photograph twice, and one that is a link out of the library.
    RemovalTest()
    {
        putPhotos(names(5));
        test.put(linked, plainBitmap(9, 9));
        test.put(info("linked.jpg"), "PhotoPath=" + linked + "\r\n");
        test.put(clip, "RIFF");
        putGroup("  All Photos  ", names(5));
        putGroup("Alps", whole);
        putGroup("Rome", {"p1.jpg", "p3.jpg"});
        open();
        pressRowNamed("Alps");
    }
    std::string photo(const std::string& name) { return test.paths().PhotoPath + name; }
    std::string info(const std::string& name) { return test.paths().InfoPath + name + ".info"; }
    static std::string asideOf(std::string path) { return path.insert(path.rfind('\\') + 1, "Removed\\"); }
    void remove(const Positions& positions)
    {
        select(positions);
        prompts.expectQuestion("Are you sure you want to remove selected photograph(s) from the program? The removed "
                               "photograph(s) will be place in the following folder -> "
                + toNativePath(photo("Removed")),
            Answer::Yes);
        robot.choose(main().mnuEditRemoveFromAlbum);
    }

    const std::string clip = test.paths().AudioPath + "p2.jpg.wav";
    const std::string linked = test.folder().inside("linked.jpg");
    const Names whole{"p2.jpg", "p3.jpg", "p2.jpg", "linked.jpg", "p5.jpg"};
};

TEST_F(RemovalTest, APhotographLeavesAllItsGroupsForAFolderBesideIt)
{
    test.files().makeFolder(test.paths().PhotoPath + "Removed");
    test.put(asideOf(photo("p2.jpg")), "of that name before");
    for (int i = 1; i <= 7; ++i)
        putGroup("h" + std::to_string(i), {});
    main().groupList().LoadGroupNames();
    main().groupList().ScrollGroupNames(2); // away from the group on show
    remove({1, 3, 4});
    EXPECT_EQ(test.bytes(asideOf(photo("p2 (2).jpg"))), "of that name before");
    EXPECT_TRUE(test.isThere(linked) && test.isThere(asideOf(info("linked.jpg")))) << "only what is linked stays";
    EXPECT_EQ(test.bytes(asideOf(clip)), "RIFF");
    for (const std::string& gone : {photo("p2.jpg"), test.paths().ThumbnailPath + "p2.jpg", info("p2.jpg"), clip})
        EXPECT_FALSE(test.isThere(gone)) << gone;
    EXPECT_EQ(linesOf("  All Photos  "), (Names{"p1.jpg", "p3.jpg", "p4.jpg", "p5.jpg"}));
    EXPECT_EQ(linesOf("Alps"), (Names{"p3.jpg", "p5.jpg"}));
    EXPECT_EQ(cells(), linesOf("Alps"));

    main().groupList().SelectedGroupName = "Rome";
    prompts.expectQuestion("Are you sure you want to delete this group -> Rome", Answer::Yes);
    main().groupCommands().DeleteAlbumGroup();
    remove({1});
    prompts.expectNotice("This can't be taken back: photographs were removed from the program.");
    for (const int shift : Positions{CtrlKey, CtrlKey, CtrlKey | ShiftKey, CtrlKey})
        robot.key(main(), ZKey, shift);
    EXPECT_EQ(linesOf("Rome"), Names{"p1.jpg"}) << "without the one that has gone since";
}

TEST_F(RemovalTest, WhatCantBeMovedStaysWholeWithItsPlaces)
{
    desktop.files().setFaultHook([](FileOperation operation, std::string_view path) {
        if (operation == FileOperation::Rename && (path.ends_with("p5.jpg") || path.ends_with("p3.jpg.info")))
            throw Failure(FailureKind::PermissionDenied);
    });
    remove({2, 5});
    for (const std::string& kept : {photo("p5.jpg"), info("p5.jpg"), test.paths().ThumbnailPath + "p5.jpg"})
        EXPECT_TRUE(test.isThere(kept)) << kept;
    EXPECT_TRUE(test.isThere(asideOf(photo("p3.jpg"))) && test.isThere(info("p3.jpg")));
    EXPECT_EQ(linesOf("Alps"), whole) << "a place stays with the information";
}

TEST_F(RemovalTest, NothingGoesThatNobodyChoseOrThatIsNoPhotograph)
{
    test.failAt(FileOperation::LineInput, "Rome.lst", FailureKind::DeviceIo, 2);
    pressRowNamed("Rome"); // breaks off behind its first line; the flags are still those of the group before
    remove({1});
    test.showGroup({"..\\p1.jpg"});
    remove({1});
    EXPECT_TRUE(test.isThere(photo("p1.jpg")));
}

} // namespace trovarium
