#include "browser/MainWindow.h"
#include "links/frmAddMidiWav.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Keys.h"
#include "runtime/Numbers.h"
#include "support/RecordedMedia.h"
#include "support/TemporaryFolder.h"

namespace trovarium {

// The link dialog over three groups, "Alps" of three photographs, the first and the last selected.
class LinkTest : public MainWindow {
protected:
    LinkTest()
    {
        folder.write("tone.wav", "a clip");
        folder.write("tune.mid", "a song");
        test.setSetting("Sound", "LastPath", folder.inside());
        openGroup(3);
        select({1, 3});
        media.told.clear();
        main().dialogs().showMidiLink = [this] { form().linkMidi(); };
        main().dialogs().showWavLink = [this] { form().linkWav(); };
    }

    void inDialog(Menu& entry, const std::function<void()>& story)
    {
        robot.whenShown("frmAddMidiWav", [&] {
            story();
            robot.click(form().lbExit);
        });
        robot.choose(entry);
        EXPECT_FALSE(form.isLoaded());
    }
    // Chooses the row, and adds the only file on show to it or clears it.
    void change(int row, Button& by)
    {
        form().List1.ListIndex = row;
        form().File1.setSelected(0, true);
        robot.click(by);
    }
    void run()
    {
        form().chkOptions(0).SetFocus();
        robot.key(form(), EnterKey);
        EXPECT_EQ(form().cmdImport.Caption() + form().lbProgress.Caption(), "&Make it soDone");
        EXPECT_EQ(form().shpProgress.Width() + importForm.MousePointer(), 0);
    }
    void expectErrors(const std::string& lines)
    {
        prompts.expectNotice("Error(s) occurred with the following files during import process.\r\r" + lines);
    }

