// SPDX-License-Identifier: GPL-3.0-or-later

#include "import/ImportRun.h"

#include "browser/GroupListPane.h"
#include "browser/frmMain.h"
#include "check/frmThumbnail.h"
#include "import/frmImport.h"
#include "platform/files/FileService.h"
#include "platform/files/Prefetch.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/ProgressBar.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/LongRun.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "search/frmSearch.h"
#include "store/Album.h"
#include "store/GroupFile.h"
#include "store/InfoFile.h"
#include "store/LibraryFolders.h"
#include "store/Log.h"
#include "store/PhotographFiles.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

namespace {

// Indexes of the option boxes.
enum { OverwritePhotos = 0, OverwriteInfoFiles = 1, AutoName = 2, LinksOnly = 3 };

constexpr float BarMargin = 30; // twips, for the border at both ends

// Everything from the first "." on; fails without one.
std::string_view allExtensionsOf(std::string_view name)
{
    const std::size_t dot = name.find('.');
    if (dot == std::string_view::npos)
        throw Failure(FailureKind::InvalidProcedureCall);
    return name.substr(dot);
}

} // namespace

ImportRun::ImportRun(frmImport& form, Album& album, frmMain& main, FormHolder<frmSearch>& search,
    FormHolder<frmThumbnail>& thumbnailBuilder)
    : m_form(form)
    , m_album(album)
    , m_main(main)
    , m_search(search)
    , m_thumbnailBuilder(thumbnailBuilder)
{
    on(form.cmdImport.Click, this, &ImportRun::cmdImport_Click);
}

void ImportRun::cmdImport_Click()
{
    if (m_form.cmdImport.Caption() == "Cancel") {
        m_form.cmdImport.Caption = "Import";
        return;
    }
    m_form.cmdImport.Caption = "Cancel";
    if (m_form.DialogBusy || m_isRunning) // the Auto-Scan button may have cleared DialogBusy
        return;
    m_form.DialogBusy = true;
    NumberFormat = static_cast<int>(characterCount(m_form.txtAutoName(1).Text()));
    ImportedFiles.clear();
    ImportErrors.clear();
    DestName.clear();
    RunCancelled = false;
    m_form.MousePointer = HourglassPointer;
    fillBar(m_form.pctProgress, m_form.shpProgress, 0);
    m_run.stepOver();
    // A box never has this value, so a run with an empty field continues.
    if (m_form.chkOptions(AutoName).Value() == -1
        && (m_form.txtAutoName(0).Text().empty() || m_form.txtAutoName(1).Text().empty())) {
        m_form.desktop().prompts().messageBox(
            "The auto-name/renumber fields both must have valid values.", Message::Notice, "");
        m_form.DialogBusy = false;
        return;
    }
    m_isRunning = true;
    m_form.settleList(); // adding a file during the run reverts this
    bool isFinished = false;
    m_run.run([&] {
        importAll();
        m_run.jumpToEnd();
        isFinished = !RunCancelled && m_form.List1.ListCount() <= MostFiles;
        if (!ImportErrors.empty())
            m_form.desktop().prompts().messageBox(
                "Error(s) occurred with the following files during import process.\r\r" + ImportErrors, Message::Error,
                "");
        if (ImportedFiles.upperBound() != 0 && !RunCancelled) {
            buildThumbnails();
            appendToGroups();
        }
        m_main.groupList().reopenGroup();
    });
    if (!isFinished)
        m_form.unsettleList();
    end();
}

void ImportRun::importAll()
{
    const int listed = m_form.List1.ListCount();
    const int count = std::min(listed, MostFiles);
    std::vector<std::string> sources;
    for (int i = 0; i < count && !isChecked(LinksOnly); ++i)
        attempt([&] { sources.push_back(sourceOf(i)); });
    PrefetchScope prefetch(sources, PrefetchScope::LargeFiles);
    for (int i = 0; i < count && !RunCancelled; ++i) {
        m_form.lbProgress.Caption = "Importing";
        importEntry(i);
        prefetch.advance();
        showProgress(i);
        m_form.desktop().DoEvents();
        // Also cancelled if the dialog was closed with the program.
        RunCancelled = m_form.cmdImport.Caption() == "Import" || !m_form.isLoaded();
    }
    if (listed > count && !RunCancelled)
        note(numberText(listed - count) + " more", TooManyForOneRun);
}

bool ImportRun::isChecked(int option) const
{
    return m_form.chkOptions(option).Value() == 1;
}

std::string ImportRun::sourceOf(int i) const
{
    std::string folder = m_form.List2.List(i);
    if (!folder.ends_with('\\'))
        folder += '\\';
    return folder + m_form.List1.List(i);
}

// An import may read from the library's own folders.
bool ImportRun::isSource(const std::string& path, int i) const
{
    return m_album.files.isSameFile(path, sourceOf(i));
}

void ImportRun::importEntry(int i)
{
    chooseName(i);
    // With one of these boxes checked, later failures abort the run.
    if (isChecked(OverwritePhotos) || isChecked(OverwriteInfoFiles))
        m_run.jumpToEnd();
    m_run.statement([&] {
        if (isUnusable(i))
            note(DestName, describe(FailureKind::BadFileNameOrNumber));
        else if (makeRoom(i))
            importFile(i);
        else
            note(DestName, describe(FailureKind::FileAlreadyExists));
    });
    if (m_run.standing())
        note(DestName, m_run.standing()->description());
    m_run.clear();
}

