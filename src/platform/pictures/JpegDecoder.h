// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QImageIOHandler>
#include <QSize>

#include <atomic>
#include <span>
#include <vector>

namespace trovarium {

// Decodes one JPEG file that lies in memory, upright by its EXIF orientation and as sRGB by its profile. All failures
// are `Failure`: "Invalid picture" and "Out of memory".
class JpegDecoder {
public:
    // Reads the headers. `file` must outlive the decoder.
    explicit JpegDecoder(std::span<const unsigned char> file);

    QSize size() const; // upright, in pixels

    // RGB32 at 1/denominator: 1, 2, 4 or 8. A picture whose end is missing or damaged shows what there is, and gray
    // below it; one without any image data is an invalid picture. Once `cancelled` is set, the colors may be wrong.
    QImage decode(int denominator, const std::atomic<bool>& cancelled) const;

private:
    void readSegments();
    void decompress(QImage& image) const;

    std::span<const unsigned char> m_file;
    QSize m_storedSize;
    QImageIOHandler::Transformations m_orientation;
    std::vector<unsigned char> m_profile;
    int m_subsampling = -1; // as TJSAMP; -1: none of those
    int m_colorSpace = -1;  // as TJCS
    bool m_isAdobe = false; // inks are stored inverted
    bool m_hasExif = false;
    bool m_isHeld = false; // in whole, as coefficients, before the first pixel is there
};

} // namespace trovarium
