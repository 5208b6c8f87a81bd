#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace trovarium {

// Decodes one JPEG file that lies in memory, upright by its EXIF orientation and as sRGB by its profile. All failures
// are `Failure`: "Invalid picture" and "Out of memory".
class JpegDecoder {
public:
    // Reads the header. `file` and `cancelled` must outlive the decoder.
    JpegDecoder(std::span<const unsigned char> file, const std::atomic<bool>& cancelled);
    ~JpegDecoder();
    JpegDecoder(const JpegDecoder&) = delete;
    JpegDecoder& operator=(const JpegDecoder&) = delete;

    // The upright size in pixels at 1/denominator: 1, 2, 4 or 8.
    int width(int denominator = 1) const;
    int height(int denominator = 1) const;

    // Decodes at 1/denominator into opaque 0xffRRGGBB pixels, once. A picture whose end is missing or torn
    // shows what there is, and mid-grey below it; one without any image data is an invalid picture. False
    // when `cancelled` was set meanwhile.
    bool decode(int denominator, std::uint32_t* pixels, std::ptrdiff_t pixelsPerLine);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace trovarium
