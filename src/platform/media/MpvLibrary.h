// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/system/DynamicLibrary.h"

#include <mpv/client.h>
#include <mpv/render.h>

namespace trovarium {

// The functions of libmpv that films need.
class MpvLibrary {
    DynamicLibrary m_library;

public:
    explicit MpvLibrary(const char* name = "libmpv.so.2") // "Device unavailable"
        : m_library(name)
    {
    }

    decltype(&mpv_create) create = m_library["mpv_create"];
    decltype(&mpv_initialize) initialize = m_library["mpv_initialize"];
    decltype(&mpv_terminate_destroy) terminateDestroy = m_library["mpv_terminate_destroy"];
    decltype(&mpv_set_option_string) setOptionString = m_library["mpv_set_option_string"];
    decltype(&mpv_command) command = m_library["mpv_command"];
    decltype(&mpv_set_property) setProperty = m_library["mpv_set_property"];
    decltype(&mpv_get_property) getProperty = m_library["mpv_get_property"];
    decltype(&mpv_wait_event) waitEvent = m_library["mpv_wait_event"];
    decltype(&mpv_render_context_create) renderContextCreate = m_library["mpv_render_context_create"];
    decltype(&mpv_render_context_set_update_callback) renderContextSetUpdateCallback =
        m_library["mpv_render_context_set_update_callback"];
    decltype(&mpv_render_context_update) renderContextUpdate = m_library["mpv_render_context_update"];
    decltype(&mpv_render_context_render) renderContextRender = m_library["mpv_render_context_render"];
    decltype(&mpv_render_context_free) renderContextFree = m_library["mpv_render_context_free"];
};

} // namespace trovarium
