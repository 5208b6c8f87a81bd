// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "startup/Program.h"
#include "support/Robot.h"
#include "support/ScriptedPrompts.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace trovarium {

namespace fs = std::filesystem;

// Names the folder of a process that acts for another one.
inline constexpr const char* FolderVariable = "KILLED_FOLDER";

// Starts of the program on a library, settings and a place of the installed copy in a temporary folder, and what its
// user does then.
struct Start : testing::Test {
    Start()
    {
        fs::create_directory(folder.native("Library"));
        setenv("XDG_CONFIG_HOME", folder.native("config").c_str(), 1);
        setenv("XDG_DATA_HOME", folder.native("data").c_str(), 1);
    }

    ~Start() override { end(); }

    // The exit code of what stands before the event loop.
    int start(const std::string& ending = {}, const FaultHook& hook = {})
    {
        end();
        album = std::make_unique<Album>(desktop.files());
        program = std::make_unique<Program>(desktop, *album, folder.inside("Library") + ending);
        desktop.files().setFaultHook(hook);
        return desktop.guarded([&] { program->Main(); });
    }
    void end()
    {
        desktop.files().setFaultHook({});
        UnloadAllForms(desktop, "");
        program.reset();
        album.reset();
    }
    // Every path that begins so below the folder, and the bytes of the files.
    std::set<std::string> everything(const std::string& beginning = {}) const
    {
        std::set<std::string> all;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder.path())) {
            const std::string path = fs::relative(entry.path(), folder.path()).string();
            if (path.starts_with(beginning))
                all.insert(entry.is_regular_file() ? path + ": " + folder.read(path) : path);
        }
        return all;
    }

    // What is done in the dialog of that entry, which is closed then.
    template <class Dialog>
    void in(Menu& entry, const char* name, const std::function<void(Dialog&)>& story)
    {
        robot.whenShown(name, [&] {
            story(dynamic_cast<Dialog&>(*desktop.activeForm()));
            desktop.activeForm()->unload();
        });
        robot.choose(entry);
    }
    void prepare()
    {
        end();
        fs::remove_all(folder.path());
        for (const std::string name : {"Library/Photos", "Library/Photo_Info", "Library/Photo_SlideGroups",
                 "Library/Photo_Thumbnails", "Library/Photo_Audio", "Library/Photo_Midi", "in", "out", "Documents"})
            fs::create_directories(folder.native(name));
        COWReg().SetOWSetting("Trovarium", "Options", "FirstTime", "False");
        for (const std::string& name : names)
            folder.write("in/" + name, plainBitmap(20, static_cast<int>(name.size())));
        desktop.files().setModified(folder.inside("in\\" + names[0]), Instant(std::chrono::seconds(1000000000)));
        for (const std::string name : {"1.jpg", "2.jpg"}) {
            folder.write("Library/Photos/" + name, plainBitmap(4, 3) + name);
            folder.write("Library/Photo_Info/" + name + ".info", "PhotoPath=\\Photos\\" + name + "\r\nTITLE=mine\r\n");
            folder.write("Library/Photo_Audio/" + name + ".wav", "RIFF" + name);
        }
        folder.write("Library/Photo_SlideGroups/Gr\u00F6\u00DFe \u5C71.lst", "1.jpg\r\n2.jpg\r\n");
    }
    // Files, without those that were removed.
    auto countIn(const std::string& place) const
    {
        return std::ranges::count_if(everything("Library/" + place + "/"),
            [](const std::string& path) { return path.find("/Removed") == path.npos; });
    }
    // Where such a file is: where it was, in the folder "Removed/" there, or "nowhere".
    static std::string placeOf(const std::string& file, const std::set<std::string>& files)
    {
        for (const std::string folder : {"", "Removed/"}) {
            const std::string moved = std::string(file).insert(file.rfind('/', file.find(": ")) + 1, folder);
            const auto found = files.lower_bound(moved);
            if (found != files.end() && found->starts_with(moved))
                return folder;
        }
        return "nowhere";
    }
    // Takes two photographs in, finds them and brings them out again. Of those that were there before, the first goes
    // behind the second, the second to a group of its own and the first out of the library.
    void travel()
    {
        frmMain& main = program->mainWindow()();
        in<frmImport>(main.mnuFileImport, "frmImport", [&](frmImport& form) {
            form.Dir1.Path = folder.inside("in");
            form.chkOptions(3).Value = 0;
            for (int i = 0; i < form.File1.ListCount(); ++i)
                form.File1.setSelected(i, true);
            robot.click(form.cmdAddFile);
            robot.click(form.cmdImport);
        });
        for (const auto& [cell, title] : {std::pair{2, "\u00C4"}, {3, "\u00C4, \u5C71"}}) {
            robot.doubleClick(main.imgThumbnail(cell));
            robot.click(main.cmdEditPhotoInfo);
            main.txtTitle.Text = title;
            if (album->view.InfoEditing) // not of a damaged file
                robot.click(main.cmdEditPhotoInfo);
            robot.click(main.pctAlbumList(0));
        }
        in<frmSearch>(main.mnuEditSearchAppend, "frmSearch", [&](frmSearch& form) {
            form.txtTitle.Text = "\u00E4";
            robot.click(form.cmdSearch);
            form.cmbGroupName.Text = "Gr\u00F6\u00DFe \u5C71";
            robot.click(form.cmdSave);
        });
        robot.click(main.pctAlbumList(1));
        robot.click(main.imgThumbnail(2));
        robot.click(main.imgThumbnail(3), LeftButton, CtrlKey);
        in<frmExport>(main.mnuFileExport, "frmExport", [&](frmExport& form) {
            form.Dir1.Path = folder.inside("out");
            form.chkExport(2).Value = 1;
            robot.click(form.cmdExport);
            form.optExportInfo(0).Value = true;
            robot.click(form.cmdExport);
        });
        ScriptedPrompts prompts(desktop);
        prompts.agreeWith("Rome");
        robot.press(main.imgThumbnail(0));
        robot.moveTo(main.pctWindow, At{300, 66});
        robot.release();
        robot.click(main.imgThumbnail(0));
        main.mnuThumbMoveNewGroup.Click.raise();
        robot.click(main.imgThumbnail(0));
        robot.choose(main.mnuEditRemoveFromAlbum);
    }

    Desktop& desktop = testDesktop();
    TemporaryFolder folder{getenv(FolderVariable)};
    std::unique_ptr<Album> album;
    std::unique_ptr<Program> program;
    const std::vector<std::string> names{"Z\u00FCrich.jpg", "\u5C71.bmp"};
    Robot robot{desktop};
};

} // namespace trovarium
