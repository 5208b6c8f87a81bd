// SPDX-License-Identifier: GPL-3.0-or-later

#include "about/frmAbout.h"

#include "browser/MainWindow.h"

#include <filesystem>

namespace trovarium {

struct AboutTest : MainWindow {
    void put(const std::string& key, const std::string& name, const std::string& value)
    {
        registry.WriteValue(key, name, value);
    }

    const std::string tools = "SOFTWARE\\Microsoft\\Shared Tools";
    RegistryAccess registry{test.settingsFolder()};
    FormHolder<frmAbout> form = held<frmAbout>(registry);
};

TEST_F(AboutTest, ItTellsItsVersionAndStartsTheSystemsTool)
{
    const std::string unavailable = "System Information Is Unavailable At This Time";
    const std::string folder = test.folder().native("tools");
    std::filesystem::create_directory(folder);
    test.folder().write("tools/MSINFO32.EXE", "#!/bin/sh\n>\"${0%/*}/started\"\n");
    std::filesystem::permissions(folder + "/MSINFO32.EXE", std::filesystem::perms::owner_all);
    openGroup(1);
    main().dialogs().showAbout = [this] { form().showModal(); };
    inDialog(main().mnuHelpAbout, form, [&] {
        EXPECT_EQ(form().lblVersion.Caption(), "Version " TROVARIUM_VERSION);
        prompts.expectNotice(unavailable);
        robot.click(form().cmdSysInfo);
        put(tools + " Location", "MSINFO", folder);
        robot.click(form().cmdSysInfo);
        EXPECT_TRUE(robot.until([&] { return std::filesystem::exists(folder + "/started"); }));
        // The first place is taken unseen.
        put(tools + "\\MSINFO", "PATH", "/nowhere");
        prompts.expectNotice(unavailable);
        robot.click(form().cmdSysInfo);
        robot.key(form(), EscapeKey);
        EXPECT_FALSE(form.isLoaded());
    });
}

} // namespace trovarium
