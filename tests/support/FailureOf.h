// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "runtime/Failure.h"

#include <string>
#include <utility>

namespace trovarium {

// The description of what a statement fails with, empty when it doesn't: so a test shows both texts.
template <class Statement>
std::string failureOf(Statement&& statement)
{
    const std::optional<Failure> failure = attempt(std::forward<Statement>(statement));
    return failure ? std::string(failure->description()) : std::string();
}

} // namespace trovarium
