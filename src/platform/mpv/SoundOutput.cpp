#include "platform/mpv/SoundOutput.h"

#include "platform/media/SoundDevice.h"

#include <cstdlib>
#include <string_view>

namespace trovarium {

// The files of SDL_DISKAUDIOFILE, which have no head, hold one kind of samples whoever writes them.
std::vector<std::pair<const char*, const char*>> filmSoundOptions()
{
    const char* wanted = std::getenv("SDL_AUDIODRIVER");
    if (wanted != nullptr && std::string_view(wanted) == "disk")
        return {{"ao", "sdl"}, {"audio-format", "s16"}, {"audio-channels", "stereo"}, {"audio-samplerate", "44100"}};
    if (!soundCanBeHeard())
        return {{"ao", "null"}};
    return {};
}

} // namespace trovarium
