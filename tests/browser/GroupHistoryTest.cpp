// SPDX-License-Identifier: GPL-3.0-or-later

#include "MainWindow.h"

#include <cstdlib>
#include <random>
#include <tuple>

namespace trovarium {

struct GroupHistoryTest : MainWindow {
    using File = std::tuple<std::string, int, std::string>; // where a link leads, rights, bytes
    using Files = std::map<std::string, File>;

    // Lists and music, byte for byte, by their paths.
    Files groupFiles()
    {
        Files files;
        for (const std::string& folder : {test.paths().SlideGroupPath, test.paths().MidiPath})
            for (const auto& entry : std::filesystem::directory_iterator(toNativePath(folder)))
                files[entry.path()] = {entry.is_symlink() ? std::filesystem::read_symlink(entry).string() : "",
                    int(entry.status().permissions()), test.bytes(entry.path().string())};
        return files;
    }
    // By another program.
    void putBack(const Files& files)
    {
        for (const auto& [path, file] : groupFiles())
            std::filesystem::remove(path);
        for (const auto& [path, file] : files) {
            const auto& [link, rights, bytes] = file;
            if (!link.empty())
                std::filesystem::create_symlink(link, path);
            test.put(path, bytes);
            std::filesystem::permissions(path, std::filesystem::perms(rights));
        }
        main().groupList().reload();
        main().groupList().showGroup("  All Photos  ", 1, {});
    }
    std::string pathOf(const std::string& group) { return test.paths().SlideGroupPath + group + ".lst"; }
    void takeBack() { robot.key(main(), ZKey, CtrlKey); }
    void doAgain() { robot.key(main(), ZKey, CtrlKey | ShiftKey); }
    // Group, page and what is selected, when the window agrees with the list.
    std::string shown()
    {
        const Names lines = linesOf(group().CurrentGroupName);
        const auto first = std::min((main().pages().CurrentPage - std::size_t{1}) * 16, lines.size());
        const auto end = std::min<std::size_t>(first + 16, lines.size());
        EXPECT_EQ(cells(), Names(lines.begin() + first, lines.begin() + end));
        EXPECT_EQ(group().GroupList.upperBound(), static_cast<int>(lines.size()));
        EXPECT_EQ(group().SelectedCount, static_cast<int>(selectedPositions().size()));
        EXPECT_NE(main().lbCount.Caption().find("[" + group().CurrentGroupName + "]"), std::string::npos);
        for (const int row : brightRows())
            EXPECT_EQ(rows().at(row), group().CurrentGroupName);
        std::string text = group().CurrentGroupName + " " + std::to_string(main().pages().CurrentPage) + ":";
        for (const int position : selectedPositions())
            text += " " + group().GroupList(position);
        return text;
    }
};

// A random walk of changes, with steps back and again in between; then all the way back, and all the way to the last
// state. TROVARIUM_WALKS says how many.
struct RandomWalk : GroupHistoryTest {
    RandomWalk()
    {
        putPhotos(names(9));
        putPhotos({"\u00E9t\u00E9.jpg"});
        putGroup("  All Photos  ", names(9));
        test.put(pathOf("Alps"), "p1.jpg\np2.jpg\np1.jpg\r\n\r\n\xE9t\xE9.jpg\r\np3.jpg");
        test.put(test.paths().SlideGroupPath + "Rome.LST", "p4.jpg\rp5.jpg\rp4.jpg\r");
        std::filesystem::permissions(toNativePath(pathOf("Alps")), std::filesystem::perms(0600));
        test.put(test.paths().MidiPath + "Bath.mid", "of no group");
        for (const std::string& link : {pathOf("Far"), test.paths().MidiPath + "Alps.mid", pathOf("Odd")}) {
            const std::string file = test.folder().native(link.ends_with("Far.lst") ? "far.lst" : "tune");
            test.put(file, "p6.jpg\r\np7.jpg\r\n");
            std::filesystem::create_symlink(file, toNativePath(link));
        }
        open();
    }
    unsigned chance(std::size_t end) { return static_cast<unsigned>(m_random() % end); }
    void act()
    {
        GroupCommands& commands = main().groupCommands();
        const std::string fresh[] = {"Bath", "n", "\u00C9t\u00E9", "xyz"};
        prompts.agreeWith(fresh[chance(4)]);
        const int last = group().GroupList.upperBound();
        Positions some;
        for (int i = 1; i <= last; ++i)
            if (chance(3) == 0)
                some.push_back(i);
        select(some);
        const std::string to = main().lstSlideGroups.List(int(chance(main().lstSlideGroups.ListCount())));
        const std::function<void()> acts[] = {[&] { main().groupList().showGroup(to, 1, {}); },
            [&] { commands.AddToGroup(to + ".lst"); }, [&] { commands.MoveToGroup(to + ".lst"); },
            [&] { commands.mnuThumbRemove_Click(); }, [&] { commands.CreateAlbumGroup(std::int16_t(chance(3))); },
            [&] { commands.RenameAlbumGroup(); },
            [&] { main().thumbnailDrag().moveSelected(int(chance(2 * last + 1)) - last); },
            [&] {
                main().groupList().SelectedGroupName = to == "  All Photos  " ? "none" : to;
                commands.DeleteAlbumGroup();
            },
            [&] {
                commands.history().recordFinal("it is final");
                states.resize(at + 1);
                beRefused();
            }};
        acts[chance(9)]();
        if (Files now = groupFiles(); now != states.at(at)) {
            states.resize(++at);
            states.push_back(std::move(now));
        }
    }
    void step(int by)
    {
        by < 0 ? takeBack() : doAgain();
        const int before = std::exchange(at, std::clamp<int>(at + by, 0, static_cast<int>(states.size()) - 1));
        ASSERT_EQ(groupFiles(), states.at(at));
        if (at != before)
            shown();
    }
    void beRefused()
    {
        const Files before = groupFiles();
        const std::size_t asked = prompts.asked().size();
        takeBack();
        EXPECT_EQ(prompts.asked().size(), asked + 1);
        EXPECT_EQ(groupFiles(), before);
    }
    // Another program adds a line to a list that the last step changed: the step is refused, and gone.
    void stepBackPastAnother()
    {
        const auto& [path, file] = *std::next(states.at(at).begin(), chance(states.at(at).size()));
        if (at == 0 || at + 1 < static_cast<int>(states.size()) || path.ends_with("mid")
            || std::get<0>(file).ends_with("tune"))
            return;
        const auto before = states.at(at - 1).find(path);
        if (before != states.at(at - 1).end() && before->second == file)
            return;
        test.put(path, test.bytes(path) + "other");
        beRefused();
        states.pop_back();
        putBack(states.at(--at));
    }

