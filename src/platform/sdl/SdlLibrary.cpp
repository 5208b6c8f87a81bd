#include "platform/sdl/SdlLibrary.h"

#include "runtime/Failure.h"

#include <dlfcn.h>

#include <type_traits>

namespace trovarium {

namespace {

void* loaded(const char* name)
{
    void* const library = dlopen(name, RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
    if (library == nullptr)
        throw Failure(FailureKind::DeviceUnavailable);
    return library;
}

template <class Function>
void find(Function& function, void* library, const char* symbol)
{
    function = reinterpret_cast<Function>(dlsym(library, symbol));
    if (function == nullptr)
        throw Failure(FailureKind::DeviceUnavailable);
}

} // namespace

SdlLibrary::SdlLibrary()
{
    void* const sdl = loaded("libSDL2-2.0.so.0");
    find(setHint, sdl, "SDL_SetHintWithPriority");
    find(initSubSystem, sdl, "SDL_InitSubSystem");
    find(quitSubSystem, sdl, "SDL_QuitSubSystem");
    find(openFile, sdl, "SDL_RWFromFile");
    void* const mixer = loaded("libSDL2_mixer-2.0.so.0");
    find(openAudio, mixer, "Mix_OpenAudio");
    find(closeAudio, mixer, "Mix_CloseAudio");
    find(quit, mixer, "Mix_Quit");
    find(setSoundFonts, mixer, "Mix_SetSoundFonts");
    find(loadWave, mixer, "Mix_LoadWAV_RW");
    find(playChannel, mixer, "Mix_PlayChannel");
    find(haltChannel, mixer, "Mix_HaltChannel");
    find(freeChunk, mixer, "Mix_FreeChunk");
    find(loadMusic, mixer, "Mix_LoadMUS");
    find(playMusic, mixer, "Mix_PlayMusic");
    find(haltMusic, mixer, "Mix_HaltMusic");
    find(freeMusic, mixer, "Mix_FreeMusic");
}

} // namespace trovarium
