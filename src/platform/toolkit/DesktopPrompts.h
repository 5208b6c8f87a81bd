// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Prompts.h"

namespace trovarium {

class Desktop;

// Questions in boxes of the desktop, over the active form. Texts are shown as they are, never as markup; a
// long one scrolls. Escape and the window's box answer No, or cancel.
class DesktopPrompts : public Prompts {
public:
    explicit DesktopPrompts(Desktop& desktop)
        : m_desktop(desktop)
    {
    }

    Answer messageBox(std::string_view text, Message kind, std::string_view title) override;
    std::string inputBox(std::string_view prompt, std::string_view title, std::string_view initial) override;

private:
    Desktop& m_desktop;
};

} // namespace trovarium
