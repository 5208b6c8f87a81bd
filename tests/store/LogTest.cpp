#include "store/Log.h"

#include "runtime/Failure.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

namespace trovarium {

namespace {

// Every digit as 9, and afternoon as morning.
std::string masked(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) != 0; }, '9');
    for (std::size_t at = 0; (at = text.find("99PM: ", at)) != std::string::npos;)
        text[at + 2] = 'A';
    return text;
}

// A log of exactly `size` bytes: a header that fills up, and numbered lines of 101 characters.
std::string filled(std::size_t size)
{
    constexpr std::size_t Line = 103;
    std::string text = std::string(size % Line - 2, 'h') + "\r\n";
    for (int i = 0; text.size() < size; ++i) {
        std::string line = std::to_string(i);
        line.resize(Line - 2, '.');
        text += line + "\r\n";
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
    EXPECT_EQ(masked(test.bytes(path)),
        "Created 99/99/99 99:99\r\n"
        "99/99/99  99:99:99AM: An error has occurred in 'LoadGroupNames'. Error = Path not found\r\n"
        "99/99/99  99:99:99AM: more\r\n");
}

TEST_F(Log, LosesItsFirstLinesBeyondEightyThousandBytes)
{
    const std::string beyond = filled(80'001);
    const std::string header = "Created 01/02/99 03:04\r\n";
    std::string twoByteLetters = header;
    for (int i = 0; i < 50; ++i) {
        for (int k = 0; k < 200; ++k)
            twoByteLetters += "Ł";
        twoByteLetters += "\r\n";
    }
    const std::string rest = std::string(70'000, 'x') + "\r\n";
    const std::string longHeader = std::string(79'000, 'h') + "\r\n";
    const struct {
        std::string before;
        std::string kept;
    } cases[] = {
        {filled(80'000), filled(80'000)},
        // Ninety-nine lines are one character short of the 10,000, so the hundredth goes too.
        {beyond, beyond.substr(0, beyond.find('0')) + beyond.substr(beyond.find("\r\n100.") + 2)},
        {twoByteLetters + rest, header + rest}, // characters count, not bytes
        {longHeader + std::string(2'000, 'x') + "\r\n", longHeader},
    };
    for (const auto& one : cases) {
        test.put(path, one.before);
        WriteLogLine(test.album(), path, "new");
        const std::string text = test.bytes(path);
        EXPECT_TRUE(text.ends_with("M: new\r\n"));
        EXPECT_EQ(text.substr(0, text.rfind('\n', text.size() - 2) + 1), one.kept);
        EXPECT_FALSE(test.isThere(test.library() + "\\LogFile.tmp"));
    }
}

TEST_F(Log, AFailureInsideClosesEveryFileAndLeavesTheLogAsItWas)
{
    const std::string full = filled(80'001);
    const std::string other = test.library() + "\\other.txt";
    const struct {
        FileOperation operation;
        std::string_view name;
    } faults[] = {
        {FileOperation::Open, "Trovarium.Log"},
        {FileOperation::Open, "LogFile.tmp"},
        {FileOperation::Print, "LogFile.tmp"},
        {FileOperation::Close, "LogFile.tmp"},
        {FileOperation::Delete, "Trovarium.Log"},
    };
    for (const auto& fault : faults) {
        test.put(path, full);
        test.put(other, "x\r\n");
        test.files().open(other, OpenMode::Input, test.files().freeFile());
        test.files().setFaultHook([&](FileOperation operation, std::string_view where) {
            if (operation == fault.operation && where.ends_with(fault.name))
                throw Failure(FailureKind::DiskFull);
        });
        WriteLogLine(test.album(), path, "new");
        test.files().setFaultHook({});
        EXPECT_TRUE(test.bytes(path) == full) << fault.name;
        EXPECT_EQ(test.files().freeFile(), 1) << fault.name;
    }
}

} // namespace trovarium