void ImportRun::chooseName(int i)
{
    const ListBox& names = m_form.List1;
    if (!isChecked(AutoName)) {
        m_run.statement([&] { DestName = names.List(i); });
        return;
    }
    m_run.statement([&] {
        const std::string_view extensions = allExtensionsOf(names.List(i));
        DestName = m_form.txtAutoName(0).Text() + m_form.txtAutoName(1).Text() + std::string(extensions);
    });
    takeNumber();
}

// Every file uses up a number, even if its import then fails.
void ImportRun::takeNumber()
{
    TextBox& number = m_form.txtAutoName(1);
    m_run.statement([&] { number.Text = formatWhole(leadingNumber(number.Text()) + 1, NumberFormat); });
    m_run.statement([&] {
        COWReg& settings = m_album.Settings();
        m_run.handled([&] { settings.SetOWSetting("Trovarium", "Import", "Autonumber", number.Text()); });
    });
}

// Whether an entry lacks its folder, or its name isn't valid: a scan empties the folders of earlier entries, a
// cancelled scan leaves full paths as names, and the typed prefix and number may contain separators. A full path as a
// name would overwrite the information file of its last component.
bool ImportRun::isUnusable(int i) const
{
    const ListBox& folders = m_form.List2;
    return !isPhotographName(m_form.List1.List(i)) || !isPhotographName(DestName) || i >= folders.ListCount()
        || folders.List(i).empty();
}

// Removes what the boxes allow to overwrite. False if the library knows the photograph or its file is still there.
bool ImportRun::makeRoom(int i)
{
    FileService& files = m_album.files;
    const bool isKnown = files.exists(infoFilePath(m_album.paths, DestName));
    if (isChecked(OverwritePhotos) && !isKnown)
        setOldAside(i);
    // The path lacks the ending ".info". So no information file is deleted, and nothing that the user wrote is lost.
    const std::string stray = m_album.paths.InfoPath + DestName;
    if (isChecked(OverwriteInfoFiles))
        attempt([&] {
            if (!isSource(stray, i))
                files.remove(stray);
        });
    const std::string photograph = photographPath(m_album.paths, DestName);
    return !isKnown && (!files.exists(photograph) || isSource(photograph, i));
}

// Moves an old photograph to "Removed" and deletes its thumbnail, unless that file is the entry's own source. The
// source may also be in "Removed" already.
void ImportRun::setOldAside(int i)
{
    const AlbumPaths& paths = m_album.paths;
    const std::string thumbnail = thumbnailPath(paths, DestName);
    attempt([&] {
        if (!isSource(paths.PhotoPath + DestName, i) && !isSource(paths.PhotoPath + "Removed\\" + DestName, i))
            setAside(m_album.files, paths.PhotoPath, DestName);
    });
    attempt([&] {
        if (!isSource(thumbnail, i))
            m_album.files.remove(thumbnail);
    });
}

// If a failed copy was skipped, the entry still counts as imported: the start-up check will find it missing.
void ImportRun::importFile(int i)
{
    const std::string SourcePath = sourceOf(i);
    const std::string path = photographPath(m_album.paths, DestName);
    if (!isChecked(LinksOnly))
        m_run.statement([&] { copy(SourcePath, path); });
    ImportedFiles.append(path);
    const std::string LinkTarget = isChecked(LinksOnly) ? SourcePath : path;
    m_run.handled([&] { CreateInfoFile(m_album.files, infoFilePath(m_album.paths, DestName), LinkTarget); });
}

// Logs the failure, which may be reported nowhere else.
void ImportRun::copy(const std::string& source, const std::string& target)
try {
    m_album.files.copy(source, target);
} catch (const Failure& failure) {
    logFailure(m_album, "cmdImport_Click", failure);
    throw;
}

void ImportRun::note(std::string_view name, std::string_view error)
{
    ImportErrors.append(readablePath(name)).append("    Error=").append(error).append("\r");
}

void ImportRun::showProgress(int i)
{
    m_run.statement([&] {
        const float share = divideSingle(static_cast<float>(i + 1), static_cast<float>(m_form.List1.ListCount()));
        fillBar(m_form.pctProgress, m_form.shpProgress, share * m_form.pctProgress.ScaleWidth() + BarMargin);
    });
}

void ImportRun::buildThumbnails()
{
    frmThumbnail& builder = m_thumbnailBuilder();
    builder.load();
    builder.SetMissingList(ImportedFiles);
    builder.showModal();
}

// Uses the search dialog, without showing it, and restores its group name.
void ImportRun::appendToGroups()
{
    CheckedArray<std::string> names = ImportedFiles;
    for (int i = 1; i <= names.upperBound(); ++i)
        names(i) = SplitPath(names(i)).FileName + ".info";
    frmSearch& search = m_search();
    search.load();
    const std::string group = search.cmbGroupName.Text();
    const auto append = [&](std::string_view to) {
        search.cmbGroupName.Text = std::string(to);
        search.SetNewList(names);
        search.save(frmSearch::Undoable::No);
    };
    const std::string onShow = m_album.group.CurrentGroupName;
    // Doesn't recreate a group that was deleted while on show.
    attempt([&] {
        if (!isAllPhotosGroup(onShow) && !onShow.empty() && hasGroupList(m_album, onShow + ".lst"))
            append(onShow);
    });
    append(AllPhotosGroupName);
    search.cmbGroupName.Text = group;
}

void ImportRun::end()
{
    m_form.cmdImport.Caption = "Import";
    m_form.lbProgress.Caption = "Done";
    m_form.DialogBusy = false;
    m_isRunning = false;
    m_form.MousePointer = DefaultPointer;
    fillBar(m_form.pctProgress, m_form.shpProgress, 0);
}

} // namespace trovarium
