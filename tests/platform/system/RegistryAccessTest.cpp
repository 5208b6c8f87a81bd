// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/system/RegistryAccess.h"
#include "platform/files/FileTest.h"
#include "support/Surroundings.h"

namespace trovarium {

const std::string Options = "SOFTWARE\\OmbrelaneWorks\\Trovarium\\Options";
const std::string Head = "[" + Options + "]\n";

class RegistryAccessTest : public FileTest {
protected:
    std::string valueOf(std::string_view keyPath, std::string_view name)
    {
        std::string value = "untouched";
        return store.ReadValue(keyPath, name, value) ? value : "absent, " + value;
    }
    // What the write fails with.
    std::string write(std::string_view keyPath, std::string_view name, std::string_view value)
    {
        return failureOf([&] { EXPECT_TRUE(store.WriteValue(keyPath, name, value)); });
    }

    RegistryAccess store{folder.path()};
};

TEST_F(RegistryAccessTest, AWrittenValueStandsAsALineUnderItsSection)
{
    EXPECT_EQ(valueOf(Options, "AutoFix"), "absent, untouched");
    EXPECT_TRUE(onDisk().empty()) << "reading makes no file";
    write(Options, "AutoFix", "True");
    write("Import", "LastPath", "/home\\ann\\Pictures");
    write(Options, "FirstTime", "False");
    write("software\\ombrelaneworks\\TROVARIUM\\options", "AUTOFIX", "False");
    EXPECT_EQ(folder.read("settings.txt"),
        Head + "AUTOFIX=False\nFirstTime=False\n\n[Import]\nLastPath=/home\\ann\\Pictures\n");
    EXPECT_EQ(onDisk().size(), 1U) << "no scratch file stays";
    const Names texts{"", " ", " both ends ", "a=b=c", "[section]", "]", "100%", "%41", "two\r\nlines\nand\rmore",
        "tab\tbell\a\x7F", "ä€", std::string("nul\0l", 5), "# none", "\\"};
    for (const std::string& text : texts)
        EXPECT_EQ(write(Options, text, "name " + text) + write(text, "Value", text), "");
    for (const std::string& text : texts)
        EXPECT_EQ(valueOf(Options, text) + valueOf(text, "Value"), "name " + text + text);
}

TEST_F(RegistryAccessTest, ReadsWhatAPersonWrote)
{
    const std::string absent = "absent, untouched";
    const Steps cases{{"\xEF\xBB\xBF" + Head + "\n  AutoFix = False  \r\n", "False"},
        {Head + "AutoFix\nautofix=%4g%g4%4%\n", "%4g%g4%4%"}, {Head + "AutoFix=%4a", "J"},
        {"AutoFix=False\n" + Head, absent}, {Head + "AutoFix=\xFF\n", absent}, {Head + "AutoFix=%FF\n", absent},
        {Head + "[SOFTWARE\\Ombrel\nAutoFix=False\n", absent}};
    for (const auto& [text, expected] : cases) {
        folder.write("settings.txt", text);
        EXPECT_EQ(valueOf(Options, "AutoFix"), expected) << text;
    }
}

TEST_F(RegistryAccessTest, KeepsDamagedLinesWhereTheyStandAndTheOldFileOnAFullDisk)
{
    const std::string damaged = Head + "AutoFix\n\xFF\xFE=1\n";
    const Steps cases{{"lost\r\n" + damaged + "\n[torn\nx=y\n", "lost\r\n" + damaged + "AutoFix=True\n\n[torn\nx=y\n"},
        {"[one line]\n", "[one line]\n\n" + Head + "AutoFix=True\n"}};
    for (const auto& [before, after] : cases) {
        folder.write("settings.txt", before);
        for (const int room : {8, 1000}) {
            const SmallDisk disk(room);
            EXPECT_EQ(write(Options, "AutoFix", "True"), room == 8 ? "Disk full" : "");
            EXPECT_EQ(folder.read("settings.txt"), room == 8 ? before : after);
            EXPECT_EQ(onDisk().size(), 1U);
        }
    }
    expect({{"makeFolder waiting", ""}, {"pipe waiting\\settings.txt", "0"}});
    for (const char* name : {"settings.txt", "waiting"}) {
        store = RegistryAccess(folder.native(name));
        EXPECT_EQ(failureOf([&] { valueOf(Options, "AutoFix"); }), NoAccess) << name;
        EXPECT_EQ(write(Options, "AutoFix", "True"), NoAccess) << name;
    }
}

TEST_F(RegistryAccessTest, ReplacesTheFileAsAWholeWhereALinkLeads)
{
    makeFolder("sub");
    folder.write("sub/mine", Head + "Autonumber=1000\n");
    expect({{"hardLink kept > sub/mine", ""}, {"link settings.txt > sub/mine", ""}});
    ASSERT_EQ(chmod(folder.native("sub/mine").c_str(), 0640), 0);
    write(Options, "Autonumber", "1001");
    expect({{"bytes kept", Head + "Autonumber=1000\n"}, {"bytes sub\\mine", Head + "Autonumber=1001\n"}});
    EXPECT_EQ(status("sub/mine").st_mode & 0777U, 0640U);
}

TEST_F(RegistryAccessTest, StandsInTheUsersHomeWhereTheConfigurationFolderIsRelative)
{
    const ScopedEnv home("HOME", folder.path());
    const ScopedEnv config("XDG_CONFIG_HOME", "relative");
    RegistryAccess().WriteValue(Options, "Place", "home");
    EXPECT_EQ(folder.read(".config/OmbrelaneWorks/settings.txt"), Head + "Place=home\n");
}

} // namespace trovarium
