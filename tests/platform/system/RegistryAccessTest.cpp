#include "platform/system/RegistryAccess.h"

#include "support/FailureOf.h"
#include "support/Surroundings.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
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
    void write(std::string_view keyPath, std::string_view name, std::string_view value)
    {
        EXPECT_TRUE(store.WriteValue(HkeyLocalMachine, keyPath, name, value));
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
    const std::string head = "[SOFTWARE\\OmbrelaneWorks\\Trovarium\\Options]";
    const std::vector<std::pair<std::string, std::string>> cases{
        {head + "\nAutoFix=False\n", "False"},
        {head + "\r\nAutoFix=False\r\n", "False"},
        {"\xEF\xBB\xBF" + head + "\n\n  AutoFix = False  \n", "False"},
        {head + "\nAutoFix\nAutoFix=False\n", "False"},
        {"AutoFix=False\n" + head + "\n", "absent, untouched"},
        {head + "\nAutoFix=\xFF\n", "absent, untouched"},
        {head + "\nAutoFix=%FF\n", "absent, untouched"},
        {head + "\n[SOFTWARE\\Ombrel\nAutoFix=False\n", "absent, untouched"},
    };
    for (const auto& [text, expected] : cases) {
        folder.write("settings.txt", text);
        EXPECT_EQ(valueOf(Options, "AutoFix"), expected) << text;
    }
}

TEST_F(RegistryAccessTest, KeepsDamagedLinesWhereTheyStand)
{
    const std::string damaged =
        "lost\r\n[SOFTWARE\\OmbrelaneWorks\\Trovarium\\Options]\nAutoFix\n\xFF\xFE=1\n\n[torn\nx=y\n";
    folder.write("settings.txt", damaged);
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
        RegistryAccess broken(folder.native(name));
        std::string value;
        EXPECT_EQ(
            failureOf([&] { broken.ReadValue(HkeyLocalMachine, Options, "AutoFix", value); }), "Path/File access error")
            << name;
        EXPECT_EQ(failureOf([&] { broken.WriteValue(HkeyLocalMachine, Options, "AutoFix", "True"); }),
            "Path/File access error")
            << name;
    }
}

TEST_F(RegistryAccessTest, AFullDiskLeavesTheOldFile)
{
    write(Options, "AutoFix", "True");
    const std::string before = folder.read("settings.txt");

    rlimit old{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
    const auto oldHandler = signal(SIGXFSZ, SIG_IGN);
    const rlimit tight{16, old.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &tight), 0);
    const std::string failure =
        failureOf([&] { store.WriteValue(HkeyLocalMachine, Options, "AutoFix", "a longer value"); });
    setrlimit(RLIMIT_FSIZE, &old);
    signal(SIGXFSZ, oldHandler);

    EXPECT_EQ(failure, "Disk full");
    EXPECT_EQ(folder.read("settings.txt"), before);
    EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(RegistryAccessTest, WritesACounterInPlaceAndAllElseAnew)
{
    const std::string settings = folder.native("settings.txt");
    const auto file = [&] {
        struct stat status { };
        EXPECT_EQ(stat(settings.c_str(), &status), 0);
        return status.st_ino;
    };
    const std::string head = "[" + std::string(Import) + "]\n";
    const auto change = [&](const std::string& before, const std::string& value) {
        folder.write("settings.txt", before);
        const ino_t old = file();
        write(Import, "Autonumber", value);
        EXPECT_EQ(folder.read("settings.txt"), head + "Autonumber=" + value + "\n");
        return file() == old;
    };
    EXPECT_TRUE(change(head + "Autonumber=0099\n", "0100"));
    EXPECT_FALSE(change(head + "Autonumber=99\n", "100"));
    EXPECT_FALSE(change("\xEF\xBB\xBF" + head + "Autonumber=9\n", "1000")) << "as long as before, and all of it moves";
    std::filesystem::create_hard_link(settings, folder.native("kept.txt"));
    write(Import, "Autonumber", "1001");
    EXPECT_EQ(folder.read("kept.txt"), head + "Autonumber=1000\n");
}

TEST_F(RegistryAccessTest, KeepsTheRightsAndTheLinkOfTheFile)
{
    std::filesystem::create_directory(folder.native("elsewhere"));
    folder.write("elsewhere/mine.txt", "");
    ASSERT_EQ(chmod(folder.native("elsewhere/mine.txt").c_str(), 0640), 0);
    std::filesystem::create_symlink("elsewhere/mine.txt", folder.native("settings.txt"));

    write(Options, "AutoFix", "True");

    EXPECT_TRUE(std::filesystem::is_symlink(folder.native("settings.txt")));
    struct stat status { };
    ASSERT_EQ(stat(folder.native("elsewhere/mine.txt").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
    EXPECT_EQ(valueOf(Options, "AutoFix"), "True");
}

TEST_F(RegistryAccessTest, StandsInTheUsersConfigurationFolder)
{
    const VariableForNow home("HOME", folder.native("home"));
    {
        const VariableForNow config("XDG_CONFIG_HOME", folder.native("config"));
        RegistryAccess().WriteValue(HkeyLocalMachine, Options, "AutoFix", "1");
    }
    for (const std::optional<std::string>& unusable :
        {std::optional<std::string>("relative"), std::optional<std::string>()}) {
        const VariableForNow config("XDG_CONFIG_HOME", unusable);
        RegistryAccess().WriteValue(HkeyLocalMachine, Options, "AutoFix", "2");
    }
    EXPECT_NE(folder.read("config/OmbrelaneWorks/settings.txt").find("AutoFix=1"), std::string::npos);
    EXPECT_NE(folder.read("home/.config/OmbrelaneWorks/settings.txt").find("AutoFix=2"), std::string::npos);
}

} // namespace

} // namespace trovarium
