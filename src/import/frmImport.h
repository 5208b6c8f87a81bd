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

    // Sets the file list's pattern from the checked types.
    void BuildFilePattern();
    // Adds the files selected in File1 to the list, except names already on it, from whatever folder. False after a
    // failure.
    bool AddSelectedFiles();
    // After the whole list was imported Escape may close the window, until something is added.
    void settleList() { m_isListSettled = true; }
    void unsettleList() { m_isListSettled = false; }

    void Form_Load();
    void Form_Unload();
    void Form_KeyDown(int KeyCode, int Shift);
    void chkFilter_Click(int Index);
    void cmdAddFile_Click();
    void cmdRemoveFile_Click();
    void List1_KeyDown(int KeyCode, int Shift);
    void txtAutoName_Change(int Index);
    void Dir1_Change();
    void Drive1_Change();
    void lbExit_Click();

    bool DialogBusy = false; // a scan or an import runs

    // ---- layout, in twips ----

    Frame framSource{this,
        {.Name = "framSource", .Left = 240, .Top = 240, .Width = 5460, .Height = 6180, .Caption = "Source Files"}};
    DriveList Drive1{&framSource, {.Name = "Drive1", .Left = 180, .Top = 450, .Width = 5100, .Height = 360}};
    FolderList Dir1{&framSource, {.Name = "Dir1", .Left = 180, .Top = 930, .Width = 5100, .Height = 2040}};
    FileList File1{&framSource, {.Name = "File1", .Left = 180, .Top = 3090, .Width = 5100, .Height = 2040}};
    // The captions are the extensions.
    ControlArray<CheckBox> chkFilter;
    Button cmdAutoScan{&framSource,
        {.Name = "cmdAutoScan",
            .Left = 180,
            .Top = 5610,
            .Width = 5100,
            .Height = 390,
            .Caption = "Auto-Scan (and sub-folders)"}};

    Button cmdAddFile{
        this, {.Name = "cmdAddFile", .Left = 5880, .Top = 3540, .Width = 1200, .Height = 390, .Caption = "A&dd >"}};
    Button cmdRemoveFile{this,
        {.Name = "cmdRemoveFile", .Left = 5880, .Top = 4050, .Width = 1200, .Height = 390, .Caption = "< &Remove"}};

    Frame framSelected{this,
        {.Name = "framSelected",
            .Left = 7260,
            .Top = 240,
            .Width = 3660,
            .Height = 6180,
            .Caption = "Files Selected for Import"}};
    // The names, and at the same index their folders.
    ListBox List1{&framSelected, {.Name = "List1", .Left = 180, .Top = 450, .Width = 3300, .Height = 5100}};
    ListBox List2{
        &framSelected, {.Name = "List2", .Left = 180, .Top = 450, .Width = 3300, .Height = 5100, .Visible = false}};
    Label lbCountCaption{&framSelected,
        {.Name = "lbCountCaption",
            .Left = 180,
            .Top = 5700,
            .Width = 1620,
            .Height = 240,
            .Caption = "Number of files:"}};
    Label lbCount{
        &framSelected, {.Name = "lbCount", .Left = 1860, .Top = 5700, .Width = 1620, .Height = 240, .Caption = "0"}};

    Frame framOptions{
        this, {.Name = "framOptions", .Left = 240, .Top = 6600, .Width = 10680, .Height = 1500, .Caption = "Options"}};
    // In tab order: box 2 is followed by its name fields.
    ControlArray<CheckBox> chkOptions;
    ControlArray<Label> lbAutoName{&framOptions, "lbAutoName",
        {{0, {.Left = 6360, .Top = 780, .Width = 780, .Height = 240, .Caption = "Prefix"}},
            {1, {.Left = 6360, .Top = 1140, .Width = 780, .Height = 240, .Caption = "Start #"}}}};
    ControlArray<TextBox> txtAutoName{&framOptions, "txtAutoName",
        {{0, {.Left = 7200, .Top = 735, .Width = 3300, .Height = 330, .Caption = "Image"}},
            {1, {.Left = 7200, .Top = 1095, .Width = 1200, .Height = 330, .Caption = "0100"}}}};

    Label lbProgress{this, {.Name = "lbProgress", .Left = 240, .Top = 8190, .Width = 6900, .Height = 240}};
    PictureBox pctProgress{this, {.Name = "pctProgress", .Left = 240, .Top = 8490, .Width = 6900, .Height = 270}};
    // Grows inside the box from the left.
    Shape shpProgress{&pctProgress, {.Name = "shpProgress", .Left = 0, .Top = 0, .Width = 0, .Height = 210}};

    Button cmdImport{
        this, {.Name = "cmdImport", .Left = 7500, .Top = 8340, .Width = 1620, .Height = 420, .Caption = "&Import"}};
    Label lbExit{this, {.Name = "lbExit", .Left = 9300, .Top = 8340, .Width = 1620, .Height = 420, .Caption = "Exit"}};

private:
    void paint();
    void nameControls();

    Album& m_album;
    bool m_isListSettled = false;
    std::unique_ptr<AutoScan> m_autoScan;
    std::unique_ptr<ImportRun> m_importRun;
};

} // namespace trovarium
