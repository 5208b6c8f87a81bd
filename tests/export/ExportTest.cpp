// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/MainWindow.h"
#include "export/frmExport.h"
#include "support/TemporaryFolder.h"

#include <filesystem>

namespace trovarium {

// The export dialog over a group of three photographs, the last two selected; p3 is a link.
struct ExportTest : MainWindow {
    ExportTest()
    {
        test.setSetting("Export", "LastPath", folder.inside());
        openGroup(3);
        desktop.files().rename(test.paths().PhotoPath + "p3.jpg", source);
        test.put(test.paths().InfoPath + "p3.jpg.info",
            "PhotoPath=" + source + "\r\nTitle=first\r\nTITLE=a,b\r\nplace=Z\xFCrich\r\nYEAR=\r\nPEOPLE\r\n");
        select({2, 3});
        main().dialogs().showExport = [this] { form().showModal(); };
    }

    // "o" over write, "p" photograph, "t" thumbnail, "i" information, "n" native and not CSV, "a" append.
    void exportWith(const std::string& boxes)
    {
        for (int i = 0; i < 4; ++i)
            (i < 3 ? form().chkExport(i) : form().chkOptions(0)).Value = boxes.find("ptio"[i]) != boxes.npos;
        form().optExportInfo(boxes.find('n') != boxes.npos ? 0 : 1).Value = true;
        form().optExportInfo(boxes.find('a') != boxes.npos ? 3 : 2).Value = true;
        run();
    }
    void run()
    {
        form().chkOptions(0).SetFocus();
        robot.key(form(), EnterKey);
        EXPECT_EQ(form().cmdExport.Caption() + form().lbProgress.Caption(), "ExportDone");
    }
    void putOldCopies()
    {
        for (const std::string& name : copies)
            folder.write(name, "old");
    }
    // Of each of `copies`: "-" absent, "o" old, "x" exported.
    std::string marks() const
    {
        std::string all;
        for (const std::string& name : copies)
            all += !test.isThere(folder.inside(name)) ? "-" : folder.read(name) == "old" ? "o" : "x";
        return all;
    }

    TemporaryFolder folder;
    FormHolder<frmExport> form = held<frmExport>();
    const std::vector<std::string> copies{
        "p2.jpg", "tn_p2.jpg", "p2.jpg.info", "p3.jpg", "tn_p3.jpg", "p3.jpg.info", "Trovarium_Info.csv"};
    const std::string source = test.folder().inside("p3.jpg");
};

TEST_F(ExportTest, TheSelectionGoesOutAsItIsInARunThatNothingCancels)
{
    const std::string records = "p2.jpg.info,,,,,,p2.jpg,,,\r\np3.jpg.info,,,,,Z\xFCrich,a,b,,,\r\n";
    group().GroupSelect(0) = 1; // lists an empty name, of which there is nothing to take
    putOldCopies();
    std::string told;
    desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
        if (operation != FileOperation::Delete || path != folder.inside("tn_p3.jpg"))
            return;
        for (int press = 0; press < 3; ++press) {
            told += form().cmdExport.Caption() + form().lbProgress.Caption() + " ";
            robot.click(form().cmdExport);
        }
        told += marks() + std::to_string(form().pctProgress.AccessibleValue());
        form().chkExport(0).Value = 0; // from here on no photograph is taken
    });
    inDialog(main().mnuFileExport, form, [&] {
        EXPECT_EQ(setting("Import", "LastPath"), "none") << "nobody has chosen it";
        EXPECT_TRUE(form().Dir1.hasFocus());
        run();
        EXPECT_EQ(told, "CancelExporting ImportExporting CancelExporting x--ooo-66");
        EXPECT_EQ(marks(), "x--o---");
        EXPECT_EQ(folder.read("p2.jpg"), test.bytes(test.paths().PhotoPath + "p2.jpg"));
        exportWith("i");
        exportWith("ia");
        EXPECT_TRUE(folder.read("Trovarium_Info.csv").ends_with(",ImageHeight\r\n" + records + records));
        form().List1.RemoveItem(0);
        exportWith("tin");
        EXPECT_EQ(folder.read("tn_p3.jpg"), test.bytes(test.paths().ThumbnailPath + "p3.jpg"));
        EXPECT_EQ(folder.read("p3.jpg.info"), test.bytes(test.paths().InfoPath + "p3.jpg.info"));
        for (int i = 0; i < 32767; ++i)
            form().List1.AddItem("none");
        prompts.expectNotice("Error: 2 more: No more than 32767 files at a time");
        exportWith("a");
        putOldCopies();
        form().chkExport(0).Value = 1;
        desktop.files().setFaultHook([&](FileOperation operation, std::string_view) {
            if (operation == FileOperation::Copy)
                robot.close(form());
            EXPECT_TRUE(form.isLoaded());
        });
        robot.key(form(), EnterKey);
        EXPECT_EQ(form.isLoaded() ? "" : marks(), "xoooooo") << "it ends behind the photograph in hand, and closes";
    });
}

