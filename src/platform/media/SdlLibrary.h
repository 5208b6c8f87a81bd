#pragma once

#define SDL_MAIN_HANDLED
#include <SDL.h>
#include <SDL_mixer.h>

namespace trovarium {

// What is used of SDL and its mixer. They are loaded here and not at the start, which is silent, and where they are
// missing the program is silent throughout. Once loaded they stay. Nothing that they do is told on standard error.
class SdlLibrary {
public:
    SdlLibrary(); // "Device unavailable"

    decltype(&SDL_SetMainReady) setMainReady;
    decltype(&SDL_SetHint) setHint;
    decltype(&SDL_InitSubSystem) initSubSystem;
    decltype(&SDL_QuitSubSystem) quitSubSystem;
    decltype(&SDL_TLSCleanup) tlsCleanup;
    decltype(&SDL_RWFromFile) rwFromFile;
    decltype(&SDL_RWFromConstMem) rwFromConstMem;
    decltype(&SDL_LoadWAV_RW) loadWav;
    decltype(&SDL_FreeWAV) freeWav;
    decltype(&SDL_NewAudioStream) newAudioStream;
    decltype(&SDL_FreeAudioStream) freeAudioStream;
    decltype(&SDL_AudioStreamPut) audioStreamPut;
    decltype(&SDL_AudioStreamFlush) audioStreamFlush;
    decltype(&SDL_AudioStreamAvailable) audioStreamAvailable;
    decltype(&SDL_AudioStreamGet) audioStreamGet;
    decltype(&SDL_MixAudioFormat) mixAudioFormat;

    decltype(&Mix_OpenAudioDevice) openAudioDevice;
    decltype(&Mix_CloseAudio) closeAudio;
    decltype(&Mix_SetPostMix) setPostMix;
    decltype(&Mix_GetSoundFonts) getSoundFonts;
    decltype(&Mix_SetSoundFonts) setSoundFonts;
    decltype(&Mix_SetTimidityCfg) setTimidityCfg;
    decltype(&Mix_LoadMUSType_RW) loadMusic;
    decltype(&Mix_FreeMusic) freeMusic;
    decltype(&Mix_PlayMusic) playMusic;

private:
    void keepQuiet(void* sdl, void* mixer) const;
};

} // namespace trovarium
