#include "import/ImportRun.h"

#include "browser/GroupListPane.h"
#include "browser/frmMain.h"
#include "check/frmThumbnail.h"
#include "import/frmImport.h"
#include "platform/files/FileService.h"
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

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trovarium {

namespace {

// The option boxes.
enum { OverwritePhotos = 0, OverwriteInfoFiles = 1, AutoName = 2, LinksOnly = 3 };

constexpr float BarMargin = 30; // twips, for the border at both ends

// From the first "." on; a name without one fails.
std::string_view allExtensionsOf(std::string_view name)
{
    const std::size_t dot = name.find('.');
    if (dot == std::string_view::npos)
        throw Failure(FailureKind::InvalidProcedureCall);
    return name.substr(dot);
}

} // namespace

// The values of one run, and its way through the list. Each run has its own: a press of Auto-Scan clears the
// dialog's guard, and then a second run can begin inside the first.
class ImportRun::Files {
public:
    Files(frmImport& form, Album& album, LongRun& run)
        : m_form(form)
        , m_album(album)
        , m_run(run)
        , NumberFormat(characterCount(form.txtAutoName(1).Text()), '0')
    {
    }

    void importAll();

    int count() const { return m_count; }
    bool cancelled() const { return RunCancelled; }
    const std::string& errors() const { return ImportErrors; }
    // Full paths in the library, from index 1 on; of links too, where no file lies.
    const CheckedArray<std::string>& imported() const { return ImportedFiles; }

private:
    bool isChecked(int option) const { return m_form.chkOptions(option).Value() == 1; }
    std::string sourceOf(int i) const;
    void refuseTornEntry(int i) const;
    void chooseName(int i);
    void takeNumber();
    void makeRoom(int i);
    void removeUnlessSource(const std::string& path, int i);
    void importFile(int i);
    void record(std::string path);
    void note(std::string_view error);
    void showProgress(int i);

    frmImport& m_form;
    Album& m_album;
    LongRun& m_run;
    std::string NumberFormat; // of the number at the beginning, which may outgrow it
    CheckedArray<std::string> ImportedFiles;
    std::int16_t m_count = 0;
    std::string ImportErrors;
    bool RunCancelled = false;
    std::string DestName; // what it was for the file before, where the statement that sets it failed
};

void ImportRun::Files::importAll()
{
    std::int16_t last = -1;
    m_run.statement([&] { last = toInt16(m_form.List1.ListCount() - 1); });
    std::vector<std::string> sources;
    for (int i = 0; i <= last && !isChecked(LinksOnly); ++i)
        attempt([&] { sources.push_back(sourceOf(i)); });
    const ReadingAhead ahead(m_album.files, sources, ReadingAhead::Copies);
    for (int i = 0; i <= last && !RunCancelled; ++i) {
        m_form.lbProgress.Caption = "Importing";
        chooseName(i);
        makeRoom(i);
        std::optional<bool> isTaken; // none where that can't be seen: a person's words may stand there
        m_run.statement([&] {
            const bool found = m_album.files.exists(m_album.paths.InfoPath + DestName + ".info");
            if (!found)
                refuseTornEntry(i);
            isTaken = found;
        });
        if (isTaken == true)
            note("File already exists");
        else if (isTaken)
            importFile(i);
        if (m_run.standing())
            note(m_run.standing()->description());
        m_run.clear();
        showProgress(i);
        m_form.desktop().DoEvents();
        // A dialog that was closed has nobody to see the rest.
        RunCancelled = m_form.cmdImport.Caption() == "Import" || !m_form.isLoaded();
    }
}

std::string ImportRun::Files::sourceOf(int i) const
{
    std::string folder = m_form.List2.List(i);
    if (!folder.ends_with('\\'))
        folder += '\\';
    return folder + m_form.List1.List(i);
}

// A scan that was cancelled leaves whole paths, and entries without a folder. A whole path would get the information
// file of its last name, which wasn't asked for and may hold a person's words; an entry without a folder would be
// the file before it once more.
void ImportRun::Files::refuseTornEntry(int i) const
{
    if (DestName.find('\\') != std::string::npos)
        throw Failure(FailureKind::BadFileNameOrNumber);
    sourceOf(i);
}

void ImportRun::Files::chooseName(int i)
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

// Used up by every file, also by one that then fails.
void ImportRun::Files::takeNumber()
{
    TextBox& number = m_form.txtAutoName(1);
    m_run.statement(
        [&] { number.Text = formatWhole(leadingNumber(number.Text()) + 1, static_cast<int>(NumberFormat.size())); });
    m_run.statement([&] {
        COWReg& settings = m_album.Settings();
        m_run.handled([&] { settings.SetOWSetting("Trovarium", "Import", "Autonumber", number.Text()); });
    });
}

// The end of each block is what the rest of the run has: with a box checked, failures jump.
void ImportRun::Files::makeRoom(int i)
{
    if (isChecked(OverwritePhotos)) {
        m_run.stepOver();
        removeUnlessSource(m_album.paths.PhotoPath + DestName, i);
        removeUnlessSource(m_album.paths.ThumbnailPath + DestName, i);
        m_run.jumpToEnd();
    }
    if (isChecked(OverwriteInfoFiles)) {
        m_run.stepOver();
        // Beside the information file, which has ".info" behind this name: no word that a person wrote is lost.
        removeUnlessSource(m_album.paths.InfoPath + DestName, i);
        m_run.jumpToEnd();
    }
}

// The library's own folders may be what is imported from.
void ImportRun::Files::removeUnlessSource(const std::string& path, int i)
{
    m_run.statement([&] {
        if (!m_album.files.isSameFile(path, sourceOf(i)))
            m_album.files.remove(path);
    });
}

// A copy that was stepped over is taken as done: the check at a later start finds the photograph missing.
void ImportRun::Files::importFile(int i)
{
    FileService& files = m_album.files;
    m_run.statement([&] { m_count = toInt16(m_count + 1); });
    const std::string SourcePath = sourceOf(i);
    const std::string path = m_album.paths.PhotoPath + DestName;
    if (!isChecked(LinksOnly))
        m_run.statement([&] { files.copy(SourcePath, path); });
    record(path);
    const std::string LinkTarget = isChecked(LinksOnly) ? SourcePath : path;
    const std::string infoFile = m_album.paths.InfoPath + SplitPath(ImportedFiles(m_count)).FileName + ".info";
    m_run.handled([&] { CreateInfoFile(files, infoFile, LinkTarget); });
}

// As entry number `m_count`, which a count beyond 16 bits leaves where it was.
void ImportRun::Files::record(std::string path)
{
    if (ImportedFiles.upperBound() < m_count)
        ImportedFiles.append({});
    ImportedFiles(m_count) = std::move(path);
}

void ImportRun::Files::note(std::string_view error)
{
    ImportErrors.append(DestName).append("    Error=").append(error).append("\r");
}

void ImportRun::Files::showProgress(int i)
{
    m_run.statement([&] {
        const float share = divideSingle(static_cast<float>(i + 1), static_cast<float>(m_form.List1.ListCount()));
        fillBar(m_form.pctProgress, m_form.shpProgress, share * m_form.pctProgress.ScaleWidth() + BarMargin);
    });
}

ImportRun::ImportRun(
    frmImport& form, Album& album, frmMain& main, FormSlot<frmSearch>& search, FormSlot<frmThumbnail>& thumbnailBuilder)
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
    if (m_form.DialogBusy)
        return;
    m_form.DialogBusy = true;
    LongRun run;
    Files files(m_form, m_album, run);
    m_form.MousePointer = HourglassPointer;
    fillBar(m_form.pctProgress, m_form.shpProgress, 0);
    run.stepOver();
    // No box has this value, so that a run with an empty field goes on.
    if (m_form.chkOptions(AutoName).Value() == -1
        && (m_form.txtAutoName(0).Text().empty() || m_form.txtAutoName(1).Text().empty())) {
        m_form.desktop().prompts().messageBox(
            "The auto-name/renumber fields both must have valid values.", Buttons::Ok, "");
        m_form.DialogBusy = false;
        return;
    }
    run.run([&] {
        files.importAll();
        run.jumpToEnd();
        if (!files.errors().empty())
            m_form.desktop().prompts().messageBox(
                "Error(s) occurred with the following files during import process.\r\r" + files.errors(), Buttons::Ok,
                "");
        if (files.count() != 0 && !files.cancelled()) {
            buildThumbnails(files);
            appendToGroups(files);
        }
        m_main.groupList().reopenGroup();
    });
    end();
}

void ImportRun::buildThumbnails(const Files& files)
{
    frmThumbnail& builder = m_thumbnailBuilder();
    builder.load();
    builder.SetMissingList(files.imported());
    builder.showModal();
}

// The search dialog is the writer of groups; it stays unshown, and keeps the name that stood in it.
void ImportRun::appendToGroups(const Files& files)
{
    CheckedArray<std::string> names = files.imported();
    for (int i = 1; i <= names.upperBound(); ++i)
        names(i) = SplitPath(names(i)).FileName + ".info";
    frmSearch& search = m_search();
    search.load();
    const std::string group = search.cmbGroupName.Text();
    const auto append = [&](std::string_view to) {
        search.cmbGroupName.Text = std::string(to);
        search.SetNewList(names);
        search.save();
    };
    const std::string onShow = m_album.group.CurrentGroupName;
    // A group that was deleted while it is on show isn't brought back.
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
    m_form.MousePointer = DefaultPointer;
    fillBar(m_form.pctProgress, m_form.shpProgress, 0);
}

} // namespace trovarium
