// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "runtime/Failure.h"

#include <optional>
#include <string_view>
#include <utility>

namespace trovarium {

// A run counts its files in 16 bits. The rest is left for another run, with this message.
inline constexpr int MostFiles = 32767;
inline constexpr std::string_view TooManyForOneRun = "No more than 32767 files at a time";

// How a run over many files handles failures. There are two modes: either the run goes on behind a failing statement
// and keeps the failure as `standing` until it is cleared, or it jumps to its end. Entering a mode clears the
// standing failure.
class LongRun {
public:
    void stepOver() { enter(Mode::StepOver); }
    void jumpToEnd() { enter(Mode::JumpToEnd); }

    // The failure that stands, if any.
    const std::optional<Failure>& standing() const { return m_standing; }
    void clear() { m_standing.reset(); }

    // Runs one statement according to the mode.
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

    // Calls an operation that handles its own failures, which clears the standing one.
    template <class Operation>
    void handled(Operation&& operation)
    {
        std::forward<Operation>(operation)();
        clear();
    }

    // Runs the whole body; JumpToEnd continues after it.
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
