#pragma once

#include "platform/sdl/SdlLibrary.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace trovarium {

// What the device is opened with, and what all sound is turned into.
inline constexpr int DeviceRate = 44100; // frames a second
inline constexpr int DeviceChannels = 2;
inline constexpr SDL_AudioFormat DeviceFormat = AUDIO_S16SYS;

// A wave file that sounds from its start to its end. It is turned into the device's form piece by piece while it
// sounds: for a clip of three minutes the whole of it at once takes a quarter of a second.
class WaveClip {
public:
    // Null for what can't be played. A clip of 100 MB (ten minutes of the best quality) is read in 60 ms; a longer
    // one counts as damaged, since it would only take up memory.
    static std::unique_ptr<WaveClip> load(const SdlLibrary& sdl, const std::string& native);

    // Adds the next `length` bytes in the device's form; nothing behind the end. For the device's thread.
    void mixInto(Uint8* mixed, int length);

private:
    template <class Thing>
    using Owned = std::unique_ptr<Thing, std::function<void(Thing*)>>;

    explicit WaveClip(const SdlLibrary& sdl)
        : m_sdl(sdl)
    {
    }

    bool feed(int length); // false at the end

    const SdlLibrary& m_sdl;
    SDL_AudioSpec m_spec{};
    Owned<Uint8> m_samples;
    Uint32 m_length = 0; // of the samples, in bytes
    Uint32 m_fed = 0;
    Owned<SDL_AudioStream> m_stream;
    std::vector<Uint8> m_piece;
};

} // namespace trovarium
