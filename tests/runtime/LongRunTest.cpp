#include "runtime/LongRun.h"
#include "support/FailureOf.h"

#include <gtest/gtest.h>

namespace trovarium {

namespace {

// Each letter is a step: "s" and "j" enter a mode, "h" handles failures of its own, "f" and "o" fail, "a" doesn't.
// Gives those that were reached, and what stands in the end.
std::string story(std::string_view steps)
{
    LongRun run;
    std::string reached;
    const auto take = [&](char step) {
        reached += step;
        if (step == 'f' || step == 'o')
            throw Failure(step == 'f' ? FailureKind::DiskFull : FailureKind::Overflow);
    };
    run.run([&] {
        for (const char step : steps) {
            if (step == 's')
                run.stepOver();
            else if (step == 'j')
                run.jumpToEnd();
            else
                step == 'h' ? run.handled([&] { take(step); }) : run.statement([&] { take(step); });
        }
    });
    return reached + ": " + failureOf([&] {
        if (run.standing())
            throw Failure(*run.standing());
    });
}

} // namespace

TEST(LongRun, TakesAFailureAsItsModeWantsIt)
{
    EXPECT_EQ(story("safa"), "afa: Disk full") << "a later success leaves the failure standing";
    EXPECT_EQ(story("jafa"), "af: Disk full");
    EXPECT_EQ(story("fja"), "fa: ") << "entering a mode clears";
    EXPECT_EQ(story("jsfa"), "fa: Disk full");
    EXPECT_EQ(story("fh"), "fh: ");
    EXPECT_EQ(story("fo"), "fo: Overflow") << "the last one stands";
}

} // namespace trovarium
