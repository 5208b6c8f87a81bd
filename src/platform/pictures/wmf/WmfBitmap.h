// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/wmf/WmfFile.h"

#include <QImage>

#include <atomic>

namespace trovarium {

// Reads a bitmap file in full.
using ReadBitmap = QImage (*)(std::vector<unsigned char> file, const std::atomic<bool>& cancelled);

// A device-independent bitmap in a record: like a bitmap file, but without the file header.
class WmfBitmap {
public:
    explicit WmfBitmap(WmfBytes bytes); // "Invalid picture" without a header

    // Whether it can be read here. Otherwise it may hold a JPEG, or be a device-dependent bitmap.
    bool isKnown() const { return m_isKnown; }
    double pixelCount() const; // by its header
    bool topDown() const { return m_topDown; }

    // RGB32. "Invalid picture" for a damaged bitmap, for one of more than 64 megapixels, and
    // when `cancelled` was set meanwhile.
    QImage image(ReadBitmap read, const std::atomic<bool>& cancelled) const;

private:
    WmfBytes m_bytes;
    double m_width = 0;
    double m_height = 0;
    bool m_topDown = false;
    bool m_isKnown = true;
};

} // namespace trovarium
