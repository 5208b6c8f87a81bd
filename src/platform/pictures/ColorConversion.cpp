// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/ColorConversion.h"

#include <QImage>

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <system_error>
#include <thread>
#include <vector>

#include <lcms2.h>

namespace trovarium {

namespace {

constexpr std::uint32_t Opaque = 0xff000000U;
constexpr cmsUInt32Number Pixels = std::endian::native == std::endian::little ? TYPE_BGRA_8 : TYPE_ARGB_8;

struct KindInProfiles {
    cmsColorSpaceSignature space;
    cmsUInt32Number pixels;
};

// In the order of ColorKind.
constexpr std::array<KindInProfiles, 4> InProfiles = {{{cmsSigRgbData, Pixels}, {cmsSigGrayData, TYPE_GRAY_8},
    {cmsSigCmykData, TYPE_CMYK_8}, {cmsSigCmykData, TYPE_CMYK_8_REV}}};

using Profile = std::unique_ptr<void, cmsBool (*)(void*)>;

bool describesColors(cmsProfileClassSignature profileClass)
{
    return profileClass == cmsSigInputClass || profileClass == cmsSigDisplayClass || profileClass == cmsSigOutputClass
        || profileClass == cmsSigColorSpaceClass;
}

} // namespace

ColorConversion::ColorConversion(std::span<const unsigned char> bytes, ColorKind kind)
    : m_transform(nullptr, &cmsDeleteTransform)
    , m_kind(kind)
{
    if (bytes.empty())
        return;
    const Profile source(
        cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())), &cmsCloseProfile);
    const KindInProfiles wanted = InProfiles.at(static_cast<std::size_t>(kind));
    if (!source || cmsGetColorSpace(source.get()) != wanted.space || !describesColors(cmsGetDeviceClass(source.get())))
        return;
    const Profile standard(cmsCreate_sRGBProfile(), &cmsCloseProfile);
    m_transform.reset(cmsCreateTransform(source.get(), wanted.pixels, standard.get(), Pixels, INTENT_PERCEPTUAL, 0));
    if (!m_transform)
        return;
    if (kind == ColorKind::Gray) {
        std::array<std::uint8_t, 256> lights{};
        for (std::size_t i = 0; i < lights.size(); ++i)
            lights[i] = static_cast<std::uint8_t>(i);
        m_grays = std::make_unique<Grays>();
        cmsDoTransform(m_transform.get(), lights.data(), m_grays->data(), 256);
        m_transform.reset();
    }
    if (changesNothing()) {
        m_transform.reset();
        m_grays.reset();
    }
}

void ColorConversion::convert(QImage& image, const std::atomic<bool>& cancelled) const
{
    constexpr std::int64_t WorthAThread = 1'000'000; // pixels
    if (empty() || image.isNull())
        return;
    unsigned char* const bits = image.bits();
    const qsizetype bytesPerLine = image.bytesPerLine();
    const int width = image.width();
    const auto convertLines = [=, this, &cancelled](int from, int to) {
        for (int y = from; y < to && !cancelled; ++y)
            convertLine(reinterpret_cast<std::uint32_t*>(bits + y * bytesPerLine), width);
    };
    const int shared = std::int64_t{width} * image.height() < WorthAThread ? 0 : image.height() / 2;
    std::thread other;
    try {
        if (shared > 0)
            other = std::thread(convertLines, 0, shared);
    } catch (const std::system_error&) {
        // No thread to be had: it takes twice as long.
        convertLines(0, shared);
    }
    convertLines(shared, image.height());
    if (other.joinable())
        other.join();
}

void ColorConversion::convertLine(std::uint32_t* pixels, int width) const
{
    std::uint32_t* const end = pixels + width;
    if (m_grays) {
        std::transform(pixels, end, pixels,
            [this](auto pixel) { return (pixel & Opaque) | ((*m_grays)[pixel & 0xffU] & ~Opaque); });
        return;
    }
    cmsDoTransform(m_transform.get(), pixels, pixels, static_cast<cmsUInt32Number>(width));
    if (m_kind != ColorKind::Rgb)
        std::transform(pixels, end, pixels, [](auto pixel) { return pixel | Opaque; });
}

// sRGB comes under many names and with curves of many kinds: what counts is that no color changes by more than the
// transform rounds.
bool ColorConversion::changesNothing() const
{
    constexpr std::uint32_t Step = 15;
    if (m_kind != ColorKind::Rgb && m_kind != ColorKind::Gray)
        return false;
    std::vector<std::uint32_t> colors;
    for (std::uint32_t red = 0; red <= 255; red += Step)
        for (std::uint32_t green = 0; green <= 255; green += Step)
            for (std::uint32_t blue = 0; blue <= 255; blue += Step)
                if (m_kind == ColorKind::Rgb || (red == green && green == blue))
                    colors.push_back(Opaque | red << 16U | green << 8U | blue);
    std::vector<std::uint32_t> converted = colors;
    convertLine(converted.data(), static_cast<int>(converted.size()));
    return std::equal(colors.begin(), colors.end(), converted.begin(), [](std::uint32_t a, std::uint32_t b) {
        const auto lights = [](std::uint32_t pixel) { return std::bit_cast<std::array<std::uint8_t, 4>>(pixel); };
        return std::ranges::equal(lights(a), lights(b), [](int x, int y) { return std::abs(x - y) <= 1; });
    });
}

} // namespace trovarium
