#include "platform/media/SoundOutput.h"

#include <cstdlib>
#include <dirent.h>
#include <memory>
#include <string>
#include <string_view>
#include <unistd.h>

namespace trovarium {

namespace {

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

bool isThere(const std::string& path)
{
    return access(path.c_str(), F_OK) == 0;
}

bool soundServerIsThere()
{
    const std::string folder = environment("XDG_RUNTIME_DIR");
    return !environment("PULSE_SERVER").empty() || !environment("PIPEWIRE_REMOTE").empty()
        || (!folder.empty() && (isThere(folder + "/pulse/native") || isThere(folder + "/pipewire-0")));
}

// One that plays, such as "pcmC0D3p", or a definition of the user's own, such as a loudspeaker in the network.
bool soundDeviceIsThere()
{
    if (isThere(environment("HOME") + "/.asoundrc") || isThere("/etc/asound.conf"))
        return true;
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir("/dev/snd"), closedir);
    while (const dirent* entry = folder ? readdir(folder.get()) : nullptr) {
        const std::string_view name = entry->d_name;
        if (name.starts_with("pcm") && name.ends_with("p"))
            return true;
    }
    return false;
}

} // namespace

// The files of SDL_DISKAUDIOFILE, which have no head, hold one kind of samples whoever writes them.
std::vector<std::pair<const char*, const char*>> filmSoundOptions()
{
    const std::string wanted = environment("SDL_AUDIODRIVER");
    if (wanted == "disk")
        return {{"ao", "sdl"}, {"audio-format", "s16"}, {"audio-channels", "stereo"}, {"audio-samplerate", "44100"}};
    if (wanted == "dummy" || (!soundServerIsThere() && !soundDeviceIsThere()))
        return {{"ao", "null"}};
    return {};
}

} // namespace trovarium
