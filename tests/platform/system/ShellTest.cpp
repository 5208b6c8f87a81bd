#include "platform/system/Shell.h"

#include "support/FailureOf.h"
#include "support/Robot.h"
#include "support/Surroundings.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace trovarium {

namespace {

using std::filesystem::perms;

class ShellTest : public testing::Test {
protected:
    ~ShellTest() override { std::filesystem::current_path(before); }

    void program(const std::string& name, std::string_view text = "#!/bin/sh\n") const
    {
        std::filesystem::create_directories(std::filesystem::path(folder.native(name)).parent_path());
        folder.write(name, text);
        std::filesystem::permissions(folder.native(name), perms::owner_all);
    }

    const std::filesystem::path before = std::filesystem::current_path();
    TemporaryFolder folder;
};

TEST_F(ShellTest, TheProgramsFolderIsTheOneItWasStartedFrom)
{
    for (const char* name : {"bin/trovarium", "other/trovarium", "other/tool", "other/bin/tool", "Album/here",
             "far/away/trovarium", "far/trovarium"})
        program(name);
    std::filesystem::create_symlink("../bin/trovarium", folder.native("Album/trovarium"));
    std::filesystem::create_directory_symlink("bin", folder.native("linked"));
    std::filesystem::create_directory_symlink("far/away", folder.native("away"));
    folder.write("bin/notes", "no program");
    const VariableForNow path(
        "PATH", folder.native("bin/nowhere") + "::" + folder.native("other") + ":" + folder.native("bin"));
    std::filesystem::current_path(folder.native("Album"));

    const std::string image = fromNativePath(std::filesystem::canonical("/proc/self/exe").parent_path().string());
    const std::string album = folder.inside("Album");
    const std::vector<std::pair<std::string, std::string>> cases{{folder.native("Album/trovarium"), album},
        {folder.native("linked/trovarium"), folder.inside("linked")}, {folder.native("Album//./trovarium"), album},
        {"./trovarium", album}, {"../bin/trovarium", folder.inside("bin")},
        {"../other/bin/../../bin/trovarium", folder.inside("bin")}, {"tool", folder.inside("other")},
        {"here", album}, // an empty place in the search path is the working folder
        {folder.native("away/../trovarium"), folder.inside("away\\..")}, {"notes", image}, {"", image},
        {folder.native("Album/gone"), image}};
    for (const auto& [argument0, expected] : cases)
        EXPECT_EQ(programPath(argument0), expected) << argument0;
}

TEST_F(ShellTest, HandsADocumentOfAnyNameToTheDesktopAndStartsAProgramApart)
{
    program("bin/xdg-open", "#!/bin/sh\nprintf %s \"$1\" >opened.new && mv opened.new opened\n");
    program("tool", "#!/bin/sh\n>started\n");
    std::filesystem::create_directories(folder.native("f\xFC r/Help"));
    folder.write("f\xFC r/Help/index.html", "<html>");
    folder.write("text", "no program");
    std::filesystem::current_path(folder.path());
    {
        const VariableForNow path("PATH", folder.native("bin") + ":" + getenv("PATH"));
        for (const std::string& missing : {folder.inside("gone.html"), std::string("text"), std::string()})
            EXPECT_LE(ShellOpenDocument(missing, NormalWindow), 32) << missing;
        EXPECT_GT(ShellOpenDocument(folder.inside("f\xFC r\\help\\index.html"), NormalWindow), 32);
    }
    for (const std::string& path :
        {folder.inside("text"), folder.inside("gone"), folder.inside(), std::string("tool"), std::string()})
        EXPECT_EQ(failureOf([&] { startProgram(path); }), "File not found") << path;
    startProgram(folder.inside("tool"));
    const auto isThere = [&](const char* name) { return std::filesystem::exists(folder.native(name)); };
    ASSERT_TRUE(Robot(testDesktop()).until([&] { return isThere("opened") && isThere("started"); }));
    EXPECT_EQ(folder.read("opened"), "file://" + folder.path() + "/f%FC%20r/Help/index.html");
    const VariableForNow path("PATH", folder.native("nowhere"));
    EXPECT_LE(ShellOpenDocument(folder.inside("text"), NormalWindow), 32) << "nobody to open it";
}

} // namespace

} // namespace trovarium
