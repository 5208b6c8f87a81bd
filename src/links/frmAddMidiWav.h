#pragma once

#include "platform/toolkit/Buttons.h"
#include "platform/toolkit/ControlArray.h"
#include "platform/toolkit/FileControls.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Frame.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/ListBox.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/Shape.h"

#include <functional>
#include <memory>
#include <set>
#include <string>

namespace trovarium {

struct Album;
class LinkRun;
class frmMain;

// Chooses a song for a group or a wave clip for a photograph. The link is a copy with the owner's name; LinkRun makes
// it.
class frmAddMidiWav : public Form {
public:
    // `importForm` returns the import dialog, creating it if necessary.
    frmAddMidiWav(Desktop& desktop, Album& album, frmMain& main, std::function<Form&()> importForm);
    ~frmAddMidiWav() override;

    // Load the form, set it up and show it modally.
    void linkMidi();
    void linkWav();

    void Set4Midi();
    void Set4Wav();

    // The run has finished this row, which stays selected.
    void settle(int row);

    void Form_Load();
    void Form_KeyDown(int KeyCode, int Shift);
    void Dir1_Change();
    void Drive1_Change();
    void cmdAddFile_Click();
    void File1_DblClick();
    void List1_DblClick();
    void cmdClear_Click();
    void cmdPlayStop_Click(int Index);
    void lbExit_Click();

    bool DialogBusy = false; // a run goes on
    bool LinkIsMidi = false; // music, not clips

    // ---- layout, in twips ----

    Frame framSource{this,
        {.Name = "framSource", .Left = 240, .Top = 240, .Width = 4800, .Height = 6300, .Caption = "Source Files"}};
    DriveList Drive1{&framSource, {.Name = "Drive1", .Left = 180, .Top = 450, .Width = 4440, .Height = 360}};
    FolderList Dir1{&framSource, {.Name = "Dir1", .Left = 180, .Top = 930, .Width = 4440, .Height = 2040}};
    FileList File1{&framSource, {.Name = "File1", .Left = 180, .Top = 3090, .Width = 4440, .Height = 2520}};

    Button cmdAddFile{
        this, {.Name = "cmdAddFile", .Left = 5220, .Top = 3540, .Width = 1200, .Height = 390, .Caption = "A&dd >"}};

    Frame framDestination{this, {.Name = "framDestination", .Left = 6600, .Top = 240, .Width = 4320, .Height = 6300}};
    Label lbListContents{
        &framDestination, {.Name = "lbListContents", .Left = 180, .Top = 105, .Width = 3960, .Height = 240}};
    // The owners, and the file to copy for each, empty to clear the link. Changed rows are selected in List2.
    ListBox List1{&framDestination, {.Name = "List1", .Left = 180, .Top = 450, .Width = 3960, .Height = 4560}};
    ListBox List2{
        &framDestination, {.Name = "List2", .Left = 180, .Top = 450, .Width = 3960, .Height = 4560, .Visible = false}};
    // Two for the source file, two for the chosen entry.
    ControlArray<Button> cmdPlayStop{playButtons()};
    Button cmdClear{&framDestination,
        {.Name = "cmdClear", .Left = 2940, .Top = 5130, .Width = 1200, .Height = 390, .Caption = "&Clear"}};

    ControlArray<CheckBox> chkOptions{&framDestination, "chkOptions",
        {{0, {.Left = 180, .Top = 5745, .Width = 3960, .Height = 300, .Caption = "Overwrite existing files"}}}};

    Label lbProgress{this, {.Name = "lbProgress", .Left = 240, .Top = 6690, .Width = 6900, .Height = 240}};
    PictureBox pctProgress{this, {.Name = "pctProgress", .Left = 240, .Top = 6990, .Width = 6900, .Height = 270}};
    // Grows inside the box from the left.
    Shape shpProgress{&pctProgress, {.Name = "shpProgress", .Left = 0, .Top = 0, .Width = 0, .Height = 210}};

    Button cmdImport{
        this, {.Name = "cmdImport", .Left = 7500, .Top = 6840, .Width = 1620, .Height = 420, .Caption = "&Make it so"}};
    Label lbExit{this, {.Name = "lbExit", .Left = 9300, .Top = 6840, .Width = 1620, .Height = 420, .Caption = "Exit"}};

private:
    ControlArray<Button> playButtons();
    void paint();
    void nameControls();
    void setUp(bool isMidi);
    void addRow(const std::string& owner, const std::string& file);
    void AddSelectedFiles();
    std::string selectedSource() const; // empty for none
    int selectedRow() const;            // -1 for none
    void change(int row, const std::string& source, std::string_view marker);

    Album& m_album;
    frmMain& m_main;
    std::unique_ptr<LinkRun> m_run;
    std::set<int> m_open; // rows changed since a run finished them
};

} // namespace trovarium
