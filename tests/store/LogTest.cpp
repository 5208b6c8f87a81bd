#include "store/Log.h"

#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <utility>

namespace trovarium {

namespace {

constexpr std::size_t Line = 103;

// A log of exactly `size` bytes: a header that fills up, and lines that differ.
std::string filled(std::size_t size)
{
    std::string text = std::string(size % Line + Line - 2, 'h') + "\r\n";
    while (text.size() < size)
        text += std::to_string(1'000'000 + text.size()) + std::string(Line - 9, '.') + "\r\n";
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

TEST_F(Log, LosesItsFirstLinesBeyondEightyThousandBytesAndNothingByAFailure)
{
    const std::string beyond = filled(80'001);
    const std::string header = beyond.substr(0, 80'001 % Line + Line);
    std::string twoByteLetters = header;
    for (int i = 0; i < 10'000; ++i)
        twoByteLetters += i % 200 == 199 ? "Ł\r\n" : "Ł";
    const std::string rest = std::string(70'000, 'x') + "\r\n";
    const std::string longHeader = std::string(79'000, 'h') + "\r\n";
    for (const auto& [before, kept] : {std::pair{filled(80'000), filled(80'000)},
             // Ninety-nine lines are one character short of the 10,000, so the hundredth goes too.
             {beyond, header + beyond.substr(header.size() + 100 * Line)},
             {twoByteLetters + rest, header + rest}, // characters count, not bytes
             {longHeader + std::string(2'000, 'x') + "\r\n", longHeader}}) {
        test.put(path, before);
        WriteLogLine(test.album(), path, "new");
        const std::string text = test.log();
        EXPECT_TRUE(text.ends_with("M: new\r\n"));
        EXPECT_EQ(text.substr(0, text.rfind('\n', text.size() - 2) + 1), kept);
        EXPECT_FALSE(test.isThere(test.library() + "\\LogFile.tmp"));
    }
    using enum FileOperation;
    for (const auto& [operation, name] : {std::pair{Open, "Trovarium.Log"}, {Open, "LogFile.tmp"},
             {Print, "LogFile.tmp"}, {Close, "LogFile.tmp"}, {Delete, "Trovarium.Log"}}) {
        test.put(path, beyond);
        test.files().open(test.library() + "\\reporting", OpenMode::Output, 1);
        test.failAt(operation, name);
        WriteLogLine(test.album(), path, "new");
        test.files().setFaultHook({});
        EXPECT_TRUE(test.log() == beyond) << name;
        EXPECT_EQ(test.files().freeFile(), 1) << name;
    }
}

} // namespace trovarium