TEST_F(ExportTest, BoxesTellWhatIsTakenWhatBecomesOfOldCopiesAndWhatAFailureEnds)
{
    // Boxes ("+": there are old copies), where the disk is full, what is there then, what is told.
    const std::string full = "Disk full", none = "File not found";
    const struct {
        std::string boxes, place, expected, error;
    } cases[] = {{.boxes = "on+", .place = "", .expected = "------o", .error = ""}, {"ona+", "", "--o--oo", ""},
        {"tin+", "", "oxxoxxo", ""}, {"tia+", "", "oxooxox", ""}, {"op+", "", "x--x---", ""},
        {"opn+", "p2.jpg", "o--x--o", ""}, {"otn+", "tn_p2.jpg", "-o-oooo", full},
        {"otin+", "p2.jpg.info", "-xooooo", full}, {"ptn", "tn_p2.jpg", "x------", full},
        {"tin", "tn_p2.jpg", "--x-xx-", full}, {"t", "", "-x--x--", none}, {"ti", "", "-x--x-x", ""},
        {"pi", "Trovarium_Info.csv", "x--x---", ""}, {"pia", "p2.jpg.info", "---x--x", ""}};
    inDialog(main().mnuFileExport, form, [&] {
        for (const auto& [boxes, place, expected, error] : cases) {
            if (boxes.find('+') != boxes.npos)
                putOldCopies();
            if (boxes.starts_with("op")) // as a disc leaves it, which counts for all but root
                std::filesystem::permissions(folder.native("p3.jpg"), std::filesystem::perms::owner_read);
            desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
                const bool writes = operation == FileOperation::Copy || operation == FileOperation::Open;
                if (writes && path.ends_with("\\" + place))
                    throw Failure(FailureKind::DiskFull);
            });
            if (!error.empty())
                prompts.expectNotice("Error: " + error + "\rDisk may be full or write protected.");
            exportWith(boxes);
            EXPECT_EQ(marks(), expected) << boxes << " " << place;
            for (const std::string& name : copies)
                std::filesystem::remove(folder.native(name));
        }
    });
}

TEST_F(ExportTest, TheLibrarysOwnFoldersLoseNothing)
{
    const AlbumPaths& paths = test.paths();
    desktop.files().remove(paths.InfoPath + "p2.jpg.info");
    test.put(paths.PhotoPath + "tn_p2.jpg", "a photograph");
    test.put(paths.InfoPath + "tn_p2.jpg.info", "");
    test.put(paths.ThumbnailPath + "tn_p2.jpg", "");
    const auto before = test.allFiles();
    inDialog(main().mnuFileExport, form, [&] {
        form().List1.Clear();
        form().List1.AddItem("tn_p2.jpg");
        form().List1.AddItem("p2.jpg");
        form().List1.AddItem("..\\..\\p3.jpg"); // as somebody else's list may have it
        for (const std::string& path : {test.folder().inside(), paths.ThumbnailPath, paths.InfoPath, paths.PhotoPath}) {
            form().Dir1.Path = path;
            EXPECT_EQ(setting("Import", "LastPath") + (path.ends_with('\\') ? "\\" : ""), path);
            exportWith("on");
            exportWith("op");
        }
        for (const std::string& path : {paths.PhotoPath, folder.inside()}) {
            form().Dir1.Path = path;
            prompts.expectNotice("Error: File already exists\rDisk may be full or write protected.");
            exportWith("opt");
            exportWith("op");
        }
        EXPECT_EQ(test.bytes(folder.inside("tn_p2.jpg")), "a photograph")
            << "of this run, and no thumbnail that went out before";
        test.failAt(FileOperation::List);
        prompts.expectNotice("Error: Device I/O error");
        form().Drive1.chosen(0);
        robot.click(form().lbExit);
        EXPECT_FALSE(form.isLoaded());
    });
    for (const auto& [path, bytes] : before)
        EXPECT_TRUE(path.starts_with("settings") || test.bytes(test.folder().inside(path)) == bytes) << path;
}

} // namespace trovarium
