#include "platform/sdl/WaveClip.h"

#include "platform/sdl/SoundFile.h"

#include <algorithm>

namespace trovarium {

namespace {

constexpr std::int64_t LargestClip = 100'000'000; // bytes

// Of a damaged file one frame would become thousands, which holds up all that sounds.
constexpr int LowestRate = 1000; // frames a second

int bytesPerFrame(const SDL_AudioSpec& spec)
{
    return SDL_AUDIO_BITSIZE(spec.format) / 8 * spec.channels;
}

} // namespace

std::unique_ptr<WaveClip> WaveClip::load(const SdlLibrary& sdl, const std::string& native)
{
    SDL_RWops* const file = openSoundFile(sdl, native, LargestClip);
    if (file == nullptr)
        return nullptr;
    std::unique_ptr<WaveClip> clip(new WaveClip(sdl));
    SDL_AudioSpec& spec = clip->m_spec;
    Uint8* samples = nullptr;
    if (sdl.loadWav(file, 1, &spec, &samples, &clip->m_length) == nullptr)
        return nullptr;
    clip->m_samples = {samples, sdl.freeWav};
    if (spec.freq < LowestRate || spec.channels == 0)
        return nullptr;
    clip->m_length -= clip->m_length % static_cast<Uint32>(bytesPerFrame(spec));
    clip->m_stream = {
        sdl.newAudioStream(spec.format, spec.channels, spec.freq, DeviceFormat, DeviceChannels, DeviceRate),
        sdl.freeAudioStream};
    return clip->m_stream ? std::move(clip) : nullptr;
}

bool WaveClip::feed(int length)
{
    if (m_fed == m_length)
        return false;
    const Sint64 frames = Sint64(length) * m_spec.freq / DeviceRate / (DeviceChannels * Sint64(sizeof(Sint16))) + 1;
    const Uint32 piece =
        static_cast<Uint32>(std::min<Sint64>(frames * bytesPerFrame(m_spec), Sint64(m_length) - m_fed));
    const bool put = m_sdl.audioStreamPut(m_stream.get(), m_samples.get() + m_fed, static_cast<int>(piece)) == 0;
    m_fed = put ? m_fed + piece : m_length;
    if (m_fed == m_length)
        m_sdl.audioStreamFlush(m_stream.get());
    return true;
}

void WaveClip::mixInto(Uint8* mixed, int length)
{
    while (m_sdl.audioStreamAvailable(m_stream.get()) < length && feed(length)) { }
    m_piece.resize(static_cast<std::size_t>(length));
    const int got = m_sdl.audioStreamGet(m_stream.get(), m_piece.data(), length);
    if (got > 0)
        m_sdl.mixAudioFormat(mixed, m_piece.data(), DeviceFormat, static_cast<Uint32>(got), SDL_MIX_MAXVOLUME);
}

} // namespace trovarium
