// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/system/DynamicLibrary.h"

#include <libheif/heif.h>

namespace trovarium {

// The functions of libheif that pictures need.
class HeifLibrary {
    DynamicLibrary m_library;

public:
    static constexpr const char* Name = "libheif.so.1";
    static constexpr const char* Package = "libheif1"; // of Debian

    explicit HeifLibrary(const char* name) // "Device unavailable"
        : m_library(name)
    {
    }

    decltype(&heif_context_alloc) contextAlloc = m_library["heif_context_alloc"];
    decltype(&heif_context_free) contextFree = m_library["heif_context_free"];
    decltype(&heif_context_set_maximum_image_size_limit) contextSetMaximumImageSizeLimit =
        m_library["heif_context_set_maximum_image_size_limit"];
    decltype(&heif_context_set_max_decoding_threads) contextSetMaxDecodingThreads =
        m_library["heif_context_set_max_decoding_threads"];
    decltype(&heif_context_read_from_memory_without_copy) contextReadFromMemoryWithoutCopy =
        m_library["heif_context_read_from_memory_without_copy"];
    decltype(&heif_context_get_primary_image_handle) contextGetPrimaryImageHandle =
        m_library["heif_context_get_primary_image_handle"];
    decltype(&heif_image_handle_release) imageHandleRelease = m_library["heif_image_handle_release"];
    decltype(&heif_image_handle_get_width) imageHandleGetWidth = m_library["heif_image_handle_get_width"];
    decltype(&heif_image_handle_get_height) imageHandleGetHeight = m_library["heif_image_handle_get_height"];
    decltype(&heif_image_handle_get_ispe_width) imageHandleGetIspeWidth = m_library["heif_image_handle_get_ispe_width"];
    decltype(&heif_image_handle_get_ispe_height) imageHandleGetIspeHeight =
        m_library["heif_image_handle_get_ispe_height"];
    decltype(&heif_image_handle_has_alpha_channel) imageHandleHasAlphaChannel =
        m_library["heif_image_handle_has_alpha_channel"];
    decltype(&heif_image_handle_is_premultiplied_alpha) imageHandleIsPremultipliedAlpha =
        m_library["heif_image_handle_is_premultiplied_alpha"];
    decltype(&heif_image_handle_get_luma_bits_per_pixel) imageHandleGetLumaBitsPerPixel =
        m_library["heif_image_handle_get_luma_bits_per_pixel"];
    decltype(&heif_image_handle_get_raw_color_profile_size) imageHandleGetRawColorProfileSize =
        m_library["heif_image_handle_get_raw_color_profile_size"];
    decltype(&heif_image_handle_get_raw_color_profile) imageHandleGetRawColorProfile =
        m_library["heif_image_handle_get_raw_color_profile"];
    decltype(&heif_image_handle_get_nclx_color_profile) imageHandleGetNclxColorProfile =
        m_library["heif_image_handle_get_nclx_color_profile"];
    decltype(&heif_nclx_color_profile_free) nclxColorProfileFree = m_library["heif_nclx_color_profile_free"];
    decltype(&heif_decoding_options_alloc) decodingOptionsAlloc = m_library["heif_decoding_options_alloc"];
    decltype(&heif_decoding_options_free) decodingOptionsFree = m_library["heif_decoding_options_free"];
    decltype(&heif_decode_image) decodeImage = m_library["heif_decode_image"];
    decltype(&heif_image_get_width) imageGetWidth = m_library["heif_image_get_width"];
    decltype(&heif_image_get_height) imageGetHeight = m_library["heif_image_get_height"];
    decltype(&heif_image_get_bits_per_pixel_range) imageGetBitsPerPixelRange =
        m_library["heif_image_get_bits_per_pixel_range"];
    decltype(&heif_image_get_plane_readonly) imageGetPlaneReadonly = m_library["heif_image_get_plane_readonly"];
    decltype(&heif_image_release) imageRelease = m_library["heif_image_release"];
};

} // namespace trovarium
