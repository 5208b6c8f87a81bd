// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/HeifDecoder.h"

#include "platform/pictures/ColorConversion.h"
#include "platform/pictures/PictureHeader.h"
#include "platform/pictures/Reduction.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace trovarium {

namespace {

// The tiles of a picture are decoded by so many; the other cores may be painting.
constexpr int ThreadCount = 2;

constexpr int Channels = 4;
constexpr heif_chroma DeepPixels = std::endian::native == std::endian::little ? heif_chroma_interleaved_RRGGBBAA_LE
                                                                              : heif_chroma_interleaved_RRGGBBAA_BE;

void check(const heif_error& error)
{
    if (error.code == heif_error_Memory_allocation_error && error.subcode != heif_suberror_Security_limit_exceeded)
        throw Failure(FailureKind::OutOfMemory);
    if (error.code != heif_error_Ok)
        refusePicture();
}

// What each value of so many bits is in eight.
std::vector<unsigned char> eightBits(int bits)
{
    const std::size_t most = (std::size_t{1} << static_cast<unsigned>(bits)) - 1;
    std::vector<unsigned char> lights(most + 1);
    for (std::size_t value = 0; value <= most; ++value)
        lights[value] = static_cast<unsigned char>((value * 255 + most / 2) / most);
    return lights;
}

} // namespace

HeifDecoder::HeifDecoder(
    const HeifLibrary& library, std::span<const unsigned char> file, const std::atomic<bool>& cancelled)
    : m_library(library)
    , m_cancelled(cancelled)
    , m_context(library.contextAlloc(), library.contextFree)
    , m_handle(nullptr, library.imageHandleRelease)
{
    if (!m_context)
        throw Failure(FailureKind::OutOfMemory);
// From 1.19 on the limit is squared; before, it holds for each side and would refuse panoramas.
#if LIBHEIF_NUMERIC_VERSION >= 0x01130000
    m_library.contextSetMaximumImageSizeLimit(
        m_context.get(), static_cast<int>(std::sqrt(static_cast<double>(MostHeldTwice))));
#endif
    m_library.contextSetMaxDecodingThreads(m_context.get(), ThreadCount);
    check(m_library.contextReadFromMemoryWithoutCopy(m_context.get(), file.data(), file.size(), nullptr));
    heif_image_handle* handle = nullptr;
    check(m_library.contextGetPrimaryImageHandle(m_context.get(), &handle));
    m_handle.reset(handle);
    const QSize uncropped(
        m_library.imageHandleGetIspeWidth(m_handle.get()), m_library.imageHandleGetIspeHeight(m_handle.get()));
    if (pixelCount(uncropped) > MostHeldTwice)
        refusePicture();
}

QSize HeifDecoder::size() const
{
    return {m_library.imageHandleGetWidth(m_handle.get()), m_library.imageHandleGetHeight(m_handle.get())};
}

DecodedPixels HeifDecoder::decode() const
{
    const bool isDeep = m_library.imageHandleGetLumaBitsPerPixel(m_handle.get()) > 8;
    const std::unique_ptr<heif_decoding_options, decltype(&heif_decoding_options_free)> options(
        m_library.decodingOptionsAlloc(), m_library.decodingOptionsFree);
    if (!options)
        throw Failure(FailureKind::OutOfMemory);
#if LIBHEIF_NUMERIC_VERSION >= 0x01170000  // 1.23; what older ones are at work on can't be cancelled
    constexpr int FirstWithCancelling = 6; // the library may be older than its headers
    if (options->version >= FirstWithCancelling) {
        options->progress_user_data = const_cast<std::atomic<bool>*>(&m_cancelled);
        options->cancel_decoding = [](void* cancelled) { return *static_cast<std::atomic<bool>*>(cancelled) ? 1 : 0; };
    }
#endif
    heif_image* decoded = nullptr;
    check(m_library.decodeImage(m_handle.get(), &decoded, heif_colorspace_RGB,
        isDeep ? DeepPixels : heif_chroma_interleaved_RGBA, options.get()));
    const std::unique_ptr<heif_image, decltype(&heif_image_release)> image(decoded, m_library.imageRelease);
    const int width = m_library.imageGetWidth(decoded, heif_channel_interleaved);
    const int height = m_library.imageGetHeight(decoded, heif_channel_interleaved);
    const int bits = m_library.imageGetBitsPerPixelRange(decoded, heif_channel_interleaved);
    int bytesPerLine = 0;
    const std::uint8_t* line = m_library.imageGetPlaneReadonly(decoded, heif_channel_interleaved, &bytesPerLine);
    // Older libraries decode what there is, whatever the headers say.
    if (line == nullptr || QSize(width, height) != size() || bits < 8 || bits > 16)
        refusePicture();

    const std::vector<unsigned char> lights = eightBits(bits);
    const auto light = [&](std::uint16_t value) { return lights[std::min<std::size_t>(value, lights.size() - 1)]; };
    QImage pixels = newImage(size(),
        formatOfBytes(m_library.imageHandleHasAlphaChannel(m_handle.get()) != 0,
            m_library.imageHandleIsPremultipliedAlpha(m_handle.get()) != 0));
    for (int y = 0; y < height && !m_cancelled; ++y, line += bytesPerLine) {
        if (isDeep)
            std::transform(reinterpret_cast<const std::uint16_t*>(line),
                reinterpret_cast<const std::uint16_t*>(line) + std::ptrdiff_t{width} * Channels, pixels.scanLine(y),
                light);
        else
            std::copy_n(line, std::ptrdiff_t{width} * Channels, pixels.scanLine(y));
    }
    return {std::move(pixels), profile()};
}

// One that is embedded comes before the numbers.
std::vector<unsigned char> HeifDecoder::profile() const
{
    std::vector<unsigned char> bytes(m_library.imageHandleGetRawColorProfileSize(m_handle.get()));
    if (!bytes.empty()) {
        check(m_library.imageHandleGetRawColorProfile(m_handle.get(), bytes.data()));
        return bytes;
    }
    heif_color_profile_nclx* found = nullptr;
    m_library.imageHandleGetNclxColorProfile(m_handle.get(), &found);
    const std::unique_ptr<heif_color_profile_nclx, decltype(&heif_nclx_color_profile_free)> colors(
        found, m_library.nclxColorProfileFree);
    if (!colors)
        return {};
    return profileOf({.white = {colors->color_primary_white_x, colors->color_primary_white_y},
        .red = {colors->color_primary_red_x, colors->color_primary_red_y},
        .green = {colors->color_primary_green_x, colors->color_primary_green_y},
        .blue = {colors->color_primary_blue_x, colors->color_primary_blue_y},
        .transfer = colors->transfer_characteristics});
}

} // namespace trovarium
