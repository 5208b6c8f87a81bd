#include "browser/MainWindow.h"
#include "links/frmAddMidiWav.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Keys.h"
#include "support/RecordedMedia.h"
#include "support/TemporaryFolder.h"

namespace trovarium {

// The link dialog over the groups "  All Photos  ", "Alps" (three photographs, the first and the last selected) and
// "Rome", with a clip and a song in a folder of their own.
class LinkTest : public MainWindow {
protected:
    LinkTest()
    {
        folder.write("tone.wav", "a clip");
        folder.write("tune.mid", "a song");
        test.setSetting("Sound", "LastPath", folder.inside());
        openGroup(3);
        select({1, 3});
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
        robot.click(form().cmdImport);
        EXPECT_EQ(form().cmdImport.Caption() + form().lbProgress.Caption(), "&Make it soDone");
        EXPECT_EQ(form().shpProgress.Width() + importForm.MousePointer(), 0);
    }
    void expectErrors(const std::string& lines)
    {
        prompts.expectNotice("Error(s) occurred with the following files during import process.\r\r" + lines);
    }

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
    RecordedMedia media(desktop);
    test.put(test.paths().SlideGroupPath + "Rome.mid", "beside its list");
    inDialog(main().mnuFileMidi, [&] {
        EXPECT_EQ(form().Caption() + "|" + form().lbListContents.Caption(),
            "Import-Link Midi Song to Group|Current Album Groups");
        EXPECT_EQ(form().File1.ListCount(), 1);
        EXPECT_EQ(form().List1.List(0) + form().List1.List(2), "[    ] :   All Photos  [midi] : Rome");
        EXPECT_EQ(form().List1.ListCount(), 3);
        prompts.expectNotice("Must select a source file.");
        robot.click(form().cmdAddFile);
        form().File1.setSelected(0, true);
        prompts.expectNotice("Must select the destination.");
        robot.click(form().cmdAddFile);
        change(1, form().cmdAddFile);
        robot.key(form(), EscapeKey); // loses nothing that was chosen
        robot.click(form().cmdPlayStop(2));
        robot.click(form().cmdPlayStop(3));
        run();
        EXPECT_EQ(form().List1.List(1), "[midi] : Alps");
    });
    EXPECT_EQ(test.bytes(test.paths().MidiPath + "Alps.mid"), "a song");
    ASSERT_EQ(media.told.size(), 3U);
    EXPECT_TRUE(media.told[0].starts_with("music open \"" + folder.inside("tune.mid") + "\" type sequencer alias "));
    // The mark looks beside the list, where the song is not.
    robot.whenShown("frmAddMidiWav", [&] {
        EXPECT_EQ(form().List1.List(1), "[    ] : Alps");
        robot.key(form(), EscapeKey);
    });
    robot.whenMenuOpens([&] { robot.choose(main().mnuGroupMidi); });
    pressRow(1, RightButton);
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
        {"..", true, false, "", "oo", "oo"}};
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
            desktop.files().setFaultHook([&, fails = isFull](FileOperation operation, std::string_view path) {
                if (fails && operation == FileOperation::Copy && path == clip(0))
                    throw Failure(FailureKind::DiskFull);
            });
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

TEST_F(LinkTest, ASecondPressEndsTheRunAndASourceThatIsItsOwnDestinationStays)
{
    test.put(wavs + "p1.jpg.wav", "old");
    inDialog(main().mnuEditWaveLink, [&] {
        form().Dir1.Path = wavs;
        EXPECT_EQ(test.album().Settings().GetOWSetting("Trovarium", "Sound", "LastPath", "") + "\\", wavs);
        form().chkOptions(0).Value = true;
        change(0, form().cmdAddFile);
        change(1, form().cmdAddFile);
        expectErrors("[wav] : p1.jpg    Error=File already exists\r");
        desktop.files().setFaultHook([&](FileOperation operation, std::string_view) {
            if (operation == FileOperation::Exists)
                robot.click(form().cmdImport);
        });
        robot.click(form().cmdImport);
        desktop.files().setFaultHook({});
    });
    EXPECT_EQ(test.bytes(wavs + "p1.jpg.wav"), "old");
    EXPECT_FALSE(test.isThere(wavs + "p3.jpg.wav"));
}

} // namespace trovarium
