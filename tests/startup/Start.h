#pragma once

#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "startup/Program.h"
#include "startup/UnloadAllForms.h"
#include "store/Album.h"
#include "support/KilledProcess.h"
#include "support/Robot.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <set>
#include <string>

namespace trovarium {

namespace fs = std::filesystem;

// A library in a temporary folder, its settings and the place of the installed copy beside it, and as many
// starts of the program as a test makes.
class Start : public testing::Test {
public:
    ~Start() override { end(); }

protected:
    Start()
    {
        fs::create_directory(folder.native("Library"));
        setenv("XDG_CONFIG_HOME", folder.native("config").c_str(), 1);
        setenv("XDG_DATA_HOME", folder.native("data").c_str(), 1);
    }

    void make(const std::string& programPath)
    {
        end();
        album = std::make_unique<Album>(desktop.files());
        program = std::make_unique<Program>(desktop, *album, programPath);
    }
    // The exit code of what stands before the event loop.
    int runMain()
    {
        return desktop.guarded([&] { program->Main(); });
    }
    int start()
    {
        make(folder.inside("Library"));
        return runMain();
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

    Desktop& desktop = testDesktop();
    TemporaryFolder folder{getenv(FolderVariable)};
    std::unique_ptr<Album> album;
    std::unique_ptr<Program> program;
};

} // namespace trovarium
