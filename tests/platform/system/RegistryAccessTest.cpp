#include "platform/system/RegistryAccess.h"

#include "support/FailureOf.h"
#include "support/SmallDisk.h"
#include "support/Surroundings.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace trovarium {

namespace {

constexpr std::string_view Options = "SOFTWARE\\OmbrelaneWorks\\Trovarium\\Options";
constexpr std::string_view Import = "SOFTWARE\\OmbrelaneWorks\\Trovarium\\Import";

class RegistryAccessTest : public testing::Test {
protected:
    std::string valueOf(std::string_view keyPath, std::string_view name)
    {
        std::string value = "untouched";
        return store.ReadValue(HkeyLocalMachine, keyPath, name, value) ? value : "absent, " + value;
    }
    // What the write fails with.
    std::string write(std::string_view keyPath, std::string_view name, std::string_view value)
    {
        return failureOf([&] { EXPECT_TRUE(store.WriteValue(HkeyLocalMachine, keyPath, name, value)); });
    }
    std::size_t filesInFolder() const
    {
        const std::filesystem::directory_iterator entries(folder.path());
        return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
    }

    TemporaryFolder folder;
    RegistryAccess store{folder.path()};
};

TEST_F(RegistryAccessTest, AWrittenValueStandsAsALineUnderItsSection)
{
    EXPECT_EQ(valueOf(Options, "AutoFix"), "absent, untouched");
    EXPECT_EQ(filesInFolder(), 0U) << "reading makes no file";
    write(Options, "AutoFix", "True");
    write(Import, "LastPath", "/home\\ann\\Pictures");
    write(Options, "FirstTime", "False");
    write(Options, "AutoFix", "False");
    std::string value;
    EXPECT_FALSE(store.ReadValue(0x80000001, Options, "AutoFix", value)) << "another root is another store";
    EXPECT_EQ(folder.read("settings.txt"),
        "[SOFTWARE\\OmbrelaneWorks\\Trovarium\\Options]\n"
        "AutoFix=False\n"
        "FirstTime=False\n"
        "\n"
        "[SOFTWARE\\OmbrelaneWorks\\Trovarium\\Import]\n"
        "LastPath=/home\\ann\\Pictures\n");
    EXPECT_EQ(filesInFolder(), 1U) << "no scratch file stays";
    write("software\\ombrelaneworks\\TROVARIUM\\options", "AUTOFIX", "True");
    EXPECT_EQ(valueOf(Options, "AutoFix"), "True") << "names compare without regard to case";
}

TEST_F(RegistryAccessTest, ComesBackWithWhatALineCannotHold)
{
    const std::vector<std::string> texts{"", " ", " blanks at both ends ", "a=b=c", "[section]", "]", "100%", "%41",
        "two\r\nlines\nand\rmore", "tab\tbell\a", "\xC3\xA4\xE2\x82\xAC", std::string("nul\0l", 5), "# no comment",
        "\\"};
    for (const std::string& text : texts) {
        write(Options, text, "name " + text);
        write(text, "Value", text);
    }
    for (const std::string& text : texts) {
        EXPECT_EQ(valueOf(Options, text), "name " + text);
        EXPECT_EQ(valueOf(text, "Value"), text);
    }
}

TEST_F(RegistryAccessTest, ReadsWhatAPersonWrote)
{
    const std::string head = "[" + std::string(Options) + "]";
    const std::string absent = "absent, untouched";
    const std::vector<std::pair<std::string, std::string>> cases{{head + "\nAutoFix=False\n", "False"},
        {head + "\r\nAutoFix=False\r\n", "False"}, {"\xEF\xBB\xBF" + head + "\n\n  AutoFix = False  \n", "False"},
        {head + "\nAutoFix\nAutoFix=False\n", "False"}, {"AutoFix=False\n" + head + "\n", absent},
        {head + "\nAutoFix=\xFF\n", absent}, {head + "\nAutoFix=%FF\n", absent},
        {head + "\n[SOFTWARE\\Ombrel\nAutoFix=False\n", absent}};
    for (const auto& [text, expected] : cases) {
        folder.write("settings.txt", text);
        EXPECT_EQ(valueOf(Options, "AutoFix"), expected) << text;
    }
}

TEST_F(RegistryAccessTest, KeepsDamagedLinesWhereTheyStandAndTheOldFileOnAFullDisk)
{
    const std::string damaged =
        "lost\r\n[SOFTWARE\\OmbrelaneWorks\\Trovarium\\Options]\nAutoFix\n\xFF\xFE=1\n\n[torn\nx=y\n";
    folder.write("settings.txt", damaged);
    {
        const SmallDisk disk(16);
        EXPECT_EQ(write(Options, "AutoFix", "True"), "Disk full");
    }
    EXPECT_EQ(folder.read("settings.txt"), damaged);
    EXPECT_EQ(filesInFolder(), 1U);
    write(Options, "AutoFix", "True");
    EXPECT_EQ(folder.read("settings.txt"),
        "lost\r\n[SOFTWARE\\OmbrelaneWorks\\Trovarium\\Options]\nAutoFix\n\xFF\xFE=1\nAutoFix=True\n\n[torn\nx=y\n");
}

TEST_F(RegistryAccessTest, AStoreThatCannotBeReadFails)
{
    folder.write("file", "");
    std::filesystem::create_directories(folder.native("below/settings.txt"));
    std::filesystem::create_directory(folder.native("waiting"));
    ASSERT_EQ(mkfifo(folder.native("waiting/settings.txt").c_str(), 0600), 0);
    for (const char* name : {"file", "below", "waiting"}) {
        store = RegistryAccess(folder.native(name));
        EXPECT_EQ(failureOf([&] { valueOf(Options, "AutoFix"); }), "Path/File access error") << name;
        EXPECT_EQ(write(Options, "AutoFix", "True"), "Path/File access error") << name;
    }
}

TEST_F(RegistryAccessTest, WritesACounterInPlaceAndAllElseAnew)
{
    const std::string settings = folder.native("settings.txt");
    const std::string head = "[" + std::string(Import) + "]\n";
    struct stat old = {};
    struct stat status = {};
    const auto change = [&](const std::string& before, const std::string& value) {
        folder.write("settings.txt", before);
        stat(settings.c_str(), &old);
        write(Import, "Autonumber", value);
        EXPECT_EQ(folder.read("settings.txt"), head + "Autonumber=" + value + "\n");
        stat(settings.c_str(), &status);
        return status.st_ino == old.st_ino;
    };
    EXPECT_TRUE(change(head + "Autonumber=0099\n", "0100"));
    EXPECT_FALSE(change(head + "Autonumber=99\n", "100"));
    EXPECT_FALSE(change("\xEF\xBB\xBF" + head + "Autonumber=9\n", "1000")) << "as long as before, and all of it moves";
    std::filesystem::create_hard_link(settings, folder.native("kept.txt"));
    std::filesystem::create_directory(folder.native("elsewhere"));
    std::filesystem::rename(settings, folder.native("elsewhere/mine.txt"));
    std::filesystem::create_symlink("elsewhere/mine.txt", settings);
    ASSERT_EQ(chmod(settings.c_str(), 0640), 0);
    write(Import, "Autonumber", "1001");
    EXPECT_EQ(folder.read("kept.txt"), head + "Autonumber=1000\n");
    EXPECT_EQ(folder.read("elsewhere/mine.txt"), head + "Autonumber=1001\n");
    EXPECT_TRUE(std::filesystem::is_symlink(settings));
    ASSERT_EQ(stat(settings.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST_F(RegistryAccessTest, StandsInTheUsersConfigurationFolder)
{
    const VariableForNow home("HOME", folder.native("home"));
    for (const std::optional<std::string>& place : {std::optional(folder.native("config")),
             std::optional<std::string>("relative"), std::optional<std::string>()}) {
        const VariableForNow config("XDG_CONFIG_HOME", place);
        RegistryAccess().WriteValue(HkeyLocalMachine, Options, "Place", place.value_or("none"));
    }
    EXPECT_NE(folder.read("config/OmbrelaneWorks/settings.txt").find("Place=/"), std::string::npos);
    EXPECT_NE(folder.read("home/.config/OmbrelaneWorks/settings.txt").find("Place=none"), std::string::npos);
}

} // namespace

} // namespace trovarium
