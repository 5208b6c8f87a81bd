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

#include <memory>

namespace trovarium {

struct Album;
class ExportRun;

// Exports the selected photographs of the group on show to a folder.
class frmExport : public Form {
public:
    frmExport(Desktop& desktop, Album& album);
    ~frmExport() override;

    // Adds the selected photographs to the list; false after a failure. Includes the unused position 0 of a group: if
    // it is selected, an empty name is listed.
    bool AddSelectedFiles();

    void Form_Load();
    void Form_KeyDown(int KeyCode, int Shift);
    void Dir1_Change();
    void Drive1_Change();
    void lbExit_Click();

    bool DialogBusy = false; // an export runs

    // ---- layout, in twips ----

    Frame framDestination{this,
        {.Name = "framDestination",
            .Left = 240,
            .Top = 240,
            .Width = 4800,
            .Height = 4140,
            .Caption = "Destination Folder"}};
    DriveList Drive1{&framDestination, {.Name = "Drive1", .Left = 180, .Top = 450, .Width = 4440, .Height = 360}};
    FolderList Dir1{&framDestination, {.Name = "Dir1", .Left = 180, .Top = 930, .Width = 4440, .Height = 3030}};

    Frame framSelected{this,
        {.Name = "framSelected", .Left = 5220, .Top = 240, .Width = 4800, .Height = 4140, .Caption = "Selected Files"}};
    ListBox List1{&framSelected, {.Name = "List1", .Left = 180, .Top = 450, .Width = 4440, .Height = 3510}};

    Frame framItems{this,
        {.Name = "framItems", .Left = 240, .Top = 4560, .Width = 4800, .Height = 2220, .Caption = "Export Items"}};
    ControlArray<CheckBox> chkExport{&framItems, "chkExport",
        {{0, {.Left = 180, .Top = 420, .Width = 4440, .Height = 300, .Caption = "Photo/Video"}},
            {1, {.Left = 180, .Top = 765, .Width = 4440, .Height = 300, .Caption = "Thumbnail"}},
            {2, {.Left = 180, .Top = 1110, .Width = 4440, .Height = 300, .Caption = "Media Info"}}}};

    Frame framOptions{
        this, {.Name = "framOptions", .Left = 5220, .Top = 4560, .Width = 4800, .Height = 2220, .Caption = "Options"}};
    // The second does nothing and is never visible.
    ControlArray<CheckBox> chkOptions{&framOptions, "chkOptions",
        {{0,
             {.Left = 180,
                 .Top = 420,
                 .Width = 4440,
                 .Height = 300,
                 .Caption = "Over write existing photos and thumbnails"}},
            {1,
                {.Left = 180,
                    .Top = 765,
                    .Width = 4440,
                    .Height = 300,
                    .Caption = "Export as HTML pages (Preview page && links)",
                    .Visible = false}}}};
    Label lbInfoFiles{&framOptions,
        {.Name = "lbInfoFiles",
            .Left = 180,
            .Top = 1140,
            .Width = 4440,
            .Height = 240,
            .Caption = "Photo Information Files"}};

    // Two groups: 0 and 1 choose the format, 2 and 3 what happens to old files.
    ControlArray<OptionButton> optExportInfo{"optExportInfo"};

    Label lbProgress{this, {.Name = "lbProgress", .Left = 240, .Top = 6960, .Width = 6180, .Height = 240}};
    PictureBox pctProgress{this, {.Name = "pctProgress", .Left = 240, .Top = 7245, .Width = 6180, .Height = 270}};
    // Grows inside the box from the left.
    Shape shpProgress{&pctProgress, {.Name = "shpProgress", .Left = 0, .Top = 0, .Width = 0, .Height = 210}};

    Button cmdExport{
        this, {.Name = "cmdExport", .Left = 6600, .Top = 7095, .Width = 1620, .Height = 420, .Caption = "E&xport"}};
    Label lbExit{this, {.Name = "lbExit", .Left = 8400, .Top = 7095, .Width = 1620, .Height = 420, .Caption = "Exit"}};

private:
    void paint();

    Album& m_album;
    std::unique_ptr<ExportRun> m_exportRun;
};

} // namespace trovarium
