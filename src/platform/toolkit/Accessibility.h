#pragma once

namespace trovarium {

// From then on drawn widgets and windows are told to screen readers as what they are.
void installAccessibility();

} // namespace trovarium
