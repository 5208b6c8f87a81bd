#pragma once

#define SDL_MAIN_HANDLED // the program has a `main` of its own
#include <SDL.h>
#include <SDL_mixer.h>

namespace trovarium {

// What is used of SDL and its mixer. The libraries are loaded here and not at the start, and where they are missing
// the program is silent. Once loaded they stay.
class SdlLibrary {
public:
    SdlLibrary(); // "Device unavailable"

    decltype(&SDL_SetHintWithPriority) setHint;
    decltype(&SDL_InitSubSystem) initSubSystem;
    decltype(&SDL_QuitSubSystem) quitSubSystem;
    decltype(&Mix_OpenAudio) openAudio;
    decltype(&Mix_CloseAudio) closeAudio;
    decltype(&Mix_Quit) quit;
    decltype(&Mix_SetSoundFonts) setSoundFonts;
    decltype(&Mix_LoadWAV_RW) loadWave;
    decltype(&SDL_RWFromFile) openFile;
    decltype(&Mix_PlayChannel) playChannel;
    decltype(&Mix_HaltChannel) haltChannel;
    decltype(&Mix_FreeChunk) freeChunk;
    decltype(&Mix_LoadMUS) loadMusic;
    decltype(&Mix_PlayMusic) playMusic;
    decltype(&Mix_HaltMusic) haltMusic;
    decltype(&Mix_FreeMusic) freeMusic;
};

} // namespace trovarium
