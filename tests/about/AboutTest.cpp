#include "about/frmAbout.h"

#include "browser/MainWindow.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Units.h"

#include <filesystem>

namespace trovarium {

class AboutTest : public MainWindow {
protected:
    void put(const std::string& key, const std::string& name, const std::string& value)
    {
        registry.WriteValue(key, name, value);
    }

    const std::string tools = "SOFTWARE\\Microsoft\\Shared Tools";
    RegistryAccess registry{test.settingsFolder()};
    FormHolder<frmAbout> form{desktop, [this] { return std::make_unique<frmAbout>(desktop, test.album(), registry); }};
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
    robot.whenShown("frmAbout", [&] {
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
    });
    robot.choose(main().mnuHelpAbout);
    EXPECT_FALSE(form.isLoaded());
}

TEST_F(AboutTest, ValuesAreReadByTheirKind)
{
    const std::string longest(1023, 'a');
    std::string value;
    for (const auto& [stored, text] :
        {std::pair{longest, longest}, {"dword:00000100", "256"}, {"dword:ffffffff", "-1"}, {"dword:1", "dword:1"},
            {"dword:F403020G", "dword:F403020G"}, {"word :F4030201", "word :F4030201"}, {"", ""}}) {
        put("key", "name", stored);
        EXPECT_TRUE(form().GetKeyValue(HkeyLocalMachine, "key", "name", value)) << stored;
        EXPECT_EQ(value, text);
    }
    put("key", "name", longest + "a");
    EXPECT_FALSE(form().GetKeyValue(HkeyLocalMachine, "key", "name", value));
}

} // namespace trovarium
