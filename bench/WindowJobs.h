// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace trovarium {

class Desktop;

// Each puts its jobs on Google Benchmark's list; `data` is the folder with the libraries. A job runs once for
// each repetition and measures its own time.
void addActs(Desktop& desktop, const std::string& data);
void addGroupJobs(Desktop& desktop, const std::string& data);
void addPageJobs(Desktop& desktop, const std::string& data);
void addPhotographJobs(Desktop& desktop, const std::string& data);
void addShowJobs(Desktop& desktop, const std::string& data);

} // namespace trovarium
