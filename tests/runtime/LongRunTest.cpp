#include "runtime/LongRun.h"

#include <gtest/gtest.h>

#include <string>

namespace trovarium {

namespace {

void fail(FailureKind kind)
{
    throw Failure(kind);
}

// What stands in the end, behind the letters of the statements that were reached.
std::string story(void (*body)(LongRun&, std::string&))
{
    LongRun run;
    std::string reached;
    run.run([&] { body(run, reached); });
    return reached + (run.standing() ? ": " + std::string(run.standing()->description()) : "");
}

TEST(LongRun, TakesAFailureAsItsModeWantsIt)
{
    EXPECT_EQ("ab: File not found", story([](LongRun& run, std::string& reached) {
        run.stepOver();
        run.statement([&] { reached += "a"; });
        run.statement([] { fail(FailureKind::FileNotFound); });
        run.statement([&] { reached += "b"; });
    })) << "a later success leaves the failure standing";
    EXPECT_EQ(": Disk full", story([](LongRun& run, std::string& reached) {
        run.jumpToEnd();
        run.statement([] { fail(FailureKind::DiskFull); });
        reached += "never";
    }));
    EXPECT_EQ("", story([](LongRun& run, std::string&) {
        run.statement([] { fail(FailureKind::FileNotFound); });
        run.jumpToEnd();
    })) << "entering a mode clears";
    EXPECT_EQ("h", story([](LongRun& run, std::string& reached) {
        run.statement([] { fail(FailureKind::FileNotFound); });
        run.handled([&] { reached += "h"; });
    })) << "an operation with a handler of its own clears";
    EXPECT_EQ(": Overflow", story([](LongRun& run, std::string&) {
        run.statement([] { fail(FailureKind::FileNotFound); });
        run.statement([] { fail(FailureKind::Overflow); });
    })) << "the last one stands";
}

} // namespace

} // namespace trovarium