    std::vector<Files> states;
    int at = 0;
    std::mt19937 m_random;
};

TEST_F(RandomWalk, GoesBackToTheFirstStateAndForwardToTheLast)
{
    states.push_back(groupFiles());
    const char* const walks = std::getenv("TROVARIUM_WALKS");
    const int end = walks == nullptr ? 30 : std::atoi(walks);
    for (int walk = 0; walk < end && !HasFailure(); ++walk) {
        SCOPED_TRACE(walk);
        m_random.seed(walk);
        for (int i = 0; i < 16 && !HasFailure(); ++i) {
            chance(3) == 0 ? step(chance(3) == 0 ? 1 : -1) : act();
            stepBackPastAnother();
        }
        for (const int by : {-1, 1, -1})
            for (std::size_t i = 0; i < states.size() && !HasFailure(); ++i)
                step(by);
    }
}

TEST_F(GroupHistoryTest, WhatWasTakenBackIsOnShow)
{
    openGroup(20, 8);
    robot.key(main(), EndKey);
    select({18, 20});
    prompts.expectQuestion("Are you sure you want to remove the photograph(s) from this group?", Answer::Yes);
    robot.key(main(), DeleteKey);
    select({17});
    robot.key(main(), LeftKey, ShiftKey | CtrlKey);
    pressRowNamed("h1");
    main().groupList().ScrollGroupNames(3); // Alps is on no row
    const Files last = groupFiles();
    for (bool* const busy : {&view().SlideShowRunning, &main().thumbnailDrag().ThumbnailDragging}) {
        *busy = true;
        takeBack();
        *busy = false;
    }
    robot.click(main().cmdEditPhotoInfo);
    takeBack(); // of the typing
    robot.click(main().cmdEditPhotoInfo);
    EXPECT_EQ(groupFiles(), last);
    robot.atNextTurn([this] { takeBack(); }); // the key is held
    takeBack();
    EXPECT_EQ(shown(), "Alps 2: p17.jpg");
    EXPECT_EQ(brightRows(), Positions{0}) << "the list of groups scrolls to it";
    EXPECT_EQ(main().lbCount.Caption(), "Group [Alps] Viewing 17 of 18");
    takeBack();
    EXPECT_EQ(shown(), "Alps 2: p18.jpg p20.jpg");
    robot.doubleClick(main().imgThumbnail(0));
    doAgain();
    EXPECT_EQ(shown(), "Alps 2:");
    doAgain();
    EXPECT_EQ(shown(), "Alps 1: p17.jpg");
    robot.press(main().imgThumbnail(0));
    doAgain(); // nothing is left
    robot.moveTo(main().imgThumbnail(2));
    robot.release();
    EXPECT_EQ(groupFiles(), last);
}

TEST_F(GroupHistoryTest, TheListOfGroupsStandsAtItsFirstWhenAllFit)
{
    openGroup(1, 5);
    prompts.expectInput("Enter name for new group.", "last");
    robot.choose(main().mnuFileCreate);
    main().groupList().ScrollGroupNames(1);
    takeBack();
    EXPECT_EQ(rows().size(), 8U);
    EXPECT_EQ(rows().at(main().groupList().CurrentGroupRow), "Alps");
}

TEST_F(GroupHistoryTest, ALinkInThePlaceOfAllPhotosIsNotFollowed)
{
    openGroup(2);
    select({1});
    main().groupCommands().AddToGroup("  All Photos  .lst");
    const Files last = groupFiles();
    const std::string list = toNativePath(pathOf("  All Photos  "));
    const std::string other = test.folder().native("other.lst");
    std::filesystem::rename(list, other);
    std::filesystem::create_symlink(other, list);
    takeBack();
    EXPECT_EQ(test.bytes(other), std::get<2>(last.at(list)));
    EXPECT_EQ(linesOf("  All Photos  "), names(2));
}

TEST_F(GroupHistoryTest, WhatCantBeTakenBackIsToldOnceAndWhatCouldBeLaterStays)
{
    openGroup(3);
    putPhotos({"old.jpg"});
    const std::string info = test.paths().InfoPath + "p2.jpg.info";
    const auto moveTo = [this] {
        select({2});
        main().groupCommands().MoveToGroup("Rome.lst");
    };
    const auto rename = [this] {
        prompts.expectInput("Rename \"Alps\" group to ...", "Andes");
        robot.key(main(), F2Key);
    };
    const auto remove = [this] {
        prompts.expectQuestion("Are you sure you want to delete this group -> Alps", Answer::Yes);
        robot.choose(main().mnuFileRemove);
    };
    const struct {
        std::function<void()> act, meanwhile;
        std::string why;
        bool stays = false;
    } rows[] = {
        {.act = moveTo, .meanwhile = [&] { putGroup("Rome", {}); }, .why = "the group \"Rome\" was changed since"},
        {[&] {
             test.failAt(FileOperation::Open, "Rome.lst");
             moveTo();
         },
            [] {}, "the groups that it changed could not be recorded"},
        {moveTo, [&] { std::filesystem::remove(toNativePath(info)); }, "\"p2.jpg\" is no longer in the album"},
        {moveTo, [&] { test.failAt(FileOperation::Close, "Rome.lst", FailureKind::DiskFull); }, "Disk full", true},
        {rename, [&] { putGroup("ALPS", {}); }, "there is a group \"Alps\" by now", true},
        {remove, [&] { putGroup("Alps", names(3)); }, "there is a group \"Alps\" by now", true},
        {[&] {
             putGroup("ALPS", {});
             remove();
         },
            [] {}, "there is a group \"Alps\" by now", true},
    };
    for (const auto& [act, meanwhile, why, stays] : rows) {
        act();
        meanwhile();
        const Files before = groupFiles();
        for (int time = 0; time < (stays ? 2 : 1); ++time)
            prompts.expectNotice("This can't be taken back: " + why + ".");
        takeBack();
        takeBack();
        prompts.verify();
        EXPECT_EQ(groupFiles(), before) << why;
        desktop.files().setFaultHook({});
        for (const char* group : {"ALPS", "Andes"})
            std::filesystem::remove(toNativePath(pathOf(group)));
        putPhotos({"p2.jpg"});
        putGroup("Alps", names(3));
        putGroup("Rome", {"old.jpg"});
        main().groupList().LoadGroupNames();
        main().groupList().showGroup("Alps", 1, {});
    }
}

} // namespace trovarium
