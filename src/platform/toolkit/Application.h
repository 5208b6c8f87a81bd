// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string_view>

class QApplication;

namespace trovarium {

// The factor by which the windows grow on a screen of this size, in quarter steps: from 1,400 lines on the main window
// takes about half of the screen's height, and no more than its width.
double screenScale(int columns, int lines);

// The factor that such a text, "1.5", stands for; 0 if it is none from 1 to 8. Below 1 the library doesn't draw
// correctly.
double scaleOf(std::string_view text);

// The library's application, with the program's style. `scale` is a factor for all screens, as for `scaleOf`; without
// one each screen has its own, unless the desktop scales. `QT_SCALE_FACTOR` comes before both.
std::unique_ptr<QApplication> makeApplication(int& argc, char** argv, std::string_view scale);

} // namespace trovarium
