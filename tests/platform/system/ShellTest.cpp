#include "platform/system/Shell.h"
#include "platform/files/FileTest.h"
#include "support/Robot.h"
#include "support/Surroundings.h"

namespace trovarium {

namespace {

class ShellTest : public FileTest {
protected:
    ~ShellTest() override { std::filesystem::current_path(before); }

    void program(const std::filesystem::path& name, std::string_view text = "#!/bin/sh\n") const
    {
        std::filesystem::create_directories(folder.path() / name.parent_path());
        folder.write(name.string(), text);
        std::filesystem::permissions(folder.native(name.string()), std::filesystem::perms::owner_all);
    }

    const std::filesystem::path before = std::filesystem::current_path();
};

TEST_F(ShellTest, TheProgramsFolderIsTheOneItWasStartedFrom)
{
    for (const char* name : {"bin/trovarium", "other/tool", "Album/here", "far/away/trovarium", "far/trovarium"})
        program(name);
    expect({{"link Album\\trovarium > ../bin/trovarium", ""}, {"link away > far/away", ""},
        {"makeFolder other\\bin", ""}, {"put bin\\notes > no program", ""}});
    const VariableForNow path("PATH", folder.native("bin/nowhere") + "::" + folder.native("other"));
    std::filesystem::current_path(folder.native("Album"));
    const std::string image = fromNativePath(std::filesystem::canonical("/proc/self/exe").parent_path().string());
    const Deeds cases{{folder.native("Album//./trovarium"), at("Album")}, {"./trovarium", at("Album")},
        {"/../.." + folder.native("away/trovarium"), at("away")}, {"../other/bin/../../bin/trovarium", at("bin")},
        {"tool", at("other")}, {"here", at("Album")}, // an empty place in the search path is the working folder
        {folder.native("away/../trovarium"), at("away\\..")}, {"notes", image}, {"", image}, {"../bin/notes", image}};
    for (const auto& [argument0, expected] : cases)
        EXPECT_EQ(programPath(argument0), expected) << argument0;
    workInRoot();
    EXPECT_EQ(std::filesystem::current_path(), "/");
}

TEST_F(ShellTest, HandsADocumentOfAnyNameToTheDesktopAndStartsAProgramApart)
{
    program("bin/xdg-open", "#!/bin/sh\nprintf %s \"$1\" >opened.new && mv opened.new opened\n");
    program("tool", "#!/bin/sh\n>started\n");
    program("f\xFC r/Help/index.html");
    folder.write("text", "no program");
    std::filesystem::current_path(folder.path());
    const VariableForNow path("PATH", folder.native("bin") + ":" + getenv("PATH"));
    EXPECT_LE(ShellOpenDocument(at("gone.html"), NormalWindow), 32);
    EXPECT_GT(ShellOpenDocument(at("f\xFC r\\help\\index.html"), NormalWindow), 32);
    for (const std::string& name : {at("text"), at("gone"), at("bin"), std::string("tool")})
        EXPECT_EQ(failureOf([&] { startProgram(name); }), NoFile) << name;
    startProgram(at("tool"));
    ASSERT_TRUE(Robot(testDesktop()).until([&] { return onDisk().count("opened") + onDisk().count("started") == 2; }));
    EXPECT_EQ(folder.read("opened"), "file://" + folder.path() + "/f%FC%20r/Help/index.html");
}

} // namespace

} // namespace trovarium
