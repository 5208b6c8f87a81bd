// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/system/DynamicLibrary.h"

#include <cstddef>
#include <cstdint>

#include <jxl/decode.h>
#include <jxl/version.h>

namespace trovarium {

// The functions of libjxl that pictures need. Its versions below 1.0 aren't compatible with one another, so that it is
// the one whose headers the program was built with.
class JpegXlLibrary {
    DynamicLibrary m_library;

public:
#define TROVARIUM_TEXT_OF(value) #value
#define TROVARIUM_VERSION_OF(major, minor) TROVARIUM_TEXT_OF(major) "." TROVARIUM_TEXT_OF(minor)
    static constexpr const char* Name = "libjxl.so." TROVARIUM_VERSION_OF(JPEGXL_MAJOR_VERSION, JPEGXL_MINOR_VERSION);
    static constexpr const char* Package = // of Debian
        "libjxl" TROVARIUM_VERSION_OF(JPEGXL_MAJOR_VERSION, JPEGXL_MINOR_VERSION);
#undef TROVARIUM_VERSION_OF
#undef TROVARIUM_TEXT_OF

    explicit JpegXlLibrary(const char* name) // "Device unavailable"
        : m_library(name)
    {
    }

    decltype(&JxlDecoderCreate) create = m_library["JxlDecoderCreate"];
    decltype(&JxlDecoderDestroy) destroy = m_library["JxlDecoderDestroy"];
    decltype(&JxlDecoderSetParallelRunner) setParallelRunner = m_library["JxlDecoderSetParallelRunner"];
    decltype(&JxlDecoderSubscribeEvents) subscribeEvents = m_library["JxlDecoderSubscribeEvents"];
    decltype(&JxlDecoderSetInput) setInput = m_library["JxlDecoderSetInput"];
    decltype(&JxlDecoderCloseInput) closeInput = m_library["JxlDecoderCloseInput"];
    decltype(&JxlDecoderProcessInput) processInput = m_library["JxlDecoderProcessInput"];
    decltype(&JxlDecoderGetBasicInfo) getBasicInfo = m_library["JxlDecoderGetBasicInfo"];
    decltype(&JxlDecoderSetPreferredColorProfile) setPreferredColorProfile =
        m_library["JxlDecoderSetPreferredColorProfile"];
    decltype(&JxlDecoderSetImageOutBuffer) setImageOutBuffer = m_library["JxlDecoderSetImageOutBuffer"];

    // The encoding is that of the original, the profile that of the pixels that are decoded.
#if JPEGXL_NUMERIC_VERSION < JPEGXL_COMPUTE_NUMERIC_VERSION(0, 9, 0)
    JxlDecoderStatus getEncoding(const JxlDecoder* decoder, JxlColorEncoding* encoding) const
    {
        return m_getEncoding(decoder, nullptr, JXL_COLOR_PROFILE_TARGET_ORIGINAL, encoding);
    }
    JxlDecoderStatus getProfileSize(const JxlDecoder* decoder, std::size_t* size) const
    {
        return m_getProfileSize(decoder, nullptr, JXL_COLOR_PROFILE_TARGET_DATA, size);
    }
    JxlDecoderStatus getProfile(const JxlDecoder* decoder, std::uint8_t* bytes, std::size_t size) const
    {
        return m_getProfile(decoder, nullptr, JXL_COLOR_PROFILE_TARGET_DATA, bytes, size);
    }
#else
    JxlDecoderStatus getEncoding(const JxlDecoder* decoder, JxlColorEncoding* encoding) const
    {
        return m_getEncoding(decoder, JXL_COLOR_PROFILE_TARGET_ORIGINAL, encoding);
    }
    JxlDecoderStatus getProfileSize(const JxlDecoder* decoder, std::size_t* size) const
    {
        return m_getProfileSize(decoder, JXL_COLOR_PROFILE_TARGET_DATA, size);
    }
    JxlDecoderStatus getProfile(const JxlDecoder* decoder, std::uint8_t* bytes, std::size_t size) const
    {
        return m_getProfile(decoder, JXL_COLOR_PROFILE_TARGET_DATA, bytes, size);
    }
#endif

private:
    decltype(&JxlDecoderGetColorAsEncodedProfile) m_getEncoding = m_library["JxlDecoderGetColorAsEncodedProfile"];
    decltype(&JxlDecoderGetICCProfileSize) m_getProfileSize = m_library["JxlDecoderGetICCProfileSize"];
    decltype(&JxlDecoderGetColorAsICCProfile) m_getProfile = m_library["JxlDecoderGetColorAsICCProfile"];
};

} // namespace trovarium
