#pragma once

#include "platform/pictures/PictureFile.h"
#include "platform/pictures/PictureHeader.h"

#include <vector>

namespace trovarium {

// The ICC profile that a png, webp or tiff carries, not looked into; empty where there is none or it is
// damaged. Sources: PNG, "iCCP"; WebP container, "Color Profile"; TIFF 6.0, section 2, and ICC.1, annex B.
std::vector<unsigned char> embeddedProfile(const PictureFile& file, PictureFormat format);

} // namespace trovarium
