// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/MainWindow.h"
#include "check/frmThumbnail.h"
#include "import/frmImport.h"
#include "search/frmSearch.h"
#include "support/Surroundings.h"
#include "support/TemporaryFolder.h"

#include <filesystem>

namespace trovarium {

// The import dialog over the main window, at the folder of sources; each story runs in `inDialog`.
struct ImportWindow : MainWindow {
    ImportWindow() { test.setSetting("Import", "LastPath", sources()); }

    // Opens the main window, and the dialog by its entry on the File menu; closes it behind the story.
    void inDialog(const std::function<void()>& story)
    {
        openGroup(1);
        main().dialogs().showImport = [this] { form().showModal(); };
        MainWindow::inDialog(main().mnuFileImport, form, story);
    }

    std::string sources() const { return m_sources.inside(); }
    // In the folder of sources; a name may lead through folders, which are made.
    void putSources(const std::vector<std::string>& names, std::string_view bytes = "x")
    {
        for (const std::string& name : names) {
            std::filesystem::create_directories(std::filesystem::path(m_sources.native(name)).parent_path());
            m_sources.write(name, bytes);
        }
    }

    // The list as "folder|name ", folders told from the folder of sources; "-" for an entry without one.
    std::string entries()
    {
        std::string all;
        for (int i = 0; i < form().List1.ListCount(); ++i)
            all += (i < form().List2.ListCount() ? form().List2.List(i) : "-") + "|" + form().List1.List(i) + " ";
        for (std::size_t at = 0; (at = all.find(sources())) != std::string::npos;)
            all.erase(at, sources().size());
        return all;
    }

    TemporaryFolder m_sources;
    ScopedEnv m_home{"HOME", test.folder().path()};
    FormHolder<frmSearch> search = held<frmSearch>(main());
    FormHolder<frmThumbnail> thumbnails = held<frmThumbnail>(video);
    FormHolder<frmImport> form = held<frmImport>(main(), search, thumbnails);
};

} // namespace trovarium
