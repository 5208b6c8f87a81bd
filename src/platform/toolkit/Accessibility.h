// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace trovarium {

// From then on drawn widgets and windows are told to screen readers as what they are.
void installAccessibility();

} // namespace trovarium
