// SPDX-License-Identifier: GPL-3.0-or-later

#include "export/frmExport.h"

#include "export/ExportRun.h"
#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "platform/toolkit/Units.h"
#include "store/Album.h"
#include "store/Log.h"

#include <string>
#include <string_view>

namespace trovarium {

namespace {

constexpr std::string_view Product = "Trovarium";

Plan optionPlan(float top, std::string_view caption)
{
    return {.Left = 450, .Top = top, .Width = 4170, .Height = 300, .Caption = caption};
}

} // namespace

frmExport::frmExport(Desktop& desktop, Album& album)
    : Form(desktop, {.Name = "frmExport", .Caption = "Export Media", .Width = 10260, .Height = 7755})
    , m_album(album)
    , m_exportRun(std::make_unique<ExportRun>(*this, album))
{
    optExportInfo.add(&framItems, 0, optionPlan(1455, "Native Format One per Photo"));
    optExportInfo.add(&framItems, 1, optionPlan(1770, "Record/Field Orientated (CSV)"));
    optExportInfo.add(&framOptions, 2, optionPlan(1455, "Overwrite"));
    optExportInfo.add(&framOptions, 3, optionPlan(1770, "Append (CSV only)"));
    chkExport(0).preset();
    chkOptions(0).preset();
    optExportInfo(1).preset();
    optExportInfo(2).preset();
    cmdExport.Default = true;
    paint();

    on(Load, this, &frmExport::Form_Load);
    on(KeyDown, this, &frmExport::Form_KeyDown);
    on(Close, this, &frmExport::lbExit_Click);
    on(Dir1.Change, this, &frmExport::Dir1_Change);
    on(Drive1.Change, this, &frmExport::Drive1_Change);
    on(lbExit.Click, this, &frmExport::lbExit_Click);
}

frmExport::~frmExport() = default;

void frmExport::paint()
{
    Picture = desktop().pictures().artwork("background");
    Icon = desktop().pictures().artwork("icon");
    lbExit.Raised = true;
    pctProgress.BackColor = FieldBlue;
    pctProgress.Border = true;
    shpProgress.BorderColor = BarBlue;
    shpProgress.FillColor = BarBlue;
    Drive1.AccessibleName = "Drives";
    Dir1.AccessibleName = "Folders";
    List1.AccessibleName = "Selected Files";
    pctProgress.AccessibleName = "Progress";
    pctProgress.AccessibleValue = 0;
}

bool frmExport::AddSelectedFiles()
try {
    const GroupOnShow& group = m_album.group;
    for (int i = 0; i <= group.GroupList.upperBound(); ++i) {
        if (group.isWhole && group.GroupSelect(i) == 1)
            List1.AddItem(group.GroupList(i));
    }
    return true;
} catch (const Failure& failure) {
    logFailure(m_album, "AddSelectedFiles", failure);
    return false;
}

void frmExport::Form_Load()
try {
    Dir1.SetFocus();
    const std::string path =
        m_album.Settings().GetOWSetting(Product, "Export", "LastPath", m_album.paths.ProgramFolder);
    Drive1.Drive = path;
    Dir1.Path = path;
    AddSelectedFiles();
} catch (const Failure& failure) {
    logFailure(m_album, "Form_Load", failure);
}

void frmExport::Form_KeyDown(int KeyCode, int /*Shift*/)
{
    if (KeyCode == EscapeKey)
        lbExit_Click();
}

// Saves the folder as the import's: an export always starts in the program's folder unless its own setting was added by
// hand.
void frmExport::Dir1_Change()
{
    if (isShown())
        m_album.Settings().SetOWSetting(Product, "Import", "LastPath", Dir1.Path());
}

void frmExport::Drive1_Change()
try {
    Dir1.Path = Drive1.Drive();
} catch (const Failure& failure) {
    desktop().prompts().messageBox("Error: " + std::string(failure.description()), Message::Error, "");
}

// Also ends a running export, which its own button doesn't.
void frmExport::lbExit_Click()
try {
    if (DialogBusy)
        m_exportRun->endAndClose();
    else
        unload();
} catch (const Failure& failure) {
    logFailure(m_album, "lbExit_Click", failure);
}

} // namespace trovarium
