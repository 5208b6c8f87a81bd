#include "platform/media/MpvLibrary.h"

#include "runtime/Failure.h"

#include <dlfcn.h>

namespace trovarium {

MpvLibrary::MpvLibrary(const char* name)
{
    void* const library = dlopen(name, RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
    if (library == nullptr)
        throw Failure(FailureKind::DeviceUnavailable);
    const auto find = [library](auto& function, const char* symbol) {
        function = reinterpret_cast<std::decay_t<decltype(function)>>(dlsym(library, symbol));
        if (function == nullptr)
            throw Failure(FailureKind::DeviceUnavailable);
    };
    find(create, "mpv_create");
    find(initialize, "mpv_initialize");
    find(terminateDestroy, "mpv_terminate_destroy");
    find(setOptionString, "mpv_set_option_string");
    find(command, "mpv_command");
    find(setProperty, "mpv_set_property");
    find(getProperty, "mpv_get_property");
    find(waitEvent, "mpv_wait_event");
    find(renderContextCreate, "mpv_render_context_create");
    find(renderContextSetUpdateCallback, "mpv_render_context_set_update_callback");
    find(renderContextUpdate, "mpv_render_context_update");
    find(renderContextRender, "mpv_render_context_render");
    find(renderContextFree, "mpv_render_context_free");
}

} // namespace trovarium
