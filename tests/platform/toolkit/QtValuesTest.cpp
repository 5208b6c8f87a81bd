// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/QtValues.h"

#include <gtest/gtest.h>

namespace trovarium {

TEST(QtValues, ToolTipsShowTheirTextAsItStandsInLinesOfSeventyCharacters)
{
    const std::string line(69, 'a');
    for (const auto& [text, tip] : {std::pair<std::string, std::string>{"two  blanks", "two  blanks"},
             {line + "b", line + "b"}, {line + " b c", line + "\nb c"}, {line + "b c", line + "b\nc"},
             {line + "  " + line + "bcd", line + " \n" + line + "b\ncd"}, {"<b>x</b>", "<p>&lt;b&gt;x&lt;/b&gt;</p>"}})
        EXPECT_EQ(toText(toolTipText(text)), tip);
}

} // namespace trovarium
