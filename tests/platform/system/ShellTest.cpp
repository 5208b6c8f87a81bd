// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/system/Shell.h"
#include "platform/files/FileTest.h"
#include "support/Robot.h"
#include "support/Surroundings.h"

namespace trovarium {

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
    const std::filesystem::path image = std::filesystem::canonical("/proc/self/exe");
    for (const char* sub : {"bin", "other/bin", "Album", "far/away"})
        std::filesystem::create_directories(folder.native(sub));
    for (const char* name : {"bin/trovarium", "far/away/trovarium", "far/trovarium"})
        std::filesystem::create_symlink(image, folder.native(name));
    program("bin/another");
    expect({{"link Album\\trovarium > ../bin/trovarium", ""}, {"link away > far/away", ""}});
    std::filesystem::current_path(folder.native("Album"));
    const std::string own = fromNativePath(image.parent_path().string());
    const Steps cases{{folder.native("Album//./trovarium"), at("Album")}, {"./trovarium", at("Album")},
        {"trovarium", at("Album")}, {"/../.." + folder.native("away/trovarium"), at("away")},
        {"../other/bin/../../bin/trovarium", at("bin")}, {folder.native("away/../trovarium"), at("away\\..")},
        {"../bin/another", own}, {"gone", own}, {"", own}};
    for (const auto& [startedAs, expected] : cases)
        EXPECT_EQ(programPath(startedAs), expected) << startedAs;
    EXPECT_EQ(programPath(), own);
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
    const ScopedEnv path("PATH", folder.native("bin") + ":" + getenv("PATH"));
    EXPECT_LE(ShellOpenDocument(at("gone.html"), NormalWindow), 32);
    EXPECT_GT(ShellOpenDocument(at("f\xFC r\\help\\index.html"), NormalWindow), 32);
    for (const std::string& name : {at("text"), at("gone"), at("bin"), std::string("tool")})
        EXPECT_EQ(failureOf([&] { startProgram(name); }), NoFile) << name;
    startProgram(at("tool"));
    ASSERT_TRUE(Robot(testDesktop()).until([&] { return onDisk().count("opened") + onDisk().count("started") == 2; }));
    EXPECT_EQ(folder.read("opened"), "file://" + folder.path() + "/f%FC%20r/Help/index.html");
}

} // namespace trovarium
