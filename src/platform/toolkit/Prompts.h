// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace trovarium {

// What a message is tells its symbol and its buttons: the first two have OK, the others Yes and No. A Yes to a warning
// takes something away.
enum class Message { Notice, Error, Question, Warning };
enum class Answer { Ok, Yes, No };

// Questions to the user. Other forms are closed to input meanwhile, timers run. An empty title is the
// program's name.
class Prompts {
public:
    virtual ~Prompts() = default;

    virtual Answer messageBox(std::string_view text, Message kind, std::string_view title) = 0;
    // Empty when cancelled.
    virtual std::string inputBox(std::string_view prompt, std::string_view title, std::string_view initial) = 0;
};

} // namespace trovarium
