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
#include "platform/toolkit/TextBox.h"

#include <memory>

namespace trovarium {

struct Album;
class AutoScan;
class ImportRun;
class frmMain;
class frmSearch;
class frmThumbnail;

// Chooses files to import: single ones here, a whole folder tree in AutoScan. ImportRun imports them.
class frmImport : public Form {
public:
    frmImport(Desktop& desktop, Album& album, frmMain& main, FormHolder<frmSearch>& search,
        FormHolder<frmThumbnail>& thumbnailBuilder);
    ~frmImport() override;

    // Shows the dialog modally and fills the list with the files and those in the folders. If there is nothing to
    // import among them, it is told, and the dialog closes.
    void showFilled(const OfferedFiles& files);

    // Sets the file list's pattern from the checked types.
    void BuildFilePattern();
    // Adds the files selected in File1 to the list, except names already on it, from whatever folder. False after a
    // failure.
    bool AddSelectedFiles();
    // After the whole list was imported Escape may close the window, until something is added.
    void settleList() { m_isListSettled = true; }
    void unsettleList() { m_isListSettled = false; }

    void Form_Load();
    void Form_Activate();
    void Form_Unload();
    void Form_KeyDown(int KeyCode, int Shift);
    void chkFilter_Click(int Index);
    void chkOptions_Click(int Index);
    void cmdAddFile_Click();
    void cmdRemoveFile_Click();
    void List1_KeyDown(int KeyCode, int Shift);
    void txtAutoName_Change(int Index);
    void Dir1_Change();
    void Drive1_Change();
    void lbExit_Click();

    bool DialogBusy = false; // a scan or an import runs

    // ---- layout: name, left, top, width, height (twips), caption ----

    Frame framSource{this, {"framSource", 240, 240, 5460, 6180, "Source Files"}};
    DriveList Drive1{&framSource, {"Drive1", 180, 450, 5100, 360}};
    FolderList Dir1{&framSource, {"Dir1", 180, 930, 5100, 2040}};
    FileList File1{&framSource, {"File1", 180, 3090, 5100, 2040}};
    // The captions are the extensions.
    ControlArray<CheckBox> chkFilter;
    Button cmdAutoScan{&framSource, {"cmdAutoScan", 180, 5610, 5100, 390, "Auto-Scan (and sub-folders)"}};

    Button cmdAddFile{this, {"cmdAddFile", 5880, 3540, 1200, 390, "A&dd >"}};
    Button cmdRemoveFile{this, {"cmdRemoveFile", 5880, 4050, 1200, 390, "< &Remove"}};

    Frame framSelected{this, {"framSelected", 7260, 240, 3660, 6180, "Files Selected for Import"}};
    // The names, and at the same index their folders.
    ListBox List1{&framSelected, {"List1", 180, 450, 3300, 5100}};
    ListBox List2{
        &framSelected, {.Name = "List2", .Left = 180, .Top = 450, .Width = 3300, .Height = 5100, .Visible = false}};
    Label lbCountCaption{&framSelected, {"lbCountCaption", 180, 5700, 1620, 240, "Number of files:"}};
    Label lbCount{&framSelected, {"lbCount", 1860, 5700, 1620, 240, "0"}};

    Frame framOptions{this, {"framOptions", 240, 6600, 10680, 1500, "Options"}};
    // In tab order: box 2 is followed by its name fields.
    ControlArray<CheckBox> chkOptions;
    ControlArray<Label> lbAutoName{&framOptions, "lbAutoName",
        {{0, {.Left = 6360, .Top = 780, .Width = 780, .Height = 240, .Caption = "Prefix"}},
            {1, {.Left = 6360, .Top = 1140, .Width = 780, .Height = 240, .Caption = "Start #"}}}};
    ControlArray<TextBox> txtAutoName{&framOptions, "txtAutoName",
        {{0, {.Left = 7200, .Top = 735, .Width = 3300, .Height = 330, .Caption = "Image"}},
            {1, {.Left = 7200, .Top = 1095, .Width = 1200, .Height = 330, .Caption = "0100"}}}};

    Label lbProgress{this, {"lbProgress", 240, 8190, 6900, 240}};
    PictureBox pctProgress{this, {"pctProgress", 240, 8490, 6900, 270}};
    // Grows inside the box from the left.
    Shape shpProgress{&pctProgress, {"shpProgress", 0, 0, 0, 210}};

    Button cmdImport{this, {"cmdImport", 7500, 8340, 1620, 420, "&Import"}};
    Label lbExit{this, {"lbExit", 9300, 8340, 1620, 420, "Exit"}};

private:
    void paint();
    void nameControls();

    Album& m_album;
    bool m_optionsBusy = false; // guards chkOptions_Click
    bool m_isListSettled = false;
    OfferedFiles m_offered; // until the list is filled with them
    std::unique_ptr<AutoScan> m_autoScan;
    std::unique_ptr<ImportRun> m_importRun;
};

} // namespace trovarium
