// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Buttons.h"
#include "platform/toolkit/FileControls.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/Shape.h"
#include "platform/toolkit/TextBox.h"
#include "store/GroupOnShow.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace trovarium {

struct Album;
class frmMain;

// Finds photographs by the text of their information files and appends them to a group. The import appends its new
// photographs through it too, without showing it.
class frmSearch : public Form {
public:
    frmSearch(Desktop& desktop, Album& album, frmMain& main);

    // Replaces the search results: names of information files from index 1 on.
    void SetNewList(const CheckedArray<std::string>& list);
    // Stable sort by year. Not called: groups keep the order in which photographs were found.
    void SortResultsByYear();

    void Form_Load();
    void Form_Unload();
    void Form_KeyDown(int KeyCode, int Shift);
    // Searches the whole library. A second click, or a failure, ends the search and keeps what was found so far.
    void cmdSearch_Click();
    // Appends the results to the group named in `cmbGroupName`, which is created if necessary, tells how many, and
    // reads the group on show again. If the name is empty or characters had to be replaced, only a message appears.
    void cmdSave_Click();
    // The same without reading the group again. False if the name wasn't accepted. Only what the user appends can be
    // taken back: an import also brings the photographs.
    enum class Undoable { No, Yes };
    bool save(Undoable undoable);
    void cmdImport_Click();
    void lbExit_Click();

    // ---- layout: name, left, top, width, height (twips), caption ----

    Label Label1{this, {"Label1", 300, 255, 6600, 240, "Specify search items:"}};
    Label lbFilename{this, captionPlan("lbFilename", 645, "Filename:")};
    TextBox txtFilename{this, fieldPlan("txtFilename", 645)};
    Label lbTitle{this, captionPlan("lbTitle", 1065, "Title:")};
    TextBox txtTitle{this, fieldPlan("txtTitle", 1065)};
    Label lbYear{this, captionPlan("lbYear", 1485, "Year:")};
    TextBox txtYear{this, fieldPlan("txtYear", 1485)};
    Label lbPlace{this, captionPlan("lbPlace", 1905, "Place:")};
    TextBox txtPlace{this, fieldPlan("txtPlace", 1905)};
    Label lbEvent{this, captionPlan("lbEvent", 2325, "Event:")};
    TextBox txtEvent{this, fieldPlan("txtEvent", 2325)};
    Label lbPhotographer{this, captionPlan("lbPhotographer", 2745, "Photographer:")};
    TextBox txtPhotographer{this, fieldPlan("txtPhotographer", 2745)};
    Label lbPeople{this, captionPlan("lbPeople", 3165, "People:")};
    TextBox txtPeople{this, fieldPlan("txtPeople", 3165)};
    Label lbKeywords{this, captionPlan("lbKeywords", 3585, "Keywords:")};
    TextBox txtkeywords{this, fieldPlan("txtkeywords", 3585)};

    Button cmdSearch{this, {"cmdSearch", 1860, 4095, 1500, 405, "&Search"}};
    Label lbProgress{this, {"lbProgress", 3540, 4065, 3360, 240, "Searched 0 (0%) -> Found 0"}};
    PictureBox pctProgress{this, {"pctProgress", 3540, 4350, 3360, 135}};
    Shape shpProgress{&pctProgress, {.Name = "shpProgress", .Width = 0, .Height = 135}};
    Line Line1{this, {"Line1", 300, 4800, 6600, 0}};

    Label lbGroupName{this, captionPlan("lbGroupName", 5085, "Group name:")};
    ComboBox cmbGroupName{this, fieldPlan("cmbGroupName", 5085)};
    Button cmdSave{this, {"cmdSave", 1860, 5595, 3120, 405, "&Append search results to group"}};
    Button cmdImport{this, {"cmdImport", 5100, 5595, 840, 405, "&Import"}};
    Label lbExit{this, {"lbExit", 6060, 5595, 840, 405, "Exit"}};

    Label lbAppended{this, {"lbAppended", 1860, 6120, 5040, 240}};

    // Hidden: only used to list the information files.
    FileList File1{this, {.Name = "File1", .Left = 300, .Top = 6900, .Width = 1500, .Height = 1500, .Visible = false}};

private:
    // A field and the caption in front of it.
    static Plan captionPlan(std::string_view name, float top, std::string_view caption)
    {
        return {.Name = name, .Left = 300, .Top = top, .Width = 1500, .Height = 330, .Caption = caption};
    }
    static Plan fieldPlan(std::string_view name, float top)
    {
        return {.Name = name, .Left = 1860, .Top = top, .Width = 5040, .Height = 330};
    }

    void paintWindow();
    void searchLibrary();
    bool matches(const std::string& fileName, std::optional<std::string> readAhead);
    bool linesMatch(int number);
    void keep(const std::string& fileName);
    void showProgress(int searched, int count);
    bool appendResults();
    // True if the name can be used as it is; otherwise shows a message.
    bool acceptGroupName();

    Album& m_album;
    frmMain& m_main;
    CheckedArray<std::string> SearchResults;
    CheckedArray<std::int16_t> SearchYears; // of the results, at the same index
    // Not cleared between files: a match without a year gets that of the previous file.
    std::string YearText;
    bool m_isAppended = false; // by the last save
    bool m_isSaving = false;   // guards cmdSave_Click
    bool DialogBusy = false;
};

} // namespace trovarium
