// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/HeifLibrary.h"
#include "platform/pictures/PictureData.h"

#include <QSize>

#include <atomic>
#include <memory>
#include <span>
#include <vector>

namespace trovarium {

// Decodes the primary image of a HEIF file (HEIC, AVIF) that lies in memory. The library turns, mirrors and crops as
// the file says, and the orientation in EXIF data repeats that. All failures are `Failure`: "Invalid picture" and "Out
// of memory".
class HeifDecoder {
public:
    // Reads the headers. `library`, `file` and `cancelled` must outlive the decoder.
    HeifDecoder(const HeifLibrary& library, std::span<const unsigned char> file, const std::atomic<bool>& cancelled);

    QSize size() const; // upright, in pixels
    DecodedPixels decode() const;

private:
    using Handle = std::unique_ptr<heif_image_handle, decltype(&heif_image_handle_release)>;

    std::vector<unsigned char> profile() const;

    const HeifLibrary& m_library;
    const std::atomic<bool>& m_cancelled;
    const std::unique_ptr<heif_context, decltype(&heif_context_free)> m_context;
    Handle m_handle;
};

} // namespace trovarium
