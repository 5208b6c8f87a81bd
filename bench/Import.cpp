// SPDX-License-Identifier: GPL-3.0-or-later

// How long a work of the import dialog takes until its last change is painted, in milliseconds.
//
//   bench_import open LIBRARY FOLDER COUNT          the dialog comes up on a folder of so many files
//   bench_import scan LIBRARY FOLDER COUNT          Auto-Scan for the one type of a tree of so many files
//   bench_import hidden-scan LIBRARY FOLDER COUNT   with the list out of sight
//   bench_import copies LIBRARY FOLDER COUNT        the first of the folder as copies, with automatic names
//   bench_import links LIBRARY FOLDER COUNT         as links
//
// Thumbnails are left out: their builder comes up and goes.

#include "check/frmThumbnail.h"
#include "import/frmImport.h"
#include "platform/files/FileService.h"
#include "platform/files/Paths.h"
#include "search/frmSearch.h"
#include "support/MainWindow.h"

#include <iostream>
#include <memory>
#include <string>

namespace trovarium {

namespace {

enum { AutoName = 2, LinksOnly = 3 }; // of the option boxes
constexpr int Jpg = 2;                // of the types

class ImportDialog {
public:
    ImportDialog(Desktop& desktop, const std::string& library)
        : m_window(desktop, library)
        , m_search(
              desktop, [this] { return std::make_unique<frmSearch>(m_window.desktop(), album(), m_window.form()); })
        , m_thumbnailBuilder(desktop, [this] { return builderThatGoes(); })
    {
    }
    ~ImportDialog()
    {
        if (m_form)
            m_form->unload();
    }
    ImportDialog(const ImportDialog&) = delete;
    ImportDialog& operator=(const ImportDialog&) = delete;

    double open(const std::string& folder)
    {
        album().Settings().SetOWSetting("Trovarium", "Import", "LastPath", fromNativePath(folder));
        return m_window.toPainted([&] {
            m_form =
                std::make_unique<frmImport>(m_window.desktop(), album(), m_window.form(), m_search, m_thumbnailBuilder);
            m_form->show();
        });
    }
    double scan()
    {
        m_form->chkFilter.forEach([](int type, CheckBox& box) { box.Value = type == Jpg ? 1 : 0; });
        return click(m_form->cmdAutoScan);
    }
    // The first files of the folder.
    double import(int count)
    {
        for (int i = 0; i < count; ++i) {
            m_form->List1.AddItem(m_form->File1.List(i));
            m_form->List2.AddItem(m_form->Dir1.Path());
        }
        return click(m_form->cmdImport);
    }

    frmImport& form() { return *m_form; }

private:
    Album& album() { return m_window.album(); }
    double click(Button& button)
    {
        m_window.paint();
        return m_window.toPainted([&] { m_window.robot().click(button); });
    }
    std::unique_ptr<frmThumbnail> builderThatGoes()
    {
        auto builder = std::make_unique<frmThumbnail>(m_window.desktop(), album(), m_window.form().video());
        builder->Activate.connect([form = builder.get()] { form->unload(); });
        return builder;
    }

    MainWindow m_window;
    FormHolder<frmSearch> m_search;
    FormHolder<frmThumbnail> m_thumbnailBuilder;
    std::unique_ptr<frmImport> m_form;
};

struct Outcome {
    double seconds;
    int count;
};

Outcome run(ImportDialog& dialog, const std::string& job, const std::string& folder, int count)
{
    const double opened = dialog.open(folder);
    frmImport& form = dialog.form();
    if (job == "open")
        return {opened, form.File1.ListCount()};
    if (job == "scan" || job == "hidden-scan") {
        form.List1.Visible = job == "scan";
        const double scanned = dialog.scan();
        return {scanned, form.List2.ListCount()};
    }
    form.chkOptions(LinksOnly).Value = job == "links" ? 1 : 0;
    form.chkOptions(AutoName).Value = job == "links" ? 0 : 1;
    const double imported = dialog.import(count);
    return {imported, form.List1.ListCount()};
}

} // namespace

} // namespace trovarium

int main(int argc, char** argv)
{
    using namespace trovarium;

    if (argc != 5) {
        std::cerr << "usage: bench_import open|scan|hidden-scan|copies|links LIBRARY FOLDER COUNT\n";
        return 2;
    }
    const std::string job = argv[1];
    const std::string library = argv[2];
    const std::string folder = argv[3];
    const int count = std::stoi(argv[4]);
    FileService files;
    Desktop desktop(argc, argv, files, Pace::Paced);
    ImportDialog dialog(desktop, library);
    const Outcome outcome = run(dialog, job, folder, count);
    std::cout << 1000 * outcome.seconds << '\n';
    if (outcome.count != count)
        std::cerr << outcome.count << " files\n";
    return outcome.count == count ? 0 : 1;
}
