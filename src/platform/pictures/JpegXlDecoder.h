// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/JpegXlLibrary.h"
#include "platform/pictures/PictureData.h"

#include <QSize>

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace trovarium {

// Decodes the first image of a JPEG XL file that lies in memory, upright. All failures are `Failure`: "Invalid picture"
// and "Out of memory".
class JpegXlDecoder {
public:
    // Reads the headers. `library`, `file` and `cancelled` must outlive the decoder.
    JpegXlDecoder(
        const JpegXlLibrary& library, std::span<const unsigned char> file, const std::atomic<bool>& cancelled);
    JpegXlDecoder(const JpegXlDecoder&) = delete;
    JpegXlDecoder& operator=(const JpegXlDecoder&) = delete;

    QSize size() const;     // upright, in pixels
    DecodedPixels decode(); // once; "Invalid picture" when cancelled meanwhile

private:
    static JxlParallelRetCode runParts(void* self, void* job, JxlParallelRunInit start, JxlParallelRunFunction part,
        std::uint32_t first, std::uint32_t end);
    void expect(JxlDecoderStatus status);
    std::vector<unsigned char> profile();

    const JpegXlLibrary& m_library;
    const std::atomic<bool>& m_cancelled;
    const std::unique_ptr<::JxlDecoder, decltype(&JxlDecoderDestroy)> m_decoder;
    JxlBasicInfo m_info{};
    // How many parts (lines or tiles) may be decoded: enough for some twenty layers. Without a limit, a few kilobytes
    // of hidden images could keep a core busy for hours.
    std::int64_t m_partsLeft = 0;
};

} // namespace trovarium
