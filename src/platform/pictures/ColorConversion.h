// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

class QImage;

namespace trovarium {

// What the four bytes of a pixel are: 0xffRRGGBB, the same with three equal channels, or CMYK in the order of memory,
// where 255 is full ink or, inverted, none.
enum class ColorKind { Rgb, Gray, Inks, InvertedInks };

// Colors as video describes them: primaries as x and y, and a transfer function by its number in ITU-T H.273.
struct CodedColors {
    struct Point {
        double x, y;
    };
    Point white, red, green, blue;
    int transfer;
};

// An ICC profile of such colors; empty where they aren't specified. Light beyond a white page is compressed.
std::vector<unsigned char> profileOf(const CodedColors& colors);

// From the color space of an ICC profile to sRGB. Safe on any thread.
class ColorConversion {
public:
    // `profile` is as it stands in a picture. Empty where it is empty, damaged, of another kind or sRGB itself.
    ColorConversion(std::span<const unsigned char> profile, ColorKind kind);

    bool empty() const { return !m_transform && !m_grays; }

    // Converts an image of 32 bits a pixel in place to 0xffRRGGBB; the fourth byte of Rgb and Gray stays as it is.
    // Uses a second core for large ones. Does nothing when empty, and stops once `cancelled` is set.
    void convert(QImage& image, const std::atomic<bool>& cancelled) const;

private:
    using Grays = std::array<std::uint32_t, 256>;

    void convertLine(std::uint32_t* pixels, int width) const;
    bool changesNothing() const;

    std::unique_ptr<void, void (*)(void*)> m_transform;
    std::unique_ptr<Grays> m_grays;
    ColorKind m_kind;
};

} // namespace trovarium
