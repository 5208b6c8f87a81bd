#pragma once

#include "platform/files/FileService.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <set>
#include <stdlib.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

// A test that begins anew in a process of its own, acts there and ends in the middle.
namespace trovarium {

inline constexpr int Killed = 42;

// What tells such a process of its part: the folder that it shares, and the step that it doesn't take.
inline constexpr const char* FolderVariable = "KILLED_FOLDER";
inline constexpr const char* StepVariable = "KILLED_AT";

// The exit code of a process that acts and ends before the operation number `step` that may write, or -1.
inline int runUntilKilled(const std::string& folder, int step)
{
    const TemporaryFolder placeOfTheKilled; // which can't clear up
    const std::string filter =
        std::string("--gtest_filter=*") + testing::UnitTest::GetInstance()->current_test_info()->name();
    const pid_t child = fork();
    if (child == 0) {
        for (const auto& [name, value] : {std::pair("TMPDIR", placeOfTheKilled.path()), {"QT_LOGGING_RULES", "*=false"},
                 {FolderVariable, folder}, {StepVariable, std::to_string(step)}})
            setenv(name, value.c_str(), 1);
        execl("/proc/self/exe", "killed", filter.c_str(), "--gtest_brief=1", nullptr);
        _exit(127);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// The other side of that, in the process of its own. An open and a close count once behind a change: what is only
// read leaves nothing new for a kill.
[[noreturn]] inline void actUntilKilled(FileService& files, const std::function<void()>& act)
{
    using enum FileOperation;
    int count = 0;
    bool changed = true;
    files.setFaultHook([&](FileOperation operation, std::string_view) {
        const bool changes = std::set{Print, SetDate, Copy, Delete, Rename, MakeFolder}.contains(operation);
        const bool counts = changes || (changed && (operation == Open || operation == Close));
        if (counts && ++count == atoi(getenv(StepVariable)))
            _exit(Killed);
        changed = changes || (changed && operation != Open);
    });
    act();
    std::fflush(nullptr);
    _exit(testing::Test::HasFailure() ? 1 : 0);
}

} // namespace trovarium
