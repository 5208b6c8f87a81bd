// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace trovarium {

// What another program offers: by a drop on a form, or on the clipboard.
struct OfferedFiles {
    std::vector<std::string> paths;  // of files and folders on this computer, whether or not they are there
    std::vector<std::string> others; // the names of what no path of the program can lead to, such as a page of the web

    bool empty() const { return paths.empty() && others.empty(); }
};

} // namespace trovarium
