// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/MainWindow.h"
#include "links/frmAddMidiWav.h"
#include "runtime/Numbers.h"
#include "support/RecordedMedia.h"
#include "support/TemporaryFolder.h"

namespace trovarium {

// The link dialog over three groups, "Alps" of three photographs, the first and the last selected.
struct LinkTest : MainWindow {
    LinkTest()
    {
        folder.write("tone.wav", "x");
        folder.write("tune.mid", "a song");
        test.setSetting("Sound", "LastPath", folder.inside());
        openGroup(3);
        select({1, 3});
        media.told.clear();
        main().dialogs().showMidiLink = [this] { form().LinkMidi2Group(); };
        main().dialogs().showWavLink = [this] { form().LinkWav2Photos(); };
    }

    // Chooses the row, and adds a file on show to it or clears it.
    void change(int row, Button& by, int file = 0)
    {
        form().List1.ListIndex = row;
        for (int i = 0; i < form().File1.ListCount(); ++i)
            form().File1.setSelected(i, i == file);
        robot.click(by);
    }
    void run()
    {
        form().chkOptions(0).SetFocus();
        robot.key(form(), EnterKey);
        EXPECT_EQ(form().cmdImport.Caption() + form().lbProgress.Caption(), "&Make it soDone");
    }
    // One letter each, "-" for none.
    std::string clips(const Names& owners)
    {
        std::string all;
        for (const std::string& name : owners)
            all += test.isThere(wavs + name + ".wav") ? test.bytes(wavs + name + ".wav") : "-";
        return all;
    }
    void expectErrors(const std::string& lines)
    {
        prompts.expectNotice("Error(s) occurred with the following files during import process.\r\r" + lines);
    }

