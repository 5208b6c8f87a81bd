// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace trovarium {

// Registers our accessible interfaces for drawn widgets, windows, combo boxes and scroll bars.
void installAccessibility();

} // namespace trovarium
