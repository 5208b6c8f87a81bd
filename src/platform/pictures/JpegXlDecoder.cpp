// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/JpegXlDecoder.h"

#include "platform/pictures/ColorConversion.h"
#include "platform/pictures/PictureHeader.h"
#include "platform/pictures/Reduction.h"
#include "runtime/Failure.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace trovarium {

JpegXlDecoder::JpegXlDecoder(
    const JpegXlLibrary& library, std::span<const unsigned char> file, const std::atomic<bool>& cancelled)
    : m_library(library)
    , m_cancelled(cancelled)
    , m_decoder(library.create(nullptr), library.destroy)
{
    // Alpha, depth and the like: each takes as much memory as a color.
    constexpr std::uint32_t MostExtraChannels = 4;
    if (!m_decoder)
        throw Failure(FailureKind::OutOfMemory);
    m_library.setParallelRunner(m_decoder.get(), &JpegXlDecoder::runParts, this);
    m_library.subscribeEvents(m_decoder.get(), JXL_DEC_BASIC_INFO | JXL_DEC_COLOR_ENCODING | JXL_DEC_FULL_IMAGE);
    m_library.setInput(m_decoder.get(), file.data(), file.size());
    m_library.closeInput(m_decoder.get());
    expect(JXL_DEC_BASIC_INFO);
    if (m_library.getBasicInfo(m_decoder.get(), &m_info) != JXL_DEC_SUCCESS
        || m_info.num_extra_channels > MostExtraChannels)
        refusePicture();
    m_partsLeft = 100'000 + (std::int64_t{m_info.xsize} + m_info.ysize) * 20;
}

QSize JpegXlDecoder::size() const
{
    return {static_cast<int>(m_info.xsize), static_cast<int>(m_info.ysize)};
}

DecodedPixels JpegXlDecoder::decode()
{
    constexpr JxlPixelFormat Bytes = {4, JXL_TYPE_UINT8, JXL_NATIVE_ENDIAN, 0};
    expect(JXL_DEC_COLOR_ENCODING);
    DecodedPixels decoded{{}, profile()};
    expect(JXL_DEC_NEED_IMAGE_OUT_BUFFER);
    decoded.image = newImage(size(), formatOfBytes(m_info.alpha_bits != 0, m_info.alpha_premultiplied != JXL_FALSE));
    if (m_library.setImageOutBuffer(
            m_decoder.get(), &Bytes, decoded.image.bits(), static_cast<std::size_t>(decoded.image.sizeInBytes()))
        != JXL_DEC_SUCCESS)
        refusePicture();
    expect(JXL_DEC_FULL_IMAGE);
    return decoded;
}

// One after the other, since the other cores may be painting.
JxlParallelRetCode JpegXlDecoder::runParts(void* self, void* job, JxlParallelRunInit start, JxlParallelRunFunction part,
    std::uint32_t first, std::uint32_t end)
{
    auto& decoder = *static_cast<JpegXlDecoder*>(self);
    if (start(job, 1) != 0)
        return JXL_PARALLEL_RET_RUNNER_ERROR;
    for (; first < end; ++first) {
        if (decoder.m_cancelled || --decoder.m_partsLeft < 0)
            return JXL_PARALLEL_RET_RUNNER_ERROR;
        part(job, first, 0);
    }
    return 0;
}

void JpegXlDecoder::expect(JxlDecoderStatus status)
{
    if (m_library.processInput(m_decoder.get()) != status)
        refusePicture();
}

// sRGB where the library may choose, which is that of lossy pictures. Its own profiles of PQ and HLG make a white page
// dark.
std::vector<unsigned char> JpegXlDecoder::profile()
{
    JxlColorEncoding original{};
    m_library.getEncoding(m_decoder.get(), &original);
    if (original.transfer_function == JXL_TRANSFER_FUNCTION_PQ
        || original.transfer_function == JXL_TRANSFER_FUNCTION_HLG) {
        m_library.setPreferredColorProfile(m_decoder.get(), &original);
        const auto point = [](const double* xy) { return CodedColors::Point{xy[0], xy[1]}; };
        CodedColors colors{.white = point(original.white_point_xy),
            .red = {0.64, 0.33}, // those of sRGB, for a gray picture, which has none
            .green = {0.3, 0.6},
            .blue = {0.15, 0.06},
            .transfer = original.transfer_function};
        if (m_info.num_color_channels != 1) {
            colors.red = point(original.primaries_red_xy);
            colors.green = point(original.primaries_green_xy);
            colors.blue = point(original.primaries_blue_xy);
        }
        return profileOf(colors);
    }
    JxlColorEncoding standard{};
    standard.color_space = m_info.num_color_channels == 1 ? JXL_COLOR_SPACE_GRAY : JXL_COLOR_SPACE_RGB;
    standard.white_point = JXL_WHITE_POINT_D65;
    standard.primaries = JXL_PRIMARIES_SRGB;
    standard.transfer_function = JXL_TRANSFER_FUNCTION_SRGB;
    m_library.setPreferredColorProfile(m_decoder.get(), &standard);
    std::size_t size = 0;
    if (m_library.getProfileSize(m_decoder.get(), &size) != JXL_DEC_SUCCESS)
        return {};
    std::vector<unsigned char> bytes(size);
    if (m_library.getProfile(m_decoder.get(), bytes.data(), size) != JXL_DEC_SUCCESS)
        return {};
    if (std::string_view(reinterpret_cast<const char*>(bytes.data()), size).substr(0, 20).ends_with("CMYK"))
        refusePicture(); // its black is a channel of its own
    return bytes;
}

} // namespace trovarium
