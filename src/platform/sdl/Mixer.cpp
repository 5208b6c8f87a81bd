#include "platform/sdl/Mixer.h"

#include "platform/media/SoundDevice.h"

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace trovarium {

namespace {

constexpr int Rate = 44100;     // frames a second
constexpr int Stereo = 2;       // channels
constexpr int BufferSize = 512; // frames: 12 ms, so that a clip is heard at once
constexpr int ClipChannel = 0;
constexpr off_t LongestClip = 256 << 20; // bytes; a clip is held in memory whole

// Where the user has chosen no soundfont.
constexpr const char* SoundFont = "/usr/share/sounds/sf2/TimGM6mb.sf2";

bool fitsIntoMemory(const std::string& path)
{
    struct stat status { };
    return stat(path.c_str(), &status) == 0 && status.st_size <= LongestClip;
}

} // namespace

Mixer::Mixer()
{
    m_sdl.setHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1", SDL_HINT_OVERRIDE);
    // Looking for a device in vain would take time, and some drivers write of it to standard error.
    m_isOpen = soundCanBeHeard() && open();
    if (!m_isOpen) {
        m_sdl.setHint(SDL_HINT_AUDIODRIVER, "dummy", SDL_HINT_OVERRIDE);
        m_isOpen = open();
    }
    if (std::getenv("SDL_SOUNDFONTS") == nullptr && access(SoundFont, R_OK) == 0)
        m_sdl.setSoundFonts(SoundFont);
}

bool Mixer::open()
{
    if (m_sdl.initSubSystem(SDL_INIT_AUDIO) == 0) {
        if (m_sdl.openAudio(Rate, MIX_DEFAULT_FORMAT, Stereo, BufferSize) == 0)
            return true;
        m_sdl.quitSubSystem(SDL_INIT_AUDIO);
    }
    return false;
}

Mixer::~Mixer()
{
    if (!m_isOpen)
        return;
    stopClip();
    m_sdl.haltMusic();
    for (const auto& [alias, piece] : m_pieces)
        m_sdl.freeMusic(piece);
    m_sdl.closeAudio();
    m_sdl.quit();
    m_sdl.quitSubSystem(SDL_INIT_AUDIO);
}

void Mixer::playClip(const std::string& path)
{
    stopClip();
    if (!m_isOpen || !fitsIntoMemory(path))
        return;
    constexpr int CloseFile = 1;
    m_clip = m_sdl.loadWave(m_sdl.openFile(path.c_str(), "rb"), CloseFile);
    if (m_clip != nullptr)
        m_sdl.playChannel(ClipChannel, m_clip, 0);
}

void Mixer::stopClip()
{
    if (m_clip == nullptr)
        return;
    m_sdl.haltChannel(ClipChannel);
    m_sdl.freeChunk(m_clip);
    m_clip = nullptr;
}

void Mixer::openPiece(const std::string& alias, const std::string& path)
{
    if (!m_isOpen || m_pieces.count(alias) != 0)
        return;
    if (Mix_Music* piece = m_sdl.loadMusic(path.c_str()))
        m_pieces[alias] = piece;
}

// Once, to its end.
void Mixer::playPiece(const std::string& alias)
{
    const auto piece = m_pieces.find(alias);
    if (piece != m_pieces.end() && m_sdl.playMusic(piece->second, 0) == 0)
        m_sounding = alias;
}

void Mixer::closePiece(const std::string& alias)
{
    const auto piece = m_pieces.find(alias);
    if (piece == m_pieces.end())
        return;
    if (alias == m_sounding)
        m_sdl.haltMusic();
    m_sdl.freeMusic(piece->second);
    m_pieces.erase(piece);
}

} // namespace trovarium
