// SPDX-License-Identifier: GPL-3.0-or-later

#include "search/frmSearch.h"

#include "browser/GroupCommands.h"
#include "browser/GroupListPane.h"
#include "browser/frmMain.h"
#include "platform/files/FileService.h"
#include "platform/files/Prefetch.h"
#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/ProgressBar.h"
#include "platform/toolkit/Prompts.h"
#include "platform/toolkit/Units.h"
#include "runtime/Lock.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/GroupFile.h"
#include "store/Log.h"
#include "store/QuietFile.h"

#include <array>
#include <cmath>
#include <string_view>
#include <utility>
#include <vector>

namespace trovarium {

namespace {

struct FieldOfLine {
    std::string_view key;
    TextBox frmSearch::*field;
};

constexpr std::string_view YearKey = "YEAR=";
constexpr std::array<FieldOfLine, 7> FieldsOfLines{{
    {"TITLE=", &frmSearch::txtTitle},
    {YearKey, &frmSearch::txtYear},
    {"PHOTOGRAPHER=", &frmSearch::txtPhotographer},
    {"PLACE=", &frmSearch::txtPlace},
    {"PEOPLE=", &frmSearch::txtPeople},
    {"EVENT=", &frmSearch::txtEvent},
    {"KEYWORDS=", &frmSearch::txtkeywords},
}};

// "*" matches any text. `text` is a line including its key, or a file name including ".info".
bool accepts(const std::string& wanted, std::string_view text)
{
    return wanted == "*" || findNoCase(text, wanted) != std::string_view::npos;
}

} // namespace

frmSearch::frmSearch(Desktop& desktop, Album& album, frmMain& main)
    : Form(desktop, {.Name = "frmSearch", .Caption = "Create Album Groups", .Width = 7200, .Height = 6600})
    , m_album(album)
    , m_main(main)
{
    paintWindow();

    on(Load, this, &frmSearch::Form_Load);
    on(Unload, this, &frmSearch::Form_Unload);
    on(KeyDown, this, &frmSearch::Form_KeyDown);
    on(cmdSearch.Click, this, &frmSearch::cmdSearch_Click);
    on(cmdSave.Click, this, &frmSearch::cmdSave_Click);
    on(cmdImport.Click, this, &frmSearch::cmdImport_Click);
    on(cmbGroupName.Enter, this, &frmSearch::cmdSave_Click);
    on(lbExit.Click, this, &frmSearch::lbExit_Click);
}

void frmSearch::paintWindow()
{
    PictureService& art = desktop().pictures();
    Picture = art.artwork("background");
    Icon = art.artwork("icon");
    Label1.Bold = true;
    Line1.BorderColor = SoftWhite;
    pctProgress.BackColor = FieldBlue;
    pctProgress.AccessibleName = "Progress";
    pctProgress.AccessibleValue = 0;
    shpProgress.FillColor = BarBlue;
    shpProgress.BorderColor = BarBlue;
    cmdSearch.Default = true;
    lbAppended.NarrowToFit = true;
    lbExit.Raised = true;
    for (const auto& [control, label] :
        std::initializer_list<std::pair<Control*, const Label*>>{{&txtFilename, &lbFilename}, {&txtTitle, &lbTitle},
            {&txtYear, &lbYear}, {&txtPlace, &lbPlace}, {&txtEvent, &lbEvent}, {&txtPhotographer, &lbPhotographer},
            {&txtPeople, &lbPeople}, {&txtkeywords, &lbKeywords}, {&cmbGroupName, &lbGroupName}})
        control->AccessibleName = std::string(withoutLast(label->Caption(), 1));
}

void frmSearch::SetNewList(const CheckedArray<std::string>& list)
{
    SearchResults = list;
}

void frmSearch::SortResultsByYear()
try {
    const int last = SearchResults.upperBound();
    bool sorted = false;
    for (int pass = 1; pass <= last && !sorted; ++pass) {
        sorted = true;
        for (int j = 1; j <= last - 1; ++j) {
            if (SearchYears(j) <= SearchYears(j + 1))
                continue;
            std::swap(SearchYears(j), SearchYears(j + 1));
            std::swap(SearchResults(j), SearchResults(j + 1));
            sorted = false;
        }
    }
} catch (const Failure& failure) {
    logFailure(m_album, "SortResultsByYear", failure);
}

void frmSearch::Form_Load()
try {
    const ListBox& groups = m_main.lstSlideGroups;
    for (int i = 0; i < groups.ListCount(); ++i)
        cmbGroupName.AddItem(groups.List(i));
    cmbGroupName.Text = "";
    txtFilename.SetFocus();
} catch (const Failure& failure) {
    logFailure(m_album, "Form_Load", failure);
}

// Ends a running search.
void frmSearch::Form_Unload()
{
    cmdSearch.Caption = "Search";
}

// Escape cancels a running search, or else closes the dialog.
void frmSearch::Form_KeyDown(int KeyCode, int /*Shift*/)
{
    if (KeyCode != EscapeKey)
        return;
    if (DialogBusy)
        cmdSearch.Caption = "Search";
    else
        lbExit_Click();
}

void frmSearch::cmdSearch_Click()
{
    if (cmdSearch.Caption() == "Cancel") {
        cmdSearch.Caption = "Search";
        return;
    }
    if (DialogBusy)
        return;
    DialogBusy = true;
    attempt([&] { searchLibrary(); });
    cmdSearch.Caption = "Search";
    DialogBusy = false;
}

void frmSearch::searchLibrary()
{
    lbProgress.Caption = "Searched 0 (0%) -> Found 0";
    lbAppended.Caption = "";
    fillBar(pctProgress, shpProgress, 0);
    File1.Pattern = "*.info";
    File1.Path = m_album.paths.InfoPath;
    File1.Refresh();
    // If the folder can't be read, the previous results stay.
    const int count = File1.ListCount();
    SearchResults.clear();
    SearchYears.clear();
    YearText.clear();
    cmdSearch.Caption = "Cancel";

    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        names.push_back(File1.List(i));
    ReadAhead readAhead(m_album.paths.InfoPath, std::move(names));
    for (int i = 0; i < count; ++i) {
        if (matches(File1.List(i), readAhead.take(static_cast<std::size_t>(i))))
            keep(File1.List(i));
        showProgress(i + 1, count);
        desktop().DoEvents();
        if (cmdSearch.Caption() == "Search")
            break;
    }
}

bool frmSearch::matches(const std::string& fileName, std::optional<std::string> readAhead)
{
    FileService& files = m_album.files;
    const int number = files.freeFile();
    bool match = false;
    const auto failure = attempt([&] {
        files.openForInput(m_album.paths.InfoPath + fileName, number, std::move(readAhead));
        match = linesMatch(number);
    });
    files.close(number);
    if (failure)
        throw Failure(*failure);
    return match && (txtFilename.Text().empty() || accepts(txtFilename.Text(), fileName));
}

// Only lines that exist are compared: a file without a place matches any place.
bool frmSearch::linesMatch(int number)
{
    std::vector<std::pair<std::string_view, std::string>> conditions;
    for (const auto& [key, field] : FieldsOfLines) {
        if (std::string wanted = (this->*field).Text(); !wanted.empty())
            conditions.emplace_back(key, std::move(wanted));
    }
    FileService& files = m_album.files;
    bool match = true;
    while (!files.endOfFile(number)) {
        const std::string line = files.lineInput(number);
        for (const auto& [key, wanted] : conditions) {
            if (!equalInCapitals(std::string_view(line).substr(0, key.size()), key))
                continue;
            if (key == YearKey)
                YearText = line.substr(key.size());
            if (!accepts(wanted, line))
                match = false;
            break;
        }
    }
    return match;
}

void frmSearch::keep(const std::string& fileName)
{
    SearchResults.append(fileName);
    SearchYears.append(0);
    if (YearText.empty())
        YearText = "0";
    // Fails if the year is no number, which ends the search.
    SearchYears(SearchYears.upperBound()) = toInt16(std::floor(strictNumber(YearText)));
}

void frmSearch::showProgress(int searched, int count)
{
    lbProgress.Caption = "Searched " + numberText(searched) + " (" + formatWhole(divide(searched, count) * 100)
        + "%) -> Found " + numberText(SearchResults.upperBound());
    fillBar(pctProgress, shpProgress,
        divideSingle(static_cast<float>(searched), static_cast<float>(count)) * pctProgress.ScaleWidth());
}

// A click during a save is ignored.
void frmSearch::cmdSave_Click()
{
    if (m_isSaving)
        return;
    const Lock whileSaving(m_isSaving);
    lbAppended.Caption = "";
    if (!save(Undoable::Yes))
        return;
    const int count = SearchResults.upperBound();
    const std::string group = '"' + std::string(trimmed(cmbGroupName.Text())) + '"';
    lbAppended.Caption = m_isAppended
        ? "Appended " + numberText(count) + (count == 1 ? " photograph to " : " photographs to ") + group
        : "Appending to " + group + " failed";
    m_main.groupList().reopenGroup();
}

bool frmSearch::save(Undoable undoable)
{
    MousePointer = HourglassPointer;
    const bool accepted = acceptGroupName();
    if (accepted) {
        const auto append = [&] { m_isAppended = appendResults(); };
        if (undoable == Undoable::Yes)
            m_main.groupCommands().history().record({cmbGroupName.Text() + ".lst"}, append);
        else
            append();
        if (m_isAppended)
            m_main.groupList().LoadGroupNames();
        m_main.groupList().LoadGroupNames();
    }
    MousePointer = DefaultPointer;
    return accepted;
}

bool frmSearch::acceptGroupName()
{
    Prompts& prompts = desktop().prompts();
    std::string name = cmbGroupName.Text();
    if (name.empty() || equalInCapitals(name, ScratchGroupName)) {
        prompts.messageBox(
            "Please create group name OR select from list to append to existing group.", Message::Notice, "");
        return false;
    }
    if (CheckGroupName(name))
        return true;
    cmbGroupName.Text = name;
    prompts.messageBox("Your 'GroupName' contained illegal characters. These were replace with the underscore "
                       "character. Press 'Append' again to accept the changes and save the search results to new "
                       "group name.",
        Message::Notice, "");
    return false;
}

bool frmSearch::appendResults()
try {
    FileService& files = m_album.files;
    const std::string path = writableGroupList(m_album, cmbGroupName.Text() + ".lst");
    return withFileQuietly(files, path, OpenMode::Append, [&](int number) {
        for (int i = 1; i <= SearchResults.upperBound(); ++i) {
            // "NAME.jpg.info" stands for "NAME.jpg".
            const std::string& name = SearchResults(i);
            const std::size_t suffix = name.rfind('.');
            if (suffix != std::string::npos)
                files.print(number, std::string_view(name).substr(0, suffix));
        }
    });
} catch (const Failure&) {
    return false;
}

// With no group on show, the import appends the new photographs only to that of all photographs. It uses this dialog to
// write them, so the results are restored afterwards.
void frmSearch::cmdImport_Click()
{
    const std::string onShow = std::exchange(m_album.group.CurrentGroupName, {});
    const CheckedArray<std::string> found = SearchResults;
    m_main.dialogs().showImport();
    SearchResults = found;
    if (onShow.empty())
        return; // the import may have opened the first group
    m_album.group.CurrentGroupName = onShow;
    if (!isGroupAsRead(m_album))
        m_main.groupList().reopenGroup();
}

void frmSearch::lbExit_Click()
try {
    unload();
} catch (const Failure& failure) {
    logFailure(m_album, "lbExit_Click", failure);
}

} // namespace trovarium