    RecordedMedia media{desktop};
    TemporaryFolder folder;
    Form importForm{desktop, {.Name = "frmImport"}};
    std::function<Form&()> import = [this]() -> Form& { return importForm; };
    FormHolder<frmAddMidiWav> form = held<frmAddMidiWav>(main(), import);
    const std::string wavs = test.paths().AudioPath;
};

TEST_F(LinkTest, ASongIsLinkedToAGroupAndHeard)
{
    test.put(test.paths().SlideGroupPath + "Rome.mid", "beside its list");
    inDialog(main().mnuFileMidi, form, [&] {
        EXPECT_EQ(form().Caption(), "Import-Link Midi Song to Group");
        EXPECT_TRUE(form().Dir1.hasFocus() && form().File1.ListCount() == 1 && form().List1.ListCount() == 3);
        EXPECT_EQ(form().List1.List(0) + form().List1.List(2), "[    ] :   All Photos  [midi] : Rome");
        prompts.expectNotice("Must select a source file.");
        robot.click(form().cmdAddFile);
        form().File1.setSelected(0, true);
        prompts.expectNotice("Must select the destination.");
        robot.click(form().cmdAddFile);
        change(1, form().cmdAddFile);
        robot.click(form().cmdPlayStop(2));
        robot.click(form().cmdPlayStop(3));
        robot.key(form(), EscapeKey); // loses nothing that was chosen
        run();
        EXPECT_EQ(form().List1.List(1), "[midi] : Alps");
        robot.click(form().lbExit);
        EXPECT_FALSE(form.isLoaded());
    });
    EXPECT_EQ(test.bytes(test.paths().MidiPath + "Alps.mid"), "a song");
    ASSERT_EQ(media.told.size(), 3U);
    EXPECT_TRUE(media.told[0].starts_with("music open \"" + folder.inside("tune.mid") + "\" type sequencer alias "));
}

TEST_F(LinkTest, RowsAreDoneInOrderUntilOneIsClearedOrFails)
{
    const std::string exists = "[wav] : p1.jpg    Error=File already exists\r";
    // What is done to the two rows ("+" added, "0" cleared, "." nothing), overwriting, whether the first file's disk
    // is full, the errors told, the clips before, "o" old, then, "x" the new one, and in Removed.
    const struct {
        std::string acts;
        bool overwrite, isFull;
        std::string errors, before, after;
    } cases[] = {{"++", false, false, exists + "[wav] : p3.jpg    Error=File already exists\r", "oo", "oo--"},
        {"+.", true, false, "", "oo", "xoo-"}, {"++", true, false, "", "oo", "xxoo"},
        {"0+", false, false, "", "o-", "--o-"}, {"+0", false, false, "", "-o", "x--o"},
        {"++", false, true, "[wav] : p1.jpg    Error=Disk full\r", "--", "-x--"}, {"++", true, true, "", "oo", "-oo-"},
        {"0.", false, true, "[   ]" + exists.substr(5), "o-", "o---"}};
    for (const auto& [acts, overwrite, isFull, errors, before, after] : cases) {
        SCOPED_TRACE(acts + before + after);
        std::filesystem::remove_all(toNativePath(wavs));
        std::filesystem::create_directory(toNativePath(wavs));
        for (const int row : {0, 1})
            if (before[row] == 'o')
                test.put(wavs + (row == 0 ? "p1" : "p3") + ".jpg.wav", "o");
        inDialog(main().mnuEditWaveLink, form, [&] {
            EXPECT_EQ(form().List1.List(0), before[0] == 'o' ? "[wav] : p1.jpg" : "[   ] : p1.jpg");
            for (const int row : {0, 1})
                if (acts[row] != '.')
                    change(row, acts[row] == '+' ? form().cmdAddFile : form().cmdClear);
            form().chkOptions(0).Value = overwrite;
            if (isFull)
                test.failAt(
                    acts[0] == '0' ? FileOperation::Rename : FileOperation::Copy, "p1.jpg.wav", FailureKind::DiskFull);
            if (!errors.empty())
                expectErrors(errors);
            run();
            desktop.files().setFaultHook({});
            robot.key(form(), EscapeKey);
            EXPECT_EQ(form.isLoaded(), !errors.empty() || isFull || acts == "0+");
        });
        EXPECT_EQ(clips({"p1.jpg", "p3.jpg", "Removed\\p1.jpg", "Removed\\p3.jpg"}), after);
    }
}

TEST_F(LinkTest, ClipsAreHeardAndExchangedAndAPressEndsTheRunThatTheNextOneTakesUp)
{
    group().GroupList.append("..\\Photos\\p2.jpg"); // names no photograph, so it has no row
    group().GroupSelect.append(1);
    test.put(wavs + "p1.jpg.wav", "o");
    inDialog(main().mnuEditWaveLink, form, [&] {
        form().Set4Wav(); // once more fills them anew
        EXPECT_EQ(form().List1.ListCount() + form().List2.ListCount() + form().File1.ListCount(), 5);
        EXPECT_EQ(form().Caption(), "Import-Link Wav Clip to Photo");
        robot.doubleClick(form().File1, NoKeys, At{20, 8});
        robot.doubleClick(form().List1, NoKeys, At{20, 8});
        robot.click(form().cmdPlayStop(1));
        EXPECT_EQ(media.told, (Names{"sound " + folder.inside("tone.wav"), "sound " + wavs + "p1.jpg.wav", "sound 0"}));
        form().Dir1.Path = wavs;
        EXPECT_EQ(setting("Sound", "LastPath") + "\\", wavs);
        robot.click(form().chkOptions(0));
        change(0, form().cmdAddFile); // the clip's own source
        change(1, form().cmdAddFile);
        expectErrors("[wav] : p1.jpg    Error=File already exists\r");
        std::string told;
        desktop.files().setFaultHook([&](FileOperation operation, std::string_view) {
            if (operation != FileOperation::Exists)
                return;
            for (int presses = told.empty() ? 3 : 0; presses > 0; --presses) {
                robot.close(form());
                told += form().cmdImport.Caption() + " ";
                robot.click(form().cmdImport);
            }
            told += form().lbProgress.Caption() + numberText(form().pctProgress.AccessibleValue()) + " ";
        });
        run();
        EXPECT_EQ(told, "Cancel &Make it so Cancel Import-Link Progress0 ");
        expectErrors("[wav] : p1.jpg    Error=File already exists\r");
        run();
        desktop.files().setFaultHook({});
        EXPECT_EQ(clips({"p1.jpg", "p3.jpg"}), "oo");
        test.put(wavs + "p3.jpg.wav", "3");
        form().File1.Refresh();
        robot.click(form().File1, LeftButton, NoKeys, At{20, 24});
        robot.click(form().File1, LeftButton, CtrlKey, At{20, 8});
        EXPECT_TRUE(form().File1.Selected(0) && !form().File1.Selected(1)) << "one at a time";
        change(0, form().cmdAddFile, 1);
        change(1, form().cmdAddFile);
        run();
        EXPECT_EQ(clips({"p1.jpg", "p3.jpg"}), "3o");
        form().Dir1.Path = wavs + "Removed"; // where the second source gets a number when the first row comes there
        change(1, form().cmdAddFile);
        run();
    });
    EXPECT_EQ(clips({"p1.jpg", "p3.jpg", "Removed\\p1.jpg", "Removed\\p1.jpg (2)", "Removed\\p3.jpg"}), "oo3oo");
}

} // namespace trovarium
