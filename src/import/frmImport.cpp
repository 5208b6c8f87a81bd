// SPDX-License-Identifier: GPL-3.0-or-later

#include "import/frmImport.h"

#include "import/AutoScan.h"
#include "import/ImportRun.h"
#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "platform/toolkit/Units.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/GroupFile.h"
#include "store/Log.h"

#include <string>
#include <unordered_set>
#include <utility>

namespace trovarium {

namespace {

constexpr std::string_view Product = "Trovarium";
constexpr std::string_view Section = "Import";

Plan typePlan(float left, float width, std::string_view type)
{
    return {.Left = left, .Top = 5220, .Width = width, .Height = 300, .Caption = type};
}

Plan optionPlan(float top, std::string_view caption)
{
    return {.Left = 180, .Top = top, .Width = 5550, .Height = 300, .Caption = caption};
}

} // namespace

frmImport::frmImport(Desktop& desktop, Album& album, frmMain& main, FormHolder<frmSearch>& search,
    FormHolder<frmThumbnail>& thumbnailBuilder)
    : Form(desktop, {.Name = "frmImport", .Caption = "Import Media", .Width = 11160, .Height = 9000})
    // Each as wide as its caption, so that they stand apart.
    , chkFilter(&framSource, "chkFilter",
          {{0, typePlan(180, 795, "bmp")}, {1, typePlan(975, 660, "gif")}, {2, typePlan(1635, 705, "jpg")},
              {3, typePlan(2340, 795, "wmf")}, {4, typePlan(3135, 795, "mpg")}, {5, typePlan(3930, 795, "mov")},
              {6, typePlan(4725, 555, "avi")}})
    , chkOptions(&framOptions, "chkOptions",
          {{0, optionPlan(390, "Overwrite existing photos in album")},
              {1, optionPlan(735, "Overwrite existing photos info files")},
              {3, optionPlan(1080, "Create photo links only (No copies to local dir)")},
              {2, {.Left = 6060, .Top = 390, .Width = 4440, .Height = 300, .Caption = "Auto rename/number"}}})
    , m_album(album)
    , m_autoScan(std::make_unique<AutoScan>(*this, album))
    , m_importRun(std::make_unique<ImportRun>(*this, album, main, search, thumbnailBuilder))
{
    List1.MultiSelect = true;
    List2.MultiSelect = true;
    File1.Pattern = "*.bmp;*.jpg;*.gif;*.wmf";
    chkFilter.forEach([](int, CheckBox& type) { type.preset(); });
    chkOptions(3).preset();
    paint();
    nameControls();

    on(Load, this, &frmImport::Form_Load);
    on(Activate, this, &frmImport::Form_Activate);
    on(Unload, this, &frmImport::Form_Unload);
    on(Close, this, &frmImport::lbExit_Click);
    on(KeyDown, this, &frmImport::Form_KeyDown);
    on(chkFilter, &CheckBox::Click, this, &frmImport::chkFilter_Click);
    on(chkOptions, &CheckBox::Click, this, &frmImport::chkOptions_Click);
    on(cmdAddFile.Click, this, &frmImport::cmdAddFile_Click);
    on(cmdRemoveFile.Click, this, &frmImport::cmdRemoveFile_Click);
    on(List1.KeyDown, this, &frmImport::List1_KeyDown);
    on(txtAutoName, &TextBox::Change, this, &frmImport::txtAutoName_Change);
    on(Dir1.Change, this, &frmImport::Dir1_Change);
    on(Drive1.Change, this, &frmImport::Drive1_Change);
    on(lbExit.Click, this, &frmImport::lbExit_Click);
}

frmImport::~frmImport() = default;

void frmImport::paint()
{
    Picture = desktop().pictures().artwork("background");
    Icon = desktop().pictures().artwork("icon");
    lbExit.Raised = true;
    pctProgress.BackColor = FieldBlue;
    pctProgress.Border = true;
    shpProgress.BorderColor = BarBlue;
    shpProgress.FillColor = BarBlue;
}

// Tool tips, and names for screen readers where a control has no caption.
void frmImport::nameControls()
{
    Drive1.AccessibleName = "Drives";
    Dir1.AccessibleName = "Folders";
    File1.AccessibleName = "Files";
    List1.AccessibleName = "Files Selected for Import";
    cmdAddFile.AccessibleName = "Add";
    cmdRemoveFile.AccessibleName = "Remove";
    txtAutoName(0).AccessibleName = "Prefix";
    txtAutoName(1).AccessibleName = "Start #";
    pctProgress.AccessibleName = "Progress";
    pctProgress.AccessibleValue = 0;
    cmdAutoScan.ToolTipText = "Add all files of the checked types in this folder and below it.";
    cmdAddFile.ToolTipText = "Add the chosen files.";
    cmdRemoveFile.ToolTipText = "Take the chosen entries off the list.";
}

// If a step fails, for instance because the drive is missing, pattern and names keep their defaults.
void frmImport::Form_Load()
try {
    Dir1.SetFocus();
    const COWReg& settings = m_album.Settings();
    const std::string path = settings.GetOWSetting(Product, Section, "LastPath", m_album.paths.ProgramFolder);
    Drive1.Drive = path;
    Dir1.Path = path;
    txtAutoName(0).Text = settings.GetOWSetting(Product, Section, "Autoname", "Image");
    txtAutoName(1).Text = settings.GetOWSetting(Product, Section, "Autonumber", "0100");
    BuildFilePattern();
} catch (const Failure& failure) {
    logFailure(m_album, "Form_Load", failure);
}

void frmImport::showFilled(const OfferedFiles& files)
{
    m_offered = files;
    showModal();
}

// With the window on the screen the list may take its time, and can be cancelled.
void frmImport::Form_Activate()
{
    const OfferedFiles files = std::exchange(m_offered, {});
    if (files.empty() || DialogBusy)
        return;
    m_autoScan->scanOffered(files);
    lbCount.Caption = numberText(List1.ListCount());
    if (List1.ListCount() == 0)
        lbExit_Click();
}

// Ends a running scan.
void frmImport::Form_Unload()
{
    m_autoScan->stop();
}

// Escape only closes the window if no list is lost.
void frmImport::Form_KeyDown(int KeyCode, int /*Shift*/)
{
    if (KeyCode == EscapeKey && !DialogBusy && (m_isListSettled || List1.ListCount() == 0))
        lbExit_Click();
}

// The first term matches nothing, so that the list is empty if no box is checked.
void frmImport::BuildFilePattern()
{
    File1.Pattern = "*.abcde";
    chkFilter.forEach([this](int, const CheckBox& type) {
        if (type.Value() != 1)
            return;
        File1.Pattern = File1.Pattern() + ";*." + type.Caption();
        File1.Refresh();
    });
}

// A set of the upper-case names keeps this fast for tens of thousands.
bool frmImport::AddSelectedFiles()
try {
    MousePointer = HourglassPointer;
    std::unordered_set<std::string> listed;
    // After a cancelled scan List2 is shorter; pad it so that indexes match.
    while (List2.ListCount() < List1.ListCount())
        List2.AddItem("");
    for (int i = 0; i < List1.ListCount(); ++i)
        listed.insert(upper(List1.List(i)));
    for (int i = 0; i < File1.ListCount(); ++i) {
        if (!File1.Selected(i) || !listed.insert(upper(File1.List(i))).second)
            continue;
        unsettleList();
        List1.AddItem(File1.List(i));
        List2.AddItem(Dir1.Path());
    }
    MousePointer = DefaultPointer;
    return true;
} catch (const Failure& failure) {
    MousePointer = DefaultPointer;
    logFailure(m_album, "AddSelectedFiles", failure);
    return false;
}

void frmImport::chkFilter_Click(int /*Index*/)
{
    BuildFilePattern();
}

// Does nothing: the boxes are read when they are needed.
void frmImport::chkOptions_Click(int /*Index*/)
{
    if (m_optionsBusy)
        return;
    m_optionsBusy = true;
    m_optionsBusy = false;
}

void frmImport::cmdAddFile_Click()
{
    AddSelectedFiles();
    lbCount.Caption = numberText(List1.ListCount());
}

void frmImport::cmdRemoveFile_Click()
{
    List1_KeyDown(DeleteKey, NoKeys);
    lbCount.Caption = numberText(List1.ListCount());
}

// After a cancelled scan List2 is shorter. Nothing is removed while a scan splits its paths (List1 is disabled then) or
// an import runs.
void frmImport::List1_KeyDown(int KeyCode, int /*Shift*/)
try {
    if (KeyCode == DeleteKey && List1.Enabled() && !m_importRun->isRunning()) {
        List1.Enabled = false;
        for (int i = List1.ListCount() - 1; i >= 0; --i) {
            if (!List1.Selected(i))
                continue;
            List1.RemoveItem(i);
            if (i < List2.ListCount())
                List2.RemoveItem(i);
        }
        List1.Enabled = true;
    }
    lbCount.Caption = numberText(List1.ListCount());
} catch (const Failure& failure) {
    logFailure(m_album, "List1_KeyDown", failure);
}

// Only the prefix is checked and saved here; the import saves the number.
void frmImport::txtAutoName_Change(int Index)
{
    if (Index != 0)
        return;
    std::string prefix = txtAutoName(0).Text();
    CheckGroupName(prefix);
    txtAutoName(0).Text = prefix;
    m_album.Settings().SetOWSetting(Product, Section, "Autoname", txtAutoName(0).Text());
}

// Saves what the user chooses, but not the initial folder: that may be the root if the saved one is missing today.
void frmImport::Dir1_Change()
{
    File1.Path = Dir1.Path();
    if (isShown())
        m_album.Settings().SetOWSetting(Product, Section, "LastPath", Dir1.Path());
}

void frmImport::Drive1_Change()
try {
    Dir1.Path = Drive1.Drive();
} catch (const Failure& failure) {
    desktop().prompts().messageBox("Error: " + std::string(failure.description()), Message::Error, "");
}

// Not during an import, which has its own cancel button: photographs would be in no group.
void frmImport::lbExit_Click()
try {
    if (!m_importRun->isRunning())
        unload();
} catch (const Failure& failure) {
    logFailure(m_album, "lbExit_Click", failure);
}

} // namespace trovarium
