#include "store/Log.h"

#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <utility>

namespace trovarium {

namespace {

// A log of exactly `size` bytes: a header that fills up, and numbered lines of 101 characters.
std::string filled(std::size_t size)
{
    constexpr std::size_t Line = 103;
    std::string text = std::string(size % Line - 2, 'h') + "\r\n";
    for (int i = 0; text.size() < size; ++i) {
        const std::string number = std::to_string(i);
        text += number + std::string(Line - 2 - number.size(), '.') + "\r\n";
    }
    return text;
}

class Log : public testing::Test {
protected:
    TestAlbum test;
    const std::string path = test.library() + "\\Trovarium.Log";
};

} // namespace

TEST_F(Log, BeginsWithItsCreationAndTellsProcedureAndError)
{
    logFailure(test.album(), "LoadGroupNames", Failure(FailureKind::PathNotFound));
    WriteLogLine(test.album(), path, "more");
    std::string shape = test.log();
    std::replace_if(
        shape.begin(), shape.end(), [](unsigned char c) { return std::isdigit(c) != 0; }, '9');
    std::replace(shape.begin(), shape.end(), 'P', 'A'); // AM or PM
    EXPECT_EQ(shape,
        "Created 99/99/99 99:99\r\n99/99/99  99:99:99AM: An error has occurred in 'LoadGroupNames'. "
        "Error = Aath not found\r\n99/99/99  99:99:99AM: more\r\n");
}

TEST_F(Log, LosesItsFirstLinesBeyondEightyThousandBytes)
{
    const std::string beyond = filled(80'001);
    const std::string header = "Created 01/02/99 03:04\r\n";
    std::string twoByteLetters = header;
    for (int i = 0; i < 10'000; ++i)
        twoByteLetters += i % 200 == 199 ? "Ł\r\n" : "Ł";
    const std::string rest = std::string(70'000, 'x') + "\r\n";
    const std::string longHeader = std::string(79'000, 'h') + "\r\n";
    for (const auto& [before, kept] : {std::pair{filled(80'000), filled(80'000)},
             // Ninety-nine lines are one character short of the 10,000, so the hundredth goes too.
             {beyond, beyond.substr(0, beyond.find('0')) + beyond.substr(beyond.find("\r\n100.") + 2)},
             {twoByteLetters + rest, header + rest}, // characters count, not bytes
             {longHeader + std::string(2'000, 'x') + "\r\n", longHeader}}) {
        test.put(path, before);
        WriteLogLine(test.album(), path, "new");
        const std::string text = test.log();
        EXPECT_TRUE(text.ends_with("M: new\r\n"));
        EXPECT_EQ(text.substr(0, text.rfind('\n', text.size() - 2) + 1), kept);
        EXPECT_FALSE(test.isThere(test.library() + "\\LogFile.tmp"));
    }
}

TEST_F(Log, AFailureInsideClosesEveryFileAndLeavesTheLogAsItWas)
{
    using enum FileOperation;
    const std::string full = filled(80'001);
    const std::string other = test.library() + "\\other.txt";
    for (const auto& [operation, name] : {std::pair{Open, "Trovarium.Log"}, {Open, "LogFile.tmp"},
             {Print, "LogFile.tmp"}, {Close, "LogFile.tmp"}, {Delete, "Trovarium.Log"}}) {
        test.put(path, full);
        test.put(other, "x\r\n");
        test.files().open(other, OpenMode::Input, test.files().freeFile());
        test.failAt(operation, name);
        WriteLogLine(test.album(), path, "new");
        test.files().setFaultHook({});
        EXPECT_TRUE(test.log() == full) << name;
        EXPECT_EQ(test.files().freeFile(), 1) << name;
    }
}

} // namespace trovarium
