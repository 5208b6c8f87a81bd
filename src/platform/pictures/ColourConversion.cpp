#include "platform/pictures/ColourConversion.h"

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

KindInProfiles inProfiles(ColourKind kind)
{
    switch (kind) {
    case ColourKind::Grey:
        return {cmsSigGrayData, TYPE_GRAY_8};
    case ColourKind::Inks:
        return {cmsSigCmykData, TYPE_CMYK_8};
    case ColourKind::InvertedInks:
        return {cmsSigCmykData, TYPE_CMYK_8_REV};
    case ColourKind::Rgb:
        break;
    }
    return {cmsSigRgbData, Pixels};
}

struct CloseProfile {
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};
using Profile = std::unique_ptr<void, CloseProfile>;

bool describesColours(cmsProfileClassSignature profileClass)
{
    return profileClass == cmsSigInputClass || profileClass == cmsSigDisplayClass || profileClass == cmsSigOutputClass
        || profileClass == cmsSigColorSpaceClass;
}

} // namespace

struct ColourConversion::Transform {
    explicit Transform(cmsHTRANSFORM transform)
        : handle(transform)
    {
    }
    ~Transform() { cmsDeleteTransform(handle); }
    Transform(const Transform&) = delete;
    Transform& operator=(const Transform&) = delete;

    cmsHTRANSFORM handle;
};

ColourConversion::ColourConversion(std::span<const unsigned char> bytes, ColourKind kind)
    : m_kind(kind)
{
    if (bytes.empty())
        return;
    const Profile source(cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())));
    const KindInProfiles wanted = inProfiles(kind);
    if (!source || cmsGetColorSpace(source.get()) != wanted.space || !describesColours(cmsGetDeviceClass(source.get())))
        return;
    const Profile standard(cmsCreate_sRGBProfile());
    const cmsHTRANSFORM handle =
        cmsCreateTransform(source.get(), wanted.pixels, standard.get(), Pixels, INTENT_PERCEPTUAL, 0);
    if (handle == nullptr)
        return;
    m_transform = std::make_unique<Transform>(handle);
    if (kind == ColourKind::Grey) {
        std::array<std::uint8_t, 256> lights{};
        for (std::size_t i = 0; i < lights.size(); ++i)
            lights[i] = static_cast<std::uint8_t>(i);
        m_greys = std::make_unique<Greys>();
        cmsDoTransform(handle, lights.data(), m_greys->data(), 256);
        m_transform.reset();
    }
    if (changesNothing()) {
        m_transform.reset();
        m_greys.reset();
    }
}

ColourConversion::~ColourConversion() = default;

void ColourConversion::convert(std::uint32_t* pixels, int width, int height, std::ptrdiff_t pixelsPerLine,
    const std::atomic<bool>& cancelled) const
{
    constexpr std::int64_t WorthAThread = 1'000'000; // pixels
    if (empty())
        return;
    const int shared = std::int64_t{width} * height < WorthAThread ? 0 : height / 2;
    std::thread other;
    try {
        if (shared > 0)
            other = std::thread([&] { convertLines(pixels, width, shared, pixelsPerLine, cancelled); });
    } catch (const std::system_error&) {
        // No thread to be had: it takes twice as long.
        convertLines(pixels, width, shared, pixelsPerLine, cancelled);
    }
    convertLines(pixels + shared * pixelsPerLine, width, height - shared, pixelsPerLine, cancelled);
    if (other.joinable())
        other.join();
}

void ColourConversion::convertLines(std::uint32_t* pixels, int width, int height, std::ptrdiff_t pixelsPerLine,
    const std::atomic<bool>& cancelled) const
{
    for (int y = 0; y < height && !cancelled; ++y, pixels += pixelsPerLine) {
        std::uint32_t* end = pixels + width;
        if (m_greys) {
            std::transform(pixels, end, pixels,
                [this](auto pixel) { return (pixel & Opaque) | ((*m_greys)[pixel & 0xffU] & ~Opaque); });
            continue;
        }
        cmsDoTransform(m_transform->handle, pixels, pixels, static_cast<cmsUInt32Number>(width));
        if (m_kind != ColourKind::Rgb)
            std::transform(pixels, end, pixels, [](auto pixel) { return pixel | Opaque; });
    }
}

// sRGB comes under many names and with curves of many kinds: what counts is that no colour moves by more
// than the rounding of the transform.
bool ColourConversion::changesNothing() const
{
    constexpr std::uint32_t Step = 15;
    if (m_kind != ColourKind::Rgb && m_kind != ColourKind::Grey)
        return false;
    std::vector<std::uint32_t> colours;
    for (std::uint32_t red = 0; red <= 255; red += Step)
        for (std::uint32_t green = 0; green <= 255; green += Step)
            for (std::uint32_t blue = 0; blue <= 255; blue += Step)
                if (m_kind == ColourKind::Rgb || (red == green && green == blue))
                    colours.push_back(Opaque | red << 16U | green << 8U | blue);
    std::vector<std::uint32_t> converted = colours;
    convert(converted.data(), static_cast<int>(converted.size()), 1, 0, false);
    return std::equal(colours.begin(), colours.end(), converted.begin(), [](std::uint32_t a, std::uint32_t b) {
        const auto lights = [](std::uint32_t pixel) { return std::bit_cast<std::array<std::uint8_t, 4>>(pixel); };
        return std::ranges::equal(lights(a), lights(b), [](int x, int y) { return std::abs(x - y) <= 1; });
    });
}

} // namespace trovarium
