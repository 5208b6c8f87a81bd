#pragma once

#include "platform/toolkit/Buttons.h"
#include "platform/toolkit/TextBox.h"
#include "platform/toolkit/FileControls.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/Shape.h"
#include "platform/toolkit/PictureBox.h"
#include "store/GroupOnShow.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace trovarium {

struct Album;
class frmMain;

// Finds photographs by the text of their information files and appends them to a group. The import writes its new
// photographs through it too, without showing it.
class frmSearch : public Form {
public:
    frmSearch(Desktop& desktop, Album& album, frmMain& main);

    // Names of information files from index 1 on, in place of what a search found.
    void SetNewList(const CheckedArray<std::string>& list);
    // By year, equal years in the order in which they were found. Nobody asks for it: a group keeps that order.
    void SortResultsByYear();

    void Form_Load();
    void Form_Unload();
    void Form_KeyDown(int KeyCode, int Shift);
    // Searches all of the library; a press in the meantime ends it with what was found until then. Failures end it
    // in the same way.
    void cmdSearch_Click();
    // Appends to the list of the group named in `cmbGroupName`, a new one or not. Without a name, and when
    // characters had to be replaced in it, it tells so and writes nothing. A line of the dialog tells what was
    // appended. The group on show is read again.
    void cmdSave_Click();
    // The same for a run that shows the group again by itself. False when nothing was to be written.
    bool save();
    void cmdImport_Click();
    void cmbGroupName_Enter();
    void lbExit_Click();

    // ---- the plan of the window, in twips ----

    Label Label1{this,
        {.Name = "Label1", .Left = 300, .Top = 255, .Width = 6600, .Height = 240, .Caption = "Specify search items:"}};
    Label lbFilename{
        this, {.Name = "lbFilename", .Left = 300, .Top = 645, .Width = 1500, .Height = 330, .Caption = "Filename:"}};
    TextBox txtFilename{this, {.Name = "txtFilename", .Left = 1860, .Top = 645, .Width = 5040, .Height = 330}};
    Label lbTitle{
        this, {.Name = "lbTitle", .Left = 300, .Top = 1065, .Width = 1500, .Height = 330, .Caption = "Title:"}};
    TextBox txtTitle{this, {.Name = "txtTitle", .Left = 1860, .Top = 1065, .Width = 5040, .Height = 330}};
    Label lbYear{this, {.Name = "lbYear", .Left = 300, .Top = 1485, .Width = 1500, .Height = 330, .Caption = "Year:"}};
    TextBox txtYear{this, {.Name = "txtYear", .Left = 1860, .Top = 1485, .Width = 5040, .Height = 330}};
    Label lbPlace{
        this, {.Name = "lbPlace", .Left = 300, .Top = 1905, .Width = 1500, .Height = 330, .Caption = "Place:"}};
    TextBox txtPlace{this, {.Name = "txtPlace", .Left = 1860, .Top = 1905, .Width = 5040, .Height = 330}};
    Label lbEvent{
        this, {.Name = "lbEvent", .Left = 300, .Top = 2325, .Width = 1500, .Height = 330, .Caption = "Event:"}};
    TextBox txtEvent{this, {.Name = "txtEvent", .Left = 1860, .Top = 2325, .Width = 5040, .Height = 330}};
    Label lbPhotographer{this,
        {.Name = "lbPhotographer", .Left = 300, .Top = 2745, .Width = 1500, .Height = 330, .Caption = "Photographer:"}};
    TextBox txtPhotographer{this, {.Name = "txtPhotographer", .Left = 1860, .Top = 2745, .Width = 5040, .Height = 330}};
    Label lbPeople{
        this, {.Name = "lbPeople", .Left = 300, .Top = 3165, .Width = 1500, .Height = 330, .Caption = "People:"}};
    TextBox txtPeople{this, {.Name = "txtPeople", .Left = 1860, .Top = 3165, .Width = 5040, .Height = 330}};
    Label lbKeywords{
        this, {.Name = "lbKeywords", .Left = 300, .Top = 3585, .Width = 1500, .Height = 330, .Caption = "Keywords:"}};
    TextBox txtkeywords{this, {.Name = "txtkeywords", .Left = 1860, .Top = 3585, .Width = 5040, .Height = 330}};

    Button cmdSearch{
        this, {.Name = "cmdSearch", .Left = 1860, .Top = 4095, .Width = 1500, .Height = 405, .Caption = "&Search"}};
    Label lbProgress{this,
        {.Name = "lbProgress",
            .Left = 3540,
            .Top = 4065,
            .Width = 3360,
            .Height = 240,
            .Caption = "Searched 0 (0%) -> Found 0"}};
    PictureBox pctProgress{this, {.Name = "pctProgress", .Left = 3540, .Top = 4350, .Width = 3360, .Height = 135}};
    Shape shpProgress{&pctProgress, {.Name = "shpProgress", .Width = 0, .Height = 135}};
    Line Line1{this, {.Name = "Line1", .Left = 300, .Top = 4800, .Width = 6600, .Height = 0}};

    Label lbGroupName{this,
        {.Name = "lbGroupName", .Left = 300, .Top = 5085, .Width = 1500, .Height = 330, .Caption = "Group name:"}};
    ComboBox cmbGroupName{this, {.Name = "cmbGroupName", .Left = 1860, .Top = 5085, .Width = 5040, .Height = 330}};
    Button cmdSave{this,
        {.Name = "cmdSave",
            .Left = 1860,
            .Top = 5595,
            .Width = 3120,
            .Height = 405,
            .Caption = "&Append search results to group"}};
    Button cmdImport{
        this, {.Name = "cmdImport", .Left = 5100, .Top = 5595, .Width = 840, .Height = 405, .Caption = "&Import"}};
    Label lbExit{this, {.Name = "lbExit", .Left = 6060, .Top = 5595, .Width = 840, .Height = 405, .Caption = "Exit"}};

    Label lbAppended{this, {.Name = "lbAppended", .Left = 1860, .Top = 6120, .Width = 5040, .Height = 240}};

    // Only lists the information files.
    FileList File1{this, {.Name = "File1", .Left = 300, .Top = 6900, .Width = 1500, .Height = 1500, .Visible = false}};

private:
    void paintWindow();
    void searchLibrary();
    bool matches(const std::string& fileName);
    bool linesMatch(int number);
    void keep(const std::string& fileName);
    void showProgress(int searched, int count);
    bool appendResults();
    // True for a name that can be used as it stands; tells what is wrong with another.
    bool acceptGroupName();

    Album& m_album;
    frmMain& m_main;
    CheckedArray<std::string> SearchResults;
    CheckedArray<std::int16_t> SearchYears; // of the results, at the same index
    // Not cleared between two files: a match without a year of its own has that of the file before.
    std::string YearText;
    bool m_isAppended = false; // by the last save
    bool m_isSaving = false;   // guards cmdSave_Click
    bool DialogBusy = false;
};

} // namespace trovarium
