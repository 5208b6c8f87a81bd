#include "platform/media/WaveClip.h"

#include <algorithm>
#include <utility>

namespace trovarium {

namespace {

using std::chrono::milliseconds;

constexpr int SecondsAhead = 5;          // as long as a disk may sleep
constexpr Sint64 MostAhead = 32'000'000; // bytes, whatever rate a damaged file tells
constexpr milliseconds Pause{500};

// Of a damaged file one frame would become thousands, which holds up all that sounds.
constexpr int LowestRate = 1000; // frames a second

} // namespace

WaveClip::WaveClip(const SdlLibrary& sdl, const std::string& native)
    : m_sdl(sdl)
    , m_file(std::in_place, sdl, native)
{
}

std::unique_ptr<WaveClip> WaveClip::open(const SdlLibrary& sdl, const std::string& native)
{
    std::unique_ptr<WaveClip> clip(new WaveClip(sdl, native));
    std::optional<WavePiece> piece = clip->m_file->next();
    if (!piece || piece->spec.freq < LowestRate || piece->spec.channels == 0)
        return nullptr;
    const SDL_AudioSpec spec = clip->m_spec = piece->spec;
    clip->m_bytesPerFrame = SDL_AUDIO_BITSIZE(spec.format) / 8 * spec.channels;
    clip->m_stream = {
        sdl.newAudioStream(spec.format, spec.channels, spec.freq, DeviceFormat, DeviceChannels, DeviceRate),
        sdl.freeAudioStream};
    clip->add(std::move(*piece));
    return clip->m_stream ? std::move(clip) : nullptr;
}

void WaveClip::add(WavePiece piece)
{
    const std::lock_guard lock(m_access);
    piece.length -= piece.length % static_cast<Uint32>(m_bytesPerFrame);
    m_length += piece.length;
    m_ready.push_back(std::move(piece));
}

std::optional<milliseconds> WaveClip::readOn()
{
    if (!m_file)
        return std::nullopt;
    if (isFarAhead())
        return Pause;
    if (std::optional<WavePiece> piece = m_file->next()) {
        add(std::move(*piece));
        return milliseconds::zero();
    }
    m_file.reset();
    const std::lock_guard lock(m_access);
    m_isRead = true;
    return std::nullopt;
}

bool WaveClip::isFarAhead()
{
    const std::lock_guard lock(m_access);
    return m_length > std::min(Sint64(SecondsAhead) * m_spec.freq * m_bytesPerFrame, MostAhead);
}

bool WaveClip::feed(int length)
{
    const std::lock_guard lock(m_access);
    if (m_ready.empty()) {
        // What the stream holds back for the next piece is given out with it, or here.
        if (std::exchange(m_isRead, false))
            m_sdl.audioStreamFlush(m_stream.get());
        return false;
    }
    WavePiece& piece = m_ready.front();
    const Sint64 frames = Sint64(length) * m_spec.freq / DeviceRate / (DeviceChannels * Sint64(sizeof(Sint16))) + 1;
    const auto size = static_cast<Uint32>(std::min<Sint64>(frames * m_bytesPerFrame, piece.length - m_fed));
    m_sdl.audioStreamPut(m_stream.get(), piece.samples.get() + m_fed, static_cast<int>(size));
    m_fed += size;
    m_length -= size;
    if (m_fed == piece.length) {
        m_ready.pop_front();
        m_fed = 0;
    }
    return true;
}

void WaveClip::mixInto(Uint8* mixed, int length)
{
    while (m_sdl.audioStreamAvailable(m_stream.get()) < length && feed(length)) { }
    m_mixed.resize(static_cast<std::size_t>(length));
    const int got = m_sdl.audioStreamGet(m_stream.get(), m_mixed.data(), length);
    if (got > 0)
        m_sdl.mixAudioFormat(mixed, m_mixed.data(), DeviceFormat, static_cast<Uint32>(got), SDL_MIX_MAXVOLUME);
}

} // namespace trovarium
