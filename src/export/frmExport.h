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

    // ---- layout: name, left, top, width, height (twips), caption ----

    Frame framDestination{this, {"framDestination", 240, 240, 4800, 4140, "Destination Folder"}};
    DriveList Drive1{&framDestination, {"Drive1", 180, 450, 4440, 360}};
    FolderList Dir1{&framDestination, {"Dir1", 180, 930, 4440, 3030}};

    Frame framSelected{this, {"framSelected", 5220, 240, 4800, 4140, "Selected Files"}};
    ListBox List1{&framSelected, {"List1", 180, 450, 4440, 3510}};

    Frame framItems{this, {"framItems", 240, 4560, 4800, 2220, "Export Items"}};
    ControlArray<CheckBox> chkExport{&framItems, "chkExport",
        {{0, {.Left = 180, .Top = 420, .Width = 4440, .Height = 300, .Caption = "Photo/Video"}},
            {1, {.Left = 180, .Top = 765, .Width = 4440, .Height = 300, .Caption = "Thumbnail"}},
            {2, {.Left = 180, .Top = 1110, .Width = 4440, .Height = 300, .Caption = "Media Info"}}}};

    Frame framOptions{this, {"framOptions", 5220, 4560, 4800, 2220, "Options"}};
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
    Label lbInfoFiles{&framOptions, {"lbInfoFiles", 180, 1140, 4440, 240, "Photo Information Files"}};

    // Two groups: 0 and 1 choose the format, 2 and 3 what happens to old files.
    ControlArray<OptionButton> optExportInfo{"optExportInfo"};

    Label lbProgress{this, {"lbProgress", 240, 6960, 6180, 240}};
    PictureBox pctProgress{this, {"pctProgress", 240, 7245, 6180, 270}};
    // Grows inside the box from the left.
    Shape shpProgress{&pctProgress, {"shpProgress", 0, 0, 0, 210}};

    Button cmdExport{this, {"cmdExport", 6600, 7095, 1620, 420, "E&xport"}};
    Label lbExit{this, {"lbExit", 8400, 7095, 1620, 420, "Exit"}};

private:
    void paint();

    Album& m_album;
    std::unique_ptr<ExportRun> m_exportRun;
};

} // namespace trovarium
