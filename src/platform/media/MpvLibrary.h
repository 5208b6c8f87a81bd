#pragma once

#include <mpv/client.h>
#include <mpv/render.h>

namespace trovarium {

// What is used of libmpv. The library is loaded here and not at the start, which shows no film, and where it is
// missing the program does without films. Once loaded it stays.
class MpvLibrary {
public:
    explicit MpvLibrary(const char* name = "libmpv.so.2"); // "Device unavailable"

    decltype(&mpv_create) create;
    decltype(&mpv_initialize) initialize;
    decltype(&mpv_terminate_destroy) terminateDestroy;
    decltype(&mpv_set_option_string) setOptionString;
    decltype(&mpv_command) command;
    decltype(&mpv_set_property) setProperty;
    decltype(&mpv_get_property) getProperty;
    decltype(&mpv_wait_event) waitEvent;
    decltype(&mpv_render_context_create) renderContextCreate;
    decltype(&mpv_render_context_set_update_callback) renderContextSetUpdateCallback;
    decltype(&mpv_render_context_update) renderContextUpdate;
    decltype(&mpv_render_context_render) renderContextRender;
    decltype(&mpv_render_context_free) renderContextFree;
};

} // namespace trovarium
