// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/SdlLibrary.h"

namespace trovarium {

namespace {

void dropMessage(
    const char* /*file*/, int /*line*/, const char* /*function*/, int /*error*/, const char* /*format*/, ...)
{
}

} // namespace

// Libraries below SDL print messages of their own: ALSA on a machine without a sound card, the synthesizer for a
// damaged piece.
SdlLibrary::SdlLibrary()
{
    using SetHandler = int (*)(decltype(&dropMessage));
    using SetLog = void* (*)(int level, void (*log)(int, const char*, void*), void* data);
    if (const decltype(&SDL_LogSetOutputFunction) setOutput = m_sdl.find("SDL_LogSetOutputFunction"))
        setOutput(nullptr, nullptr);
    if (const SetHandler setHandler = m_sdl.find("snd_lib_error_set_handler"))
        setHandler(&dropMessage);
    if (const SetLog setLog = m_mixer.find("fluid_set_log_function")) {
        for (int level = 0; level <= 4; ++level) // panic to debug
            setLog(level, nullptr, nullptr);
    }
}

} // namespace trovarium
