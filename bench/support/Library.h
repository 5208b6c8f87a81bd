// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "store/Album.h"

#include <string>

namespace trovarium {

// Answers every question with No.
class NoAnswers : public Prompts {
public:
    Answer messageBox(std::string_view text, Message kind, std::string_view title) override;
    std::string inputBox(std::string_view prompt, std::string_view title, std::string_view initial) override;
};

// A library that stands in a folder, opened as the start-up opens it. Its settings are those that the environment
// points to. Questions are answered with No.
class Library {
public:
    Library(Desktop& desktop, const std::string& nativeFolder);

    Desktop& desktop() { return m_desktop; }
    Album& album() { return m_album; }

private:
    Desktop& m_desktop;
    Album m_album;
    NoAnswers m_answers;
};

// Runs events until what works in the background has come to rest.
void untilIdle(Desktop& desktop);

// Of this process, in megabytes: what is resident now, and the most that ever was.
double residentMegabytes();
double mostResidentMegabytes();

} // namespace trovarium
