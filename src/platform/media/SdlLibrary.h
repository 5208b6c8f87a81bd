// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/system/DynamicLibrary.h"

#define SDL_MAIN_HANDLED
#include <SDL.h>
#include <SDL_mixer.h>

namespace trovarium {

// The functions of SDL and its mixer that sound needs. They write nothing to standard error.
class SdlLibrary {
    DynamicLibrary m_sdl{"libSDL2-2.0.so.0"};
    DynamicLibrary m_mixer{"libSDL2_mixer-2.0.so.0"};

public:
    SdlLibrary(); // "Device unavailable"

    decltype(&SDL_SetMainReady) setMainReady = m_sdl["SDL_SetMainReady"];
    decltype(&SDL_SetHint) setHint = m_sdl["SDL_SetHint"];
    decltype(&SDL_InitSubSystem) initSubSystem = m_sdl["SDL_InitSubSystem"];
    decltype(&SDL_QuitSubSystem) quitSubSystem = m_sdl["SDL_QuitSubSystem"];
    decltype(&SDL_TLSCleanup) tlsCleanup = m_sdl["SDL_TLSCleanup"];
    decltype(&SDL_RWFromConstMem) rwFromConstMem = m_sdl["SDL_RWFromConstMem"];
    decltype(&SDL_LoadWAV_RW) loadWav = m_sdl["SDL_LoadWAV_RW"];
    decltype(&SDL_FreeWAV) freeWav = m_sdl["SDL_FreeWAV"];
    decltype(&SDL_NewAudioStream) newAudioStream = m_sdl["SDL_NewAudioStream"];
    decltype(&SDL_FreeAudioStream) freeAudioStream = m_sdl["SDL_FreeAudioStream"];
    decltype(&SDL_AudioStreamPut) audioStreamPut = m_sdl["SDL_AudioStreamPut"];
    decltype(&SDL_AudioStreamFlush) audioStreamFlush = m_sdl["SDL_AudioStreamFlush"];
    decltype(&SDL_AudioStreamAvailable) audioStreamAvailable = m_sdl["SDL_AudioStreamAvailable"];
    decltype(&SDL_AudioStreamGet) audioStreamGet = m_sdl["SDL_AudioStreamGet"];
    decltype(&SDL_MixAudioFormat) mixAudioFormat = m_sdl["SDL_MixAudioFormat"];

    decltype(&Mix_OpenAudioDevice) openAudioDevice = m_mixer["Mix_OpenAudioDevice"];
    decltype(&Mix_CloseAudio) closeAudio = m_mixer["Mix_CloseAudio"];
    decltype(&Mix_SetPostMix) setPostMix = m_mixer["Mix_SetPostMix"];
    decltype(&Mix_GetSoundFonts) getSoundFonts = m_mixer["Mix_GetSoundFonts"];
    decltype(&Mix_SetSoundFonts) setSoundFonts = m_mixer["Mix_SetSoundFonts"];
    decltype(&Mix_SetTimidityCfg) setTimidityCfg = m_mixer["Mix_SetTimidityCfg"];
    decltype(&Mix_LoadMUSType_RW) loadMusic = m_mixer["Mix_LoadMUSType_RW"];
    decltype(&Mix_FreeMusic) freeMusic = m_mixer["Mix_FreeMusic"];
    decltype(&Mix_PlayMusic) playMusic = m_mixer["Mix_PlayMusic"];
};

} // namespace trovarium
