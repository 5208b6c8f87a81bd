#include "export/ExportRun.h"

#include "export/CsvFile.h"
#include "export/frmExport.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/ProgressBar.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "store/InfoFile.h"
#include "store/LibraryFolders.h"

namespace trovarium {

namespace {

// The boxes and options, by index.
enum { Photograph = 0, Thumbnail = 1, Information = 2 };
enum { NativeFormat = 0, CsvFormat = 1, OverwriteInfo = 2 };
enum { OverwriteCopies = 0 };

constexpr std::string_view CsvName = "Trovarium_Info.csv";
constexpr std::string_view ThumbnailMark = "tn_";
constexpr float BarMargin = 30; // twips by which a full bar is wider than its box

} // namespace

ExportRun::ExportRun(frmExport& form, Album& album)
    : m_form(form)
    , m_album(album)
{
    on(form.cmdExport.Click, this, &ExportRun::cmdExport_Click);
}

// "Cancel" promises too much: the caption that it leaves is not the one that the run looks for, so a press
// changes the caption and the run goes on to its end.
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
    if (m_run.standing())
        m_form.desktop().prompts().messageBox(
            "Error: " + std::string(m_run.standing()->description()) + "\rDisk may be full or write protected.",
            Buttons::Ok, "");
    end();
}

void ExportRun::exportAll()
{
    m_destination = m_form.Dir1.Path();
    if (!m_destination.ends_with('\\'))
        m_destination += '\\';
    if (m_form.optExportInfo(CsvFormat).Value() && m_form.optExportInfo(OverwriteInfo).Value()) {
        m_run.statement([&] { m_album.files.remove(m_destination + std::string(CsvName)); });
        m_form.desktop().DoEvents();
    }
    const int count = m_form.List1.ListCount();
    for (int i = 0; i < count; ++i) {
        exportPhotograph(m_form.List1.List(i));
        showProgress(i + 1, count);
        m_form.desktop().DoEvents();
        if (m_form.cmdExport.Caption() == "Export")
            break;
    }
}

// Removing and copying leave the run in the mode that the rest of it has: with one of the two boxes checked, what
// fails below ends the run.
void ExportRun::exportPhotograph(const std::string& name)
{
    m_form.lbProgress.Caption = "Exporting";
    const bool overwrites = m_form.chkOptions(OverwriteCopies).Value() == 1;
    const auto findSource = [&] { m_run.handled([&] { m_source = GetPhotoLink(m_album, name + ".info"); }); };
    if (overwrites) {
        findSource();
        removeOldCopies(name);
    }
    // Asked behind the events of the removal, in which the user may change it.
    if (m_form.chkExport(Photograph).Value() == 1) {
        if (!overwrites)
            findSource();
        copyPhotograph(name);
    }
    if (m_form.chkExport(Thumbnail).Value() == 1)
        m_run.statement([&] {
            m_album.files.copy(m_album.paths.ThumbnailPath + name, m_destination + std::string(ThumbnailMark) + name);
        });
    if (m_form.chkExport(Information).Value() == 1)
        exportInfo(name);
}

void ExportRun::removeOldCopies(const std::string& name)
{
    const auto removeCopy = [&](const std::string& path) {
        m_run.statement([&] {
            if (!isOriginal(path))
                m_album.files.remove(path);
        });
    };
    m_run.stepOver();
    removeCopy(m_destination + name);
    removeCopy(m_destination + std::string(ThumbnailMark) + name);
    if (m_form.optExportInfo(OverwriteInfo).Value())
        removeCopy(m_destination + name + ".info");
    m_run.jumpToEnd();
    m_form.desktop().DoEvents();
}

// The library's own folders may be the destination: what stands there is never an old copy, whichever boxes are
// checked. "tn_a.jpg" among the photographs is one of them and no thumbnail that went out.
bool ExportRun::isOriginal(const std::string& path) const
{
    const FileService& files = m_album.files;
    const AlbumPaths& paths = m_album.paths;
    const std::string name = SplitPath(path).FileName;
    return files.exists(path)
        && (files.isSameFile(path, m_source) || files.isSameFile(path, paths.PhotoPath + name)
            || files.isSameFile(path, paths.ThumbnailPath + name) || files.isSameFile(path, paths.InfoPath + name));
}

// A photograph that can't be copied is passed over: the new mode clears its failure.
void ExportRun::copyPhotograph(const std::string& name)
{
    m_run.stepOver();
    m_run.statement([&] { m_album.files.copy(m_source, m_destination + name); });
    m_run.jumpToEnd();
}

void ExportRun::exportInfo(const std::string& name)
{
    const std::string infoName = name + ".info";
    if (m_form.optExportInfo(NativeFormat).Value()) {
        m_run.statement([&] { m_album.files.copy(m_album.paths.InfoPath + infoName, m_destination + infoName); });
    } else if (m_form.optExportInfo(CsvFormat).Value()) {
        m_form.MousePointer = HourglassPointer;
        m_run.handled([&] { WriteCsvRecord(m_album, infoName, m_destination + std::string(CsvName)); });
        m_form.MousePointer = DefaultPointer;
    }
}

void ExportRun::showProgress(int done, int count)
{
    const float share = static_cast<float>(done) / static_cast<float>(count);
    fillBar(m_form.pctProgress, m_form.shpProgress, share * (m_form.pctProgress.ScaleWidth() + BarMargin));
}

void ExportRun::end()
{
    m_form.cmdExport.Caption = "Export";
    m_form.lbProgress.Caption = "Done";
    m_form.DialogBusy = false;
    m_form.MousePointer = DefaultPointer;
    fillBar(m_form.pctProgress, m_form.shpProgress, 0);
}

} // namespace trovarium
