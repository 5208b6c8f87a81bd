// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/ColorConversion.h"

#include <QImage>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <system_error>
#include <thread>
#include <utility>
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
using Curve = std::unique_ptr<cmsToneCurve, void (*)(cmsToneCurve*)>;

bool describesColors(cmsProfileClassSignature profileClass)
{
    return profileClass == cmsSigInputClass || profileClass == cmsSigDisplayClass || profileClass == cmsSigOutputClass
        || profileClass == cmsSigColorSpaceClass;
}

// The light of a value of PQ or HLG, both from 0 to 1, where 1 is a white page; highlights may have 5. Source: ITU-R
// BT.2100, tables 4 and 5; BT.2408 for the page.
double lightOf(double value, bool isPq)
{
    constexpr double Page = 203;       // cd/m2
    constexpr double Brightest = 1000; // cd/m2, of the display that HLG is converted for
    if (isPq) {
        constexpr double M1 = 2610.0 / 16384, M2 = 2523.0 / 32, C1 = 3424.0 / 4096, C2 = 2413.0 / 128,
                         C3 = 2392.0 / 128;
        const double root = std::pow(value, 1 / M2);
        return 10'000 / Page * std::pow(std::max(root - C1, 0.0) / (C2 - C3 * root), 1 / M1);
    }
    constexpr double A = 0.17883277, B = 1 - 4 * A, C = 0.55991073;
    const double scene = value <= 0.5 ? value * value / 3 : (std::exp((value - C) / A) + B) / 12;
    return Brightest / Page * std::pow(scene, 1.2);
}

// Light beyond half of a page's is compressed, so that what is five times as bright as a page is white.
double compressed(double light)
{
    constexpr double Knee = 0.5, Brightest = 5;
    constexpr double Most = (Brightest - Knee) / (1 - Knee);
    if (light <= Knee)
        return light;
    const double above = (light - Knee) / (1 - Knee);
    return std::min(1.0, Knee + (1 - Knee) * above * (1 + above / (Most * Most)) / (1 + above));
}

Curve curveOf(int transfer)
{
    constexpr int Pq = 16, Hlg = 18;
    constexpr std::pair<int, double> Exponents[] = {{4, 2.2}, {5, 2.8}, {8, 1}, {17, 2.6}};
    for (const auto& [number, exponent] : Exponents)
        if (transfer == number)
            return {cmsBuildGamma(nullptr, exponent), &cmsFreeToneCurve};
    if (transfer == Pq || transfer == Hlg) {
        std::array<cmsUInt16Number, 4096> table{};
        for (std::size_t i = 0; i < table.size(); ++i)
            table[i] = static_cast<cmsUInt16Number>(std::lround(65535
                * compressed(lightOf(static_cast<double>(i) / static_cast<double>(table.size() - 1), transfer == Pq))));
        return {cmsBuildTabulatedToneCurve16(nullptr, table.size(), table.data()), &cmsFreeToneCurve};
    }
    // For the rest the standard gives the curve of a camera; on screens they are all shown with that of sRGB.
    const std::array<double, 5> standard = {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
    return {cmsBuildParametricToneCurve(nullptr, 4, standard.data()), &cmsFreeToneCurve};
}

} // namespace

std::vector<unsigned char> profileOf(const CodedColors& colors)
{
    const auto point = [](const CodedColors::Point& xy) { return cmsCIExyY{xy.x, xy.y, 1}; };
    const cmsCIExyY white = point(colors.white);
    const cmsCIExyYTRIPLE primaries = {point(colors.red), point(colors.green), point(colors.blue)};
    const Curve curve = curveOf(colors.transfer);
    const std::array<cmsToneCurve*, 3> curves = {curve.get(), curve.get(), curve.get()};
    if (!curve || colors.white.y <= 0)
        return {};
    const Profile profile(cmsCreateRGBProfile(&white, &primaries, curves.data()), &cmsCloseProfile);
    cmsUInt32Number size = 0;
    if (!profile || !cmsSaveProfileToMem(profile.get(), nullptr, &size))
        return {};
    std::vector<unsigned char> bytes(size);
    return cmsSaveProfileToMem(profile.get(), bytes.data(), &size) ? bytes : std::vector<unsigned char>();
}

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
