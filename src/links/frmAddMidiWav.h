// SPDX-License-Identifier: GPL-3.0-or-later
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
    void LinkMidi2Group();
    void LinkWav2Photos();

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

    // ---- layout: name, left, top, width, height (twips), caption ----

    Frame framSource{this, {"framSource", 240, 240, 4800, 6300, "Source Files"}};
    DriveList Drive1{&framSource, {"Drive1", 180, 450, 4440, 360}};
    FolderList Dir1{&framSource, {"Dir1", 180, 930, 4440, 2040}};
    FileList File1{&framSource, {"File1", 180, 3090, 4440, 2520}};

    Button cmdAddFile{this, {"cmdAddFile", 5220, 3540, 1200, 390, "A&dd >"}};

    Frame framDestination{this, {"framDestination", 6600, 240, 4320, 6300}};
    Label lbListContents{&framDestination, {"lbListContents", 180, 105, 3960, 240}};
    // The owners, and the file to copy for each, empty to clear the link. Changed rows are selected in List2.
    ListBox List1{&framDestination, {"List1", 180, 450, 3960, 4560}};
    ListBox List2{
        &framDestination, {.Name = "List2", .Left = 180, .Top = 450, .Width = 3960, .Height = 4560, .Visible = false}};
    // Two for the source file, two for the chosen entry.
    ControlArray<Button> cmdPlayStop{playButtons()};
    Button cmdClear{&framDestination, {"cmdClear", 2940, 5130, 1200, 390, "&Clear"}};

    ControlArray<CheckBox> chkOptions{&framDestination, "chkOptions",
        {{0, {.Left = 180, .Top = 5745, .Width = 3960, .Height = 300, .Caption = "Overwrite existing files"}}}};

    Label lbProgress{this, {"lbProgress", 240, 6690, 6900, 240}};
    PictureBox pctProgress{this, {"pctProgress", 240, 6990, 6900, 270}};
    // Grows inside the box from the left.
    Shape shpProgress{&pctProgress, {"shpProgress", 0, 0, 0, 210}};

    Button cmdImport{this, {"cmdImport", 7500, 6840, 1620, 420, "&Make it so"}};
    Label lbExit{this, {"lbExit", 9300, 6840, 1620, 420, "Exit"}};

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
