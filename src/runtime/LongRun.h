#pragma once

#include "runtime/Failure.h"

#include <optional>
#include <string_view>
#include <utility>

namespace trovarium {

// A run counts in 16 bits. What is beyond is left for another run, and told in these words.
inline constexpr int MostFiles = 32767;
inline constexpr std::string_view TooManyForOneRun = "No more than 32767 files at a time";

// How a run over many files takes its failures. It moves between two modes: a failing statement is stepped
// over and its failure stands until something clears it, or it leaves the run for its end. Entering a mode
// clears what stands, and so does an operation that handles failures of its own.
class LongRun {
public:
    void stepOver() { enter(Mode::StepOver); }
    void jumpToEnd() { enter(Mode::JumpToEnd); }

    // The failure that stands, if any.
    const std::optional<Failure>& standing() const { return m_standing; }
    void clear() { m_standing.reset(); }

    // Runs one statement as the mode wants it. What it was to set stays as it was when it fails.
    template <class Statement>
    void statement(Statement&& statement)
    {
        const std::optional<Failure> failure = attempt(std::forward<Statement>(statement));
        if (!failure)
            return;
        m_standing = failure;
        if (m_mode == Mode::JumpToEnd)
            throw Failure(*failure);
    }

    // Calls an operation that has a handler of its own, and so leaves no failure standing.
    template <class Operation>
    void handled(Operation&& operation)
    {
        std::forward<Operation>(operation)();
        clear();
    }

    // Runs the whole of it; a jump leads behind it.
    template <class Body>
    void run(Body&& body)
    {
        if (const std::optional<Failure> failure = attempt(std::forward<Body>(body)))
            m_standing = failure;
    }

private:
    enum class Mode { StepOver, JumpToEnd };

    void enter(Mode mode)
    {
        m_mode = mode;
        clear();
    }

    Mode m_mode = Mode::StepOver;
    std::optional<Failure> m_standing;
};

} // namespace trovarium
