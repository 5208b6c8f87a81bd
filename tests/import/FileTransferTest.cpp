// SPDX-License-Identifier: GPL-3.0-or-later

#include "import/ImportWindow.h"

#include <string>

namespace trovarium {

struct FileTransferTest : ImportWindow {
    FileTransferTest()
    {
        openGroup(3);
        main().dialogs().importOffered = [this](const OfferedFiles& files) { form().showFilled(files); };
    }

    // URLs of sources, one to a line; what isn't a plain name stays as it is.
    std::string urls(const Names& names)
    {
        std::string list;
        for (const std::string& name : names)
            list += (name.find(':') != name.npos ? "" : "file://" + m_sources.native("")) + name + "\r\n";
        return list;
    }
    // Acts in the dialog once its list is filled, and closes it.
    void whenFilled(const std::function<void()>& act)
    {
        robot.when(
            [this] {
                return form.isLoaded() && form().MousePointer() == DefaultPointer && form().List1.ListCount() > 0;
            },
            [this, act] {
                act();
                form().unload();
            });
    }
    bool drop(const Names& names, At at = Frame) { return robot.drop(main(), at, urls(names)); }
    void key(int code) { robot.key(main(), code, CtrlKey); }

    static constexpr At Frame{400, 300};
    static constexpr At RomesRow{60, 160};
};

TEST_F(FileTransferTest, DroppedFilesAreImportedIntoTheGroupAndCopiedFromThereToAnotherProgram)
{
    putSources({"a.png", "In/b.jpg"}, plainBitmap(8, 6));
    pressRowNamed("  All Photos  ");
    whenFilled([&] {
        EXPECT_EQ(entries() + form().lbCount.Caption(), "\\|a.png \\In\\|b.jpg 2");
        EXPECT_FALSE(test.isThere(test.paths().InfoPath + "a.png.info")) << "before the press";
        robot.click(form().cmdImport);
    });
    EXPECT_TRUE(drop({"a.png", "In"}, RomesRow));
    EXPECT_EQ(linesOf("Rome"), (Names{"old.jpg", "a.png", "b.jpg"}));
    EXPECT_EQ(group().CurrentGroupName, "Rome");

    select({2, 3});
    key(CKey);
    EXPECT_EQ(robot.clipboard("text/uri-list"), urls({"a.png", "In/b.jpg"})) << "the files that the links lead to";
    std::string copied = "copy\n" + urls({"a.png", "In/b.jpg"});
    std::erase(copied, '\r');
    EXPECT_EQ(robot.clipboard("x-special/gnome-copied-files") + "\n", copied);
    view().SlideShowRunning = true;
    whenFilled([&] { EXPECT_EQ(entries(), "\\|a.png \\In\\|b.jpg "); });
    key(VKey);
    EXPECT_FALSE(view().SlideShowRunning);

    EXPECT_EQ(robot.clipboard("image/png"), "");
    robot.doubleClick(main().imgThumbnail(2));
    key(CKey);
    EXPECT_EQ(robot.clipboard("text/uri-list"), urls({"In/b.jpg"}));
    EXPECT_TRUE(robot.clipboard("image/png").starts_with("\x89PNG"));
}

TEST_F(FileTransferTest, WhatCanBeShownIsTakenAndTheRestToldInOneSentence)
{
    putSources({"a.jpg", "none", "50%.tif", "caf\xE9.jpg", "b\\c.jpg", "D/d.jpg", "D/E/e.bmp"}, plainBitmap(8, 6));
    putSources({"clip.MPG", "no.txt", "no.jpg", "F/f.png"});
    std::filesystem::create_symlink("a.jpg", m_sources.native("link.png"));
    std::filesystem::create_symlink("gone", m_sources.native("broken.jpg"));
    struct Case {
        Names offered;
        std::string listed, told;
    };
    const std::string host = "file://localhost";
    for (const auto& [offered, listed, told] : {Case{.offered = {"a.jpg"}, .listed = "\\|a.jpg ", .told = ""},
             {{"none", "clip.MPG"}, "\\|none \\|clip.MPG ", ""},
             {{"D/", "50%25.tif"}, "\\|50%.tif \\D\\|d.jpg \\D\\E\\|e.bmp ", ""}, {{"link.png"}, "\\|link.png ", ""},
             {{"caf%E9.jpg"}, "\\|caf\u00E9.jpg ", ""}, {{host + m_sources.native("a.jpg")}, "\\|a.jpg ", ""},
             {{"a.jpg", "no.txt"}, "\\|a.jpg ", "no.txt"}, {{"F"}, "", "F"}, {{"broken.jpg"}, "", "broken.jpg"},
             {{"file://far/a.jpg"}, "", "a.jpg"}, {{"b%5Cc.jpg"}, "", "b\\c.jpg"},
             {{"data:image/png;base64,iVBO/Rw0K"}, "", "data"},
             {{"gone.avi", "no.jpg", "a.jpg", "http://x.org/"}, "\\|a.jpg ", "3 of the 4 files and folders"}}) {
        if (!told.empty())
            prompts.expectNotice("Nothing to import was found in " + told + ".");
        std::string all;
        if (!listed.empty())
            whenFilled([&] { all = entries(); });
        EXPECT_TRUE(drop(offered));
        EXPECT_EQ(all, listed) << told;
        EXPECT_FALSE(form.isLoaded()) << "closes where nothing is left to do";
        prompts.verify();
    }
}

TEST_F(FileTransferTest, FilesAreRefusedVisiblyOrFailAndNothingIsLost)
{
    putSources({"a.jpg", "b.jpg", "c.jpg", "Empty/no.txt"}, plainBitmap(8, 6));
    const std::string before = urls({"a.jpg"});
    EXPECT_FALSE(robot.drop(main(), Frame, before, true)) << "the other program would delete its file";
    whenFilled([&] { EXPECT_FALSE(drop({"b.jpg"})) << "below a dialog"; });
    EXPECT_TRUE(drop({"a.jpg"}));
    robot.click(main().cmdEditPhotoInfo);
    const At year{main().pctWindow.Left() + (main().framInfo.Left() + main().txtYear.Left() / TwipsPerPixel) + 9,
        main().pctWindow.Top() + main().framInfo.Top() + main().txtYear.Top() / TwipsPerPixel + 9};
    robot.putOnClipboard(before);
    EXPECT_FALSE(drop({"a.jpg"}) || drop({"a.jpg"}, year)) << "during an edit";
    robot.click(main().cmdEditPhotoInfo);

    robot.whenMenuOpens([&] {
        EXPECT_FALSE(drop({"a.jpg"})) << "beside an open menu";
        robot.dismissMenu();
    });
    robot.click(main().Label2, RightButton);
    bool opens = true;
    desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
        if (operation == FileOperation::Open && path.ends_with("Rome.lst") && std::exchange(opens, false))
            robot.click(main().cmdEditPhotoInfo);
    });
    EXPECT_TRUE(drop({"a.jpg"}, RomesRow)) << "and an edit begins meanwhile";
    robot.click(main().cmdEditPhotoInfo);
    pressRowNamed("Alps");
    test.failAt(FileOperation::Open, "Rome.lst");
    prompts.expectNotice("The group \"Rome\" could not be opened. Nothing was imported.");
    EXPECT_TRUE(drop({"a.jpg"}, RomesRow));
    pressRowNamed("Alps");

    // The list is full before all that was offered is searched.
    desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
        for (int i = 0; operation == FileOperation::Picture && path.ends_with("a.jpg") && i < 32000; ++i) {
            form().List1.AddItem("x");
            form().List2.AddItem("\\");
        }
    });
    prompts.expectNotice("Notice: File count for located media has been exceeded. Some of the specified folders may "
                         "have not been completely searched.");
    whenFilled([] {});
    drop({"Empty/", "a.jpg", "b.jpg"});

    // Pressed again, the scan's button leaves a list that can be imported.
    desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
        if (operation == FileOperation::Picture && path.ends_with("b.jpg"))
            robot.click(form().cmdAutoScan);
    });
    whenFilled([&] { EXPECT_EQ(entries(), "\\|a.jpg \\|b.jpg "); });
    drop({"a.jpg", "b.jpg", "c.jpg"});
    test.failAt(FileOperation::Picture, "a.jpg");
    prompts.expectNotice("Nothing to import was found in a.jpg.");
    key(VKey);
    robot.putOnClipboard("");
    prompts.expectNotice("There are no files on the clipboard.");
    key(VKey);

    desktop.files().setFaultHook({});
    robot.putOnClipboard(before);
    select({});
    key(CKey);
    std::filesystem::remove(toNativePath(test.paths().PhotoPath + "p1.jpg"));
    test.put(test.paths().PhotoPath + "p2.jpg", "no picture");
    for (const auto& [positions, told] : {std::pair{Positions{1}, "The photograph"}, {{1, 2}, "2 of the 2 photographs"},
             {{2, 3}, "1 of the 2 photographs"}}) {
        EXPECT_EQ(robot.clipboard("text/uri-list"), before) << "what was there stays";
        prompts.expectNotice(std::string(told) + " could not be copied.");
        select(positions);
        key(CKey);
    }
    EXPECT_TRUE(robot.clipboard("text/uri-list").ends_with("/p3.jpg\r\n"));
}

} // namespace trovarium
