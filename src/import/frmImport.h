#pragma once

#include "platform/toolkit/Button.h"
#include "platform/toolkit/CheckBox.h"
#include "platform/toolkit/ControlArray.h"
#include "platform/toolkit/DriveList.h"
#include "platform/toolkit/FileList.h"
#include "platform/toolkit/FolderList.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/FormSlot.h"
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

// Chooses media files from any folder for the library: by hand here, from a whole folder tree in AutoScan.
// ImportRun takes them in. A modal show is all that its callers do.
class frmImport : public Form {
public:
    frmImport(Desktop& desktop, Album& album, frmMain& main, FormSlot<frmSearch>& search,
        FormSlot<frmThumbnail>& thumbnailBuilder);
    ~frmImport() override;

    AutoScan& autoScan() { return *m_autoScan; }

    // The types of the checked boxes, for the list of files.
    void BuildFilePattern();
    // Puts the files chosen in File1 on the list; false when a failure ended it. A name that is on the list
    // already is left out, from whatever folder it is.
    bool AddSelectedFiles();

    void Form_Load();
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

    // ---- the plan of the window, in twips ----

    Frame framSource{this,
        {.Name = "framSource", .Left = 240, .Top = 240, .Width = 4860, .Height = 5520, .Caption = "Source Files"}};
    DriveList Drive1{&framSource, {.Name = "Drive1", .Left = 180, .Top = 360, .Width = 4500, .Height = 360}};
    FolderList Dir1{&framSource, {.Name = "Dir1", .Left = 180, .Top = 840, .Width = 4500, .Height = 1740}};
    FileList File1{&framSource, {.Name = "File1", .Left = 180, .Top = 2700, .Width = 4500, .Height = 1800}};
    // The captions are the extensions.
    ControlArray<CheckBox> chkFilter{&framSource, "chkFilter",
        {{0, {.Left = 180, .Top = 4590, .Width = 645, .Height = 300, .Caption = "bmp"}},
            {1, {.Left = 825, .Top = 4590, .Width = 645, .Height = 300, .Caption = "gif"}},
            {2, {.Left = 1470, .Top = 4590, .Width = 645, .Height = 300, .Caption = "jpg"}},
            {3, {.Left = 2115, .Top = 4590, .Width = 645, .Height = 300, .Caption = "wmf"}},
            {4, {.Left = 2760, .Top = 4590, .Width = 645, .Height = 300, .Caption = "mpg"}},
            {5, {.Left = 3405, .Top = 4590, .Width = 645, .Height = 300, .Caption = "mov"}},
            {6, {.Left = 4050, .Top = 4590, .Width = 645, .Height = 300, .Caption = "avi"}}}};
    Button cmdAutoScan{&framSource,
        {.Name = "cmdAutoScan",
            .Left = 180,
            .Top = 4965,
            .Width = 4500,
            .Height = 390,
            .Caption = "Auto-Scan (and sub-folders)",
            .ToolTipText = "Add all files of the checked types in this folder and below it."}};

    Button cmdAddFile{this,
        {.Name = "cmdAddFile",
            .Left = 5280,
            .Top = 2460,
            .Width = 1140,
            .Height = 390,
            .Caption = "A&dd >",
            .ToolTipText = "Add the chosen files."}};
    Button cmdRemoveFile{this,
        {.Name = "cmdRemoveFile",
            .Left = 5280,
            .Top = 2970,
            .Width = 1140,
            .Height = 390,
            .Caption = "< &Remove",
            .ToolTipText = "Take the chosen entries off the list."}};

    Frame framSelected{this,
        {.Name = "framSelected",
            .Left = 6600,
            .Top = 240,
            .Width = 3960,
            .Height = 5520,
            .Caption = "Files Selected for Import"}};
    // The name of each entry, and its folder at the same index.
    ListBox List1{&framSelected, {.Name = "List1", .Left = 180, .Top = 360, .Width = 3600, .Height = 4530}};
    ListBox List2{
        &framSelected, {.Name = "List2", .Left = 180, .Top = 360, .Width = 3600, .Height = 4530, .Visible = false}};
    Label lbCountCaption{&framSelected,
        {.Name = "lbCountCaption",
            .Left = 180,
            .Top = 5040,
            .Width = 1200,
            .Height = 240,
            .Caption = "Number of files:"}};
    Label lbCount{
        &framSelected, {.Name = "lbCount", .Left = 1410, .Top = 5040, .Width = 2370, .Height = 240, .Caption = "0"}};

    Frame framOptions{
        this, {.Name = "framOptions", .Left = 240, .Top = 5940, .Width = 10320, .Height = 1440, .Caption = "Options"}};
    // In the order of the Tab key, with the name fields behind the box that they belong to.
    ControlArray<CheckBox> chkOptions{&framOptions, "chkOptions",
        {{0, {.Left = 180, .Top = 330, .Width = 5100, .Height = 300, .Caption = "Overwrite existing photos in album"}},
            {1,
                {.Left = 180,
                    .Top = 675,
                    .Width = 5100,
                    .Height = 300,
                    .Caption = "Overwrite existing photos info files"}},
            {3,
                {.Left = 180,
                    .Top = 1020,
                    .Width = 5100,
                    .Height = 300,
                    .Caption = "Create photo links only (No copies to local dir)"}},
            {2, {.Left = 5520, .Top = 330, .Width = 4500, .Height = 300, .Caption = "Auto rename/number"}}}};
    ControlArray<Label> lbAutoName{&framOptions, "lbAutoName",
        {{0, {.Left = 5820, .Top = 705, .Width = 600, .Height = 240, .Caption = "Prefix"}},
            {1, {.Left = 5820, .Top = 1065, .Width = 600, .Height = 240, .Caption = "Start #"}}}};
    ControlArray<TextBox> txtAutoName{&framOptions, "txtAutoName",
        {{0, {.Left = 6540, .Top = 660, .Width = 3600, .Height = 330, .Caption = "Image"}},
            {1, {.Left = 6540, .Top = 1020, .Width = 1200, .Height = 330, .Caption = "0100"}}}};

    Label lbProgress{this, {.Name = "lbProgress", .Left = 240, .Top = 7530, .Width = 6900, .Height = 240}};
    PictureBox pctProgress{this, {.Name = "pctProgress", .Left = 240, .Top = 7815, .Width = 6900, .Height = 270}};
    // Grows inside the box from the left.
    Shape shpProgress{&pctProgress, {.Name = "shpProgress", .Left = 0, .Top = 0, .Width = 0, .Height = 210}};

    Button cmdImport{
        this, {.Name = "cmdImport", .Left = 7380, .Top = 7680, .Width = 1500, .Height = 420, .Caption = "&Import"}};
    Label lbExit{this, {.Name = "lbExit", .Left = 9060, .Top = 7680, .Width = 1500, .Height = 330, .Caption = "Exit"}};

private:
    void paint();
    void nameControls();

    Album& m_album;
    bool m_optionsBusy = false; // guards chkOptions_Click
    std::unique_ptr<AutoScan> m_autoScan;
    std::unique_ptr<ImportRun> m_importRun;
};

} // namespace trovarium
