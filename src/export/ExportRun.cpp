// SPDX-License-Identifier: GPL-3.0-or-later

#include "export/ExportRun.h"

#include "export/frmExport.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/ProgressBar.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "store/Album.h"
#include "store/InfoFile.h"
#include "store/LibraryFolders.h"
#include "store/Log.h"
#include "store/PhotographFiles.h"
#include "store/QuietFile.h"

#include <algorithm>
#include <array>

namespace trovarium {

namespace {

// Indexes of the boxes and options.
enum { Photograph = 0, Thumbnail = 1, Information = 2 };
enum { NativeFormat = 0, CsvFormat = 1, OverwriteInfo = 2 };
enum { OverwriteCopies = 0 };

constexpr std::string_view CsvName = "Trovarium_Info.csv";
constexpr std::string_view ThumbnailMark = "tn_";
constexpr std::string_view InfoEnding = ".info";
constexpr float BarMargin = 30; // twips by which a full bar is wider than its box

// The columns between the file name and the two sizes.
constexpr std::array<std::string_view, 7> Keys{"EVENT", "KEYWORDS", "PEOPLE", "PHOTOGRAPHER", "PLACE", "TITLE", "YEAR"};
constexpr std::string_view Header =
    "InfoFile,Event,Keywords,People,Photographer,Place,Title,Year,ImageWidth,ImageHeight";

using Values = std::array<std::string, Keys.size()>;

// The last line of a key counts; unknown keys are ignored.
void takeValue(std::string_view line, Values& values)
{
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        return;
    const auto* const key = std::find(Keys.begin(), Keys.end(), upper(line.substr(0, equals)));
    if (key != Keys.end())
        values[static_cast<std::size_t>(key - Keys.begin())] = line.substr(equals + 1);
}

// Values aren't quoted, so a comma adds a column. The columns of the two sizes are always empty.
std::string recordOf(const std::string& infoName, const Values& values)
{
    std::string record = infoName + ",";
    for (const std::string& value : values)
        record.append(value).append(",");
    return record + ",";
}

// Adds the record of one information file (N + ".info") to the CSV file, which gets its two heading lines when it is
// new. On any failure no record is written, and nothing is reported.
void WriteCsvRecord(Album& album, const std::string& infoName, const std::string& csvPath)
{
    if (!isPhotographName(infoName))
        return;
    FileService& files = album.files;
    Values values;
    bool isNew = false;
    const bool isRead = withFileQuietly(files, album.paths.InfoPath + infoName, OpenMode::Input, [&](int number) {
        while (!files.endOfFile(number))
            takeValue(files.lineInput(number), values);
        files.removeLink(csvPath); // never append through a link
        isNew = !files.exists(csvPath);
    });
    if (!isRead)
        return;
    withFileQuietly(files, csvPath, OpenMode::Append, [&](int number) {
        if (isNew) {
            files.print(number, "CSV");
            files.print(number, Header);
        }
        files.print(number, recordOf(infoName, values));
    });
}

} // namespace

ExportRun::ExportRun(frmExport& form, Album& album)
    : m_form(form)
    , m_album(album)
{
    on(form.cmdExport.Click, this, &ExportRun::cmdExport_Click);
}

// A click on "Cancel" only changes the caption: the run looks for another one, and so continues to its end.
void ExportRun::cmdExport_Click()
{
    if (m_form.cmdExport.Caption() == "Cancel") {
        m_form.cmdExport.Caption = "Import";
        return;
    }
    m_form.cmdExport.Caption = "Cancel";
    if (m_form.DialogBusy)
        return;
    m_form.DialogBusy = true;
    m_form.MousePointer = HourglassPointer;
    fillBar(m_form.pctProgress, m_form.shpProgress, 0);
    m_run.stepOver();
    m_run.run([&] { exportAll(); });
    tellErrors();
    end();
}

void ExportRun::exportAll()
{
    m_left = 0;
    m_taken.clear();
    m_destination = m_form.Dir1.Path();
    if (!m_destination.ends_with('\\'))
        m_destination += '\\';
    if (m_form.optExportInfo(CsvFormat).Value() && m_form.optExportInfo(OverwriteInfo).Value()) {
        m_run.statement([&] { m_album.files.remove(m_destination + std::string(CsvName)); });
        m_form.desktop().DoEvents();
    }
    const int count = m_form.List1.ListCount();
    const int last = std::min(count, MostFiles);
    for (int i = 0; i < last && !isEnded(); ++i) {
        exportPhotograph(m_form.List1.List(i));
        showProgress(i + 1, count);
        m_form.desktop().DoEvents();
    }
    m_left = isEnded() ? 0 : count - last;
}

// Also true if the dialog was closed with the program.
bool ExportRun::isEnded() const
{
    return m_closes || m_form.cmdExport.Caption() == "Export" || !m_form.isLoaded();
}

// Removing and copying both leave the run in the mode in which later failures end it.
void ExportRun::exportPhotograph(const std::string& name)
{
    m_form.lbProgress.Caption = "Exporting";
    m_name = name;
    m_source.reset();
    if (m_form.chkOptions(OverwriteCopies).Value() == 1)
        removeOldCopies();
    // Read after removeOldCopies, whose events may change the boxes.
    if (takes(Photograph))
        copyPhotograph();
    if (takes(Thumbnail))
        m_run.statement([&] { copy(thumbnailPath(m_album.paths, m_name), copyPath(ThumbnailMark)); });
    if (takes(Information))
        exportInfo();
}

bool ExportRun::takes(int item) const
{
    return m_form.chkExport(item).Value() == 1;
}

// Skips files that a new copy will replace: the copy may fail.
void ExportRun::removeOldCopies()
{
    const auto remove = [&](std::string_view mark, std::string_view ending = {}) {
        m_run.statement([&] {
            const std::string path = copyPath(mark, ending);
            if (!isOriginal(path) && !isTaken(path))
                m_album.files.remove(path);
        });
    };
    m_run.stepOver();
    if (!takes(Photograph))
        remove("");
    if (!takes(Thumbnail))
        remove(ThumbnailMark);
    const bool isReplaced = takes(Information) && m_form.optExportInfo(NativeFormat).Value();
    if (m_form.optExportInfo(OverwriteInfo).Value() && !isReplaced)
        remove("", InfoEnding);
    m_run.jumpToEnd();
    m_form.desktop().DoEvents();
}

// "File not found" if the name is no photograph's.
std::string ExportRun::copyPath(std::string_view mark, std::string_view ending) const
{
    if (!isPhotographName(m_name))
        throw Failure(FailureKind::FileNotFound);
    return m_destination + std::string(mark).append(m_name).append(ending);
}

const std::string& ExportRun::source()
{
    if (!m_source)
        m_source = GetPhotoLink(m_album, m_name + std::string(InfoEnding));
    return *m_source;
}

// True for a file of the library itself, whose folders may be the destination: that is never an old copy. A photograph
// may even be called "tn_a.jpg".
bool ExportRun::isOriginal(const std::string& path)
{
    const FileService& files = m_album.files;
    const AlbumPaths& paths = m_album.paths;
    const std::string name = SplitPath(path).FileName;
    return files.exists(path)
        && (files.isSameFile(path, paths.PhotoPath + name) || files.isSameFile(path, paths.ThumbnailPath + name)
            || files.isSameFile(path, paths.InfoPath + name) || files.isSameFile(path, source()));
}

// True if another photograph of this run is already there: names may differ only in case on a file system that ignores
// it, or one photograph may be named like the other's thumbnail.
bool ExportRun::isTaken(const std::string& path, const std::string& source) const
{
    const auto taken = m_taken.find(upper(path));
    return taken != m_taken.end() && taken->second.source != source
        && m_album.files.isSameFile(taken->second.target, path);
}

// An old copy that the options delete is replaced even if it is read-only, as if it had been deleted before.
void ExportRun::copy(const std::string& source, const std::string& target, bool isDeletable)
{
    if (isOriginal(target) || isTaken(target, source))
        throw Failure(FailureKind::FileAlreadyExists);
    const bool replaces = isDeletable && m_form.chkOptions(OverwriteCopies).Value() == 1;
    m_album.files.copy(source, target, replaces ? ReadOnlyTarget::IsReplaced : ReadOnlyTarget::Stays);
}

void ExportRun::take(const std::string& source, const std::string& target, bool isDeletable)
{
    copy(source, target, isDeletable);
    m_taken[upper(target)] = {source, target};
}

// Logs and skips a photograph that can't be copied. The call of jumpToEnd clears its failure.
void ExportRun::copyPhotograph()
{
    m_run.stepOver();
    m_run.statement([&] {
        const std::string target = copyPath("");
        take(source(), target);
    });
    if (m_run.standing())
        logFailure(m_album, "cmdExport_Click", *m_run.standing());
    m_run.jumpToEnd();
}

void ExportRun::exportInfo()
{
    if (m_form.optExportInfo(NativeFormat).Value()) {
        m_run.statement([&] {
            take(infoFilePath(m_album.paths, m_name), copyPath("", InfoEnding),
                m_form.optExportInfo(OverwriteInfo).Value());
        });
    } else if (m_form.optExportInfo(CsvFormat).Value()) {
        m_form.MousePointer = HourglassPointer;
        m_run.handled(
            [&] { WriteCsvRecord(m_album, m_name + std::string(InfoEnding), m_destination + std::string(CsvName)); });
        m_form.MousePointer = DefaultPointer;
    }
}

void ExportRun::showProgress(int done, int count)
{
    const float share = static_cast<float>(done) / static_cast<float>(count);
    fillBar(m_form.pctProgress, m_form.shpProgress, share * (m_form.pctProgress.ScaleWidth() + BarMargin));
}

void ExportRun::tellErrors()
{
    std::string text;
    if (m_run.standing())
        text.append("Error: ").append(m_run.standing()->description()).append("\rDisk may be full or write protected.");
    if (m_left > 0)
        text.append(text.empty() ? "Error: " : "\r\rError: ")
            .append(numberText(m_left) + " more: ")
            .append(TooManyForOneRun);
    if (!text.empty())
        m_form.desktop().prompts().messageBox(text, Message::Error, "");
}

void ExportRun::end()
{
    m_form.cmdExport.Caption = "Export";
    m_form.lbProgress.Caption = "Done";
    m_form.DialogBusy = false;
    m_form.MousePointer = DefaultPointer;
    fillBar(m_form.pctProgress, m_form.shpProgress, 0);
    if (m_closes)
        m_form.unload();
}

} // namespace trovarium
