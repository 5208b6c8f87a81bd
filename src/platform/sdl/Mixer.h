#pragma once

#include "platform/sdl/SdlLibrary.h"

#include <map>
#include <string>

namespace trovarium {

// The sound device with one wave clip and one piece of music on it. It belongs to the thread that made it. Paths are
// native and lead to regular files; one that holds no sound is silence.
class Mixer {
public:
    Mixer(); // "Device unavailable" without the libraries; without a sound device all goes well, unheard
    ~Mixer();
    Mixer(const Mixer&) = delete;
    Mixer& operator=(const Mixer&) = delete;

    void playClip(const std::string& path);
    void stopClip();
    void openPiece(const std::string& alias, const std::string& path);
    void playPiece(const std::string& alias);
    void closePiece(const std::string& alias);

private:
    bool open();

    SdlLibrary m_sdl;
    bool m_isOpen = false;
    Mix_Chunk* m_clip = nullptr;
    std::map<std::string, Mix_Music*> m_pieces; // by alias
    std::string m_sounding;                     // alias
};

} // namespace trovarium