    RecordedMedia media{desktop};
    TemporaryFolder folder;
    Form importForm{desktop, {.Name = "frmImport"}};
    FormSlot<frmAddMidiWav> form{desktop, [this] {
                                     return std::make_unique<frmAddMidiWav>(
                                         desktop, test.album(), main(), [this]() -> Form& { return importForm; });
                                 }};
    const std::string wavs = test.paths().AudioPath;
};

TEST_F(LinkTest, ASongIsLinkedToAGroupAndHeard)
{
    test.put(test.paths().SlideGroupPath + "Rome.mid", "beside its list");
    inDialog(main().mnuFileMidi, [&] {
        EXPECT_EQ(form().Caption() + "|" + form().lbListContents.Caption(),
            "Import-Link Midi Song to Group|Current Album Groups");
        desktop.DoEvents();
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
        run();
        EXPECT_EQ(form().List1.List(1), "[midi] : Alps");
    });
    EXPECT_EQ(test.bytes(test.paths().MidiPath + "Alps.mid"), "a song");
    ASSERT_EQ(media.told.size(), 3U);
    EXPECT_TRUE(media.told[0].starts_with("music open \"" + folder.inside("tune.mid") + "\" type sequencer alias "));
    // The mark looks beside the list, where the song is not.
    test.setSetting("Sound", "LastPath", "/media\\nobody\\gone");
    robot.whenShown("frmAddMidiWav", [&] {
        EXPECT_EQ(form().List1.List(1), "[    ] : Alps");
        test.failAt(FileOperation::List);
        form().File1.Refresh();
        robot.click(form().cmdAddFile);
        prompts.expectNotice("Error: Device I/O error");
        form().Drive1.chosen(0);
        robot.key(form(), EscapeKey);
    });
    robot.whenMenuOpens([&] { robot.choose(main().mnuGroupMidi); });
    pressRow(1, RightButton);
    EXPECT_EQ(logLines(),
        (Names{"An error has occurred in 'Form_Load'. Error = Device unavailable",
            "An error has occurred in 'AddSelectedFiles'. Error = Device I/O error"}));
    EXPECT_FALSE(form.isLoaded());
}

TEST_F(LinkTest, RowsAreDoneInOrderUntilOneIsClearedOrFails)
{
    const std::string exists = "[wav] : p1.jpg    Error=File already exists\r";
    const std::string full = "[wav] : p1.jpg    Error=Disk full\r";
    // What is done to the two rows ("+" added, "0" cleared, "." nothing), overwriting, whether the first file's disk
    // is full, the errors told, and the clips then: "o" old, "x" the new one, "-" none.
    const struct {
        std::string acts;
        bool overwrite, isFull;
        std::string errors, before, after;
    } cases[] = {{"++", false, false, "", "--", "xx"}, {"++", false, false, exists, "oo", "oo"},
        {"+.", true, false, "", "oo", "xo"}, {"++", true, false, "", "oo", "xx"}, {"0+", false, false, "", "o-", "--"},
        {"+0", false, false, "", "-o", "x-"}, {"++", false, true, full, "--", "-x"}, {"++", true, true, "", "oo", "-o"},
        {"..", true, false, "", "oo", "oo"}, {"++", true, false, "", "--", "xx"}};
    for (const auto& [acts, overwrite, isFull, errors, before, after] : cases) {
        const auto clip = [&](int row) { return wavs + (row == 0 ? "p1.jpg.wav" : "p3.jpg.wav"); };
        for (int row = 0; row < 2; ++row) {
            attempt([&] { desktop.files().remove(clip(row)); });
            if (before[row] == 'o')
                test.put(clip(row), "old");
        }
        inDialog(main().mnuEditWaveLink, [&] {
            EXPECT_EQ(form().List1.List(0), before[0] == 'o' ? "[wav] : p1.jpg" : "[   ] : p1.jpg");
            for (int row = 0; row < 2; ++row) {
                if (acts[row] != '.')
                    change(row, acts[row] == '+' ? form().cmdAddFile : form().cmdClear);
            }
            form().chkOptions(0).Value = overwrite;
            if (isFull)
                test.failAt(FileOperation::Copy, clip(0), FailureKind::DiskFull);
            if (!errors.empty())
                expectErrors(before == "oo" ? errors + "[wav] : p3.jpg    Error=File already exists\r" : errors);
            run();
            desktop.files().setFaultHook({});
        });
        std::string marks;
        for (int row = 0; row < 2; ++row)
            marks += !test.isThere(clip(row)) ? "-" : test.bytes(clip(row)) == "old" ? "o" : "x";
        EXPECT_EQ(marks, after) << acts << overwrite << isFull << before;
    }
}

TEST_F(LinkTest, ClipsAreHeardAndAPressEndsTheRunThatTheNextOneTakesUp)
{
    test.put(wavs + "p1.jpg.wav", "old");
    inDialog(main().mnuEditWaveLink, [&] {
        form().Set4Wav(); // once more fills them anew
        EXPECT_EQ(form().List1.ListCount() + form().List2.ListCount() + form().File1.ListCount(), 5);
        EXPECT_EQ(form().Caption() + form().lbListContents.Caption(), "Import-Link Wav Clip to PhotoSelected Photos");
        robot.doubleClick(form().File1, NoKeys, At{20, 8});
        robot.doubleClick(form().List1, NoKeys, At{20, 8});
        robot.click(form().cmdPlayStop(1));
        EXPECT_EQ(media.told, (Names{"sound " + folder.inside("tone.wav"), "sound " + wavs + "p1.jpg.wav", "sound 0"}));
        form().Dir1.Path = wavs;
        EXPECT_EQ(test.album().Settings().GetOWSetting("Trovarium", "Sound", "LastPath", "") + "\\", wavs);
        robot.click(form().chkOptions(0));
        change(0, form().cmdAddFile); // the clip's own source
        robot.key(form(), EscapeKey); // loses nothing that was chosen
        change(1, form().cmdAddFile);
        expectErrors("[wav] : p1.jpg    Error=File already exists\r");
        std::string told;
        int presses = 3;
        desktop.files().setFaultHook([&](FileOperation operation, std::string_view) {
            if (operation == FileOperation::Exists)
                told += form().lbProgress.Caption() + numberText(form().pctProgress.AccessibleValue()) + " ";
            for (; operation == FileOperation::Exists && presses > 0; --presses) {
                told += form().cmdImport.Caption() + " ";
                robot.click(form().cmdImport);
            }
        });
        run();
        expectErrors("[wav] : p1.jpg    Error=File already exists\r");
        run();
        EXPECT_EQ(
            told, "Import-Link Progress0 Cancel &Make it so Cancel Import-Link Progress0 Import-Link Progress50 ");
    });
    EXPECT_EQ(test.bytes(wavs + "p1.jpg.wav") + test.bytes(wavs + "p3.jpg.wav"), "oldold");
}

} // namespace trovarium
