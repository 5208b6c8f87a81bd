#include "runtime/LongRun.h"

#include <gtest/gtest.h>

namespace trovarium {

// Each letter is a step: "s" and "j" enter a mode, "h" handles failures of its own, "f" and "o" fail, "a" doesn't.
// Told are the statements that were reached, and what stands in the end.
TEST(LongRun, TakesAFailureAsItsModeWantsIt)
{
    for (const auto& [steps, told] : {std::pair{"safa", "afa: Disk full"}, {"jafa", "af: Disk full"}, {"fja", "fa"},
             {"jsfa", "fa: Disk full"}, {"fh", "f"}, {"fo", "fo: Overflow"}}) {
        LongRun run;
        std::string reached;
        const auto take = [&](char step) {
            reached += step;
            if (step != 'a')
                throw Failure(step == 'f' ? FailureKind::DiskFull : FailureKind::Overflow);
        };
        run.run([&, all = std::string(steps)] {
            for (const char step : all) {
                if (step == 's')
                    run.stepOver();
                else if (step == 'j')
                    run.jumpToEnd();
                else
                    step == 'h' ? run.handled([] {}) : run.statement([&] { take(step); });
            }
        });
        if (run.standing())
            reached.append(": ").append(run.standing()->description());
        EXPECT_EQ(reached, told) << steps;
    }
}

} // namespace trovarium
