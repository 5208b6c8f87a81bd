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

class Log : public testing::Test {
protected:
    std::string path() { return test.library() + "\\Trovarium.Log"; }
    // A log of exactly `size` bytes: the header, lines of `lineLength` characters with the line's number in
    // front, and a last line that fills up.
    std::string filled(std::size_t size, std::size_t lineLength)
    {
        std::string text = header;
        for (int i = 0; text.size() < size; ++i) {
            std::string line = std::to_string(i);
            line.resize(std::min(lineLength, size - text.size() - 2), '.');
            text += line + "\r\n";
            if (size - text.size() < 3 && size != text.size())
                text.insert(text.size() - 2, size - text.size(), '.');
        }
        return text;
    }
    // What stands before the line that was written last.
    std::string withoutLastLine(std::string text)
    {
        text.erase(text.rfind('\n', text.size() - 2) + 1);
        return text;
    }

    TestAlbum test;
    const std::string header = "Created 01/02/99 03:04\r\n";
};

} // namespace

TEST_F(Log, BeginsWithItsCreationAndTellsProcedureAndError)
{
    logFailure(test.album(), "LoadGroupNames", Failure(FailureKind::PathNotFound));
    WriteLogLine(test.album(), path(), "more");
    EXPECT_EQ(masked(test.bytes(path())),
        "Created 99/99/99 99:99\r\n"
        "99/99/99  99:99:99AM: An error has occurred in 'LoadGroupNames'. Error = Path not found\r\n"
        "99/99/99  99:99:99AM: more\r\n");
}

TEST_F(Log, IsTrimmedBeyondEightyThousandBytes)
{
    constexpr std::size_t Line = 101;
    const std::string atLimit = filled(80'000, Line);
    test.put(path(), atLimit);
    WriteLogLine(test.album(), path(), "new");
    EXPECT_EQ(withoutLastLine(test.bytes(path())), atLimit);

    const std::string beyond = filled(80'001, Line);
    test.put(path(), beyond);
    WriteLogLine(test.album(), path(), "new");
    // Ninety-nine lines are one character short of the 10,000, so the hundredth goes too.
    EXPECT_EQ(withoutLastLine(test.bytes(path())), header + beyond.substr(beyond.find("\r\n100.") + 2));
    EXPECT_FALSE(test.isThere(test.library() + "\\LogFile.tmp"));
}

TEST_F(Log, CountsCharactersWhenItDropsLines)
{
    // Fifty lines of 200 letters that take two bytes each as UTF-8, then what fills the file.
    std::string text = header;
    for (int i = 0; i < 50; ++i) {
        for (int k = 0; k < 200; ++k)
            text += "Ł";
        text += "\r\n";
    }
    const std::string rest = std::string(70'000, 'x') + "\r\n";
    test.put(path(), text + rest);
    WriteLogLine(test.album(), path(), "new");
    EXPECT_EQ(withoutLastLine(test.bytes(path())), header + rest);
}

TEST_F(Log, WithShortLinesAloneKeepsHeaderAndNewLine)
{
    const std::string longHeader = std::string(79'000, 'h') + "\r\n";
    test.put(path(), longHeader + std::string(2'000, 'x') + "\r\n");
    WriteLogLine(test.album(), path(), "new");
    EXPECT_EQ(withoutLastLine(test.bytes(path())), longHeader);
}

TEST_F(Log, AFailureInsideClosesEveryFileAndLeavesTheLogAsItWas)
{
    const std::string full = filled(80'001, 100);
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
        test.put(path(), full);
        test.put(test.library() + "\\other.txt", "x\r\n");
        test.files().open(test.library() + "\\other.txt", OpenMode::Input, test.files().freeFile());
        test.files().setFaultHook([&](FileOperation operation, std::string_view where) {
            if (operation == fault.operation && where.ends_with(fault.name))
                throw Failure(FailureKind::DiskFull);
        });
        WriteLogLine(test.album(), path(), "new");
        test.files().setFaultHook({});
        EXPECT_TRUE(test.bytes(path()) == full) << fault.name;
        EXPECT_EQ(test.files().freeFile(), 1) << fault.name;
    }
}

} // namespace trovarium
