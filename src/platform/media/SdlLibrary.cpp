#include "platform/media/SdlLibrary.h"

#include "runtime/Failure.h"

#include <dlfcn.h>

namespace trovarium {

namespace {

void* load(const char* name)
{
    void* const library = dlopen(name, RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
    if (library == nullptr)
        throw Failure(FailureKind::DeviceUnavailable);
    return library;
}

// Looks in the library and in those that it stands on.
template <class Function>
Function find(void* library, const char* symbol)
{
    return reinterpret_cast<Function>(dlsym(library, symbol));
}

void dropMessage(
    const char* /*file*/, int /*line*/, const char* /*function*/, int /*error*/, const char* /*format*/, ...)
{
}

} // namespace

SdlLibrary::SdlLibrary()
{
    void* const sdl = load("libSDL2-2.0.so.0");
    void* const mixer = load("libSDL2_mixer-2.0.so.0");
    const auto require = [](auto& function, void* library, const char* symbol) {
        function = find<std::decay_t<decltype(function)>>(library, symbol);
        if (function == nullptr)
            throw Failure(FailureKind::DeviceUnavailable);
    };
    require(setMainReady, sdl, "SDL_SetMainReady");
    require(setHint, sdl, "SDL_SetHint");
    require(initSubSystem, sdl, "SDL_InitSubSystem");
    require(quitSubSystem, sdl, "SDL_QuitSubSystem");
    require(tlsCleanup, sdl, "SDL_TLSCleanup");
    require(rwFromFile, sdl, "SDL_RWFromFile");
    require(rwFromConstMem, sdl, "SDL_RWFromConstMem");
    require(loadWav, sdl, "SDL_LoadWAV_RW");
    require(freeWav, sdl, "SDL_FreeWAV");
    require(newAudioStream, sdl, "SDL_NewAudioStream");
    require(freeAudioStream, sdl, "SDL_FreeAudioStream");
    require(audioStreamPut, sdl, "SDL_AudioStreamPut");
    require(audioStreamFlush, sdl, "SDL_AudioStreamFlush");
    require(audioStreamAvailable, sdl, "SDL_AudioStreamAvailable");
    require(audioStreamGet, sdl, "SDL_AudioStreamGet");
    require(mixAudioFormat, sdl, "SDL_MixAudioFormat");
    require(openAudioDevice, mixer, "Mix_OpenAudioDevice");
    require(closeAudio, mixer, "Mix_CloseAudio");
    require(setPostMix, mixer, "Mix_SetPostMix");
    require(getSoundFonts, mixer, "Mix_GetSoundFonts");
    require(setSoundFonts, mixer, "Mix_SetSoundFonts");
    require(setTimidityCfg, mixer, "Mix_SetTimidityCfg");
    require(loadMusic, mixer, "Mix_LoadMUSType_RW");
    require(freeMusic, mixer, "Mix_FreeMusic");
    require(playMusic, mixer, "Mix_PlayMusic");
    keepQuiet(sdl, mixer);
}

// Below SDL the sound card's library and the synthesizer write too: of a machine without a card, of a damaged piece.
void SdlLibrary::keepQuiet(void* sdl, void* mixer) const
{
    if (const auto setOutput = find<decltype(&SDL_LogSetOutputFunction)>(sdl, "SDL_LogSetOutputFunction"))
        setOutput(nullptr, nullptr);
    if (const auto setHandler = find<int (*)(decltype(&dropMessage))>(sdl, "snd_lib_error_set_handler"))
        setHandler(&dropMessage);
    using SetLog = void* (*)(int level, void (*log)(int, const char*, void*), void* data);
    if (const auto setLog = find<SetLog>(mixer, "fluid_set_log_function")) {
        for (int level = 0; level <= 4; ++level) // panic to debug
            setLog(level, nullptr, nullptr);
    }
}

} // namespace trovarium
