#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace trovarium {

// How four bytes tell a colour: 0xffRRGGBB, the same with three equal lights, or the inks cyan, magenta,
// yellow and black in the order of memory, 255 for full ink or for none.
enum class ColourKind { Rgb, Grey, Inks, InvertedInks };

// From the colours of one ICC profile to sRGB. Safe on any thread.
class ColourConversion {
public:
    // `profile` is as it stands in a picture. Empty where it is empty, damaged, of another kind or sRGB itself.
    ColourConversion(std::span<const unsigned char> profile, ColourKind kind);
    ~ColourConversion();
    ColourConversion(const ColourConversion&) = delete;
    ColourConversion& operator=(const ColourConversion&) = delete;

    bool empty() const { return !m_transform && !m_greys; }

    // Converts in place to 0xffRRGGBB; the fourth byte of Rgb and Grey stays as it is. Large pictures are shared with
    // another core. Does nothing when empty, and no more once `cancelled` is set.
    void convert(std::uint32_t* pixels, int width, int height, std::ptrdiff_t pixelsPerLine,
        const std::atomic<bool>& cancelled) const;

private:
    struct Transform;
    using Greys = std::array<std::uint32_t, 256>;

    void convertLines(std::uint32_t* pixels, int width, int height, std::ptrdiff_t pixelsPerLine,
        const std::atomic<bool>& cancelled) const;
    bool changesNothing() const;

    std::unique_ptr<Transform> m_transform;
    std::unique_ptr<Greys> m_greys;
    ColourKind m_kind;
};

} // namespace trovarium
