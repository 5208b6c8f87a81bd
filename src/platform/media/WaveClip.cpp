// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/WaveClip.h"

#include <algorithm>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <utility>

namespace trovarium {

namespace {

using std::chrono::milliseconds;

constexpr int SecondsAhead = 5;          // as long as a disk may sleep
constexpr Sint64 MostAhead = 32'000'000; // bytes, whatever rate a damaged file tells
constexpr milliseconds Pause{500};

// Of a damaged file one frame would become thousands, which holds up all that sounds.
constexpr int LowestRate = 1000; // frames a second

constexpr std::size_t PieceSize = 16'384;   // bytes; a few milliseconds of work in any format
constexpr std::size_t LargestFormat = 4096; // bytes
constexpr int MostChunks = 10'000;          // before the samples; a damaged file may have millions

// A chunk of the file begins with its kind and the size of what follows.
constexpr std::size_t ChunkHead = 8;
constexpr std::size_t FileHead = ChunkHead + 4;
constexpr std::size_t BlockSizePlace = ChunkHead + 12; // in the chunk of the format

std::size_t sizeOf(std::string_view chunk)
{
    std::size_t size = 0;
    for (std::size_t i = ChunkHead; i-- > ChunkHead - 4;)
        size = size << 8 | static_cast<unsigned char>(chunk[i]);
    return size;
}

std::string chunkOf(std::string_view kind, std::string_view content)
{
    std::string chunk(kind);
    for (int i = 0; i < 4; ++i)
        chunk += static_cast<char>(content.size() >> 8 * i);
    return chunk.append(content);
}

} // namespace

// Also through a link. Opening alone would start some devices, so the kind is asked before, and again behind it, since
// something else may have taken the name.
SoundFile::SoundFile(const std::string& native)
{
    struct stat status = {};
    if (stat(native.c_str(), &status) == 0 && S_ISREG(status.st_mode))
        m_file = Descriptor(::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (m_file.isOpen() && fstat(m_file.handle(), &status) == 0 && S_ISREG(status.st_mode))
        m_size = status.st_size;
}

std::string SoundFile::read(std::int64_t place, std::size_t count) const
{
    std::string bytes(count, '\0');
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got = pread(m_file.handle(), &bytes[done], count - done, place + static_cast<off_t>(done));
        if (got <= 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    bytes.resize(done);
    return bytes;
}

WaveFile::WaveFile(const SdlLibrary& sdl, const std::string& native)
    : m_sdl(sdl)
    , m_file(native)
    , m_end(m_file.size())
{
    if (!findSamples())
        m_place = m_end = 0;
}

bool WaveFile::findSamples()
{
    const std::string head = m_file.read(0, FileHead);
    if (!head.starts_with("RIFF") || !head.ends_with("WAVE"))
        return false;
    m_place = FileHead;
    for (int i = 0; i < MostChunks; ++i) {
        const std::string chunk = m_file.read(m_place, ChunkHead);
        if (chunk.size() < ChunkHead || (chunk.starts_with("fmt ") && !takeFormat(chunk)))
            return false;
        if (chunk.starts_with("data"))
            return takeSamples(chunk);
        m_place += static_cast<std::int64_t>(ChunkHead + sizeOf(chunk) + sizeOf(chunk) % 2);
    }
    return false;
}

bool WaveFile::takeFormat(const std::string& chunk)
{
    const std::size_t size = sizeOf(chunk);
    if (size > LargestFormat)
        return false;
    const std::size_t whole = ChunkHead + size + size % 2;
    m_format = m_file.read(m_place, whole);
    if (m_format.size() < std::max(whole, BlockSizePlace + 2))
        return false;
    const auto byte = [this](std::size_t place) { return std::size_t{static_cast<unsigned char>(m_format[place])}; };
    m_blockSize = std::max<std::size_t>(byte(BlockSizePlace) | byte(BlockSizePlace + 1) << 8, 1);
    return true;
}

// Blocks that are whole. A file that was cut off has fewer than it tells.
bool WaveFile::takeSamples(const std::string& chunk)
{
    m_place += ChunkHead;
    const std::size_t size = std::min(sizeOf(chunk), static_cast<std::size_t>(m_end - m_place));
    m_end = m_place + static_cast<std::int64_t>(size - size % m_blockSize);
    return !m_format.empty();
}

std::optional<WavePiece> WaveFile::next()
{
    const std::size_t blocks = std::max<std::size_t>(PieceSize / m_blockSize, 1);
    const std::size_t size = std::min(blocks * m_blockSize, static_cast<std::size_t>(m_end - m_place));
    std::string samples = m_file.read(m_place, size);
    samples.resize(samples.size() - samples.size() % m_blockSize); // of a file that has shrunk
    m_place += static_cast<std::int64_t>(size);
    const std::string file = chunkOf("RIFF", "WAVE" + m_format + chunkOf("data", samples));
    WavePiece piece;
    Uint8* decoded = nullptr;
    SDL_RWops* const reader =
        samples.empty() ? nullptr : m_sdl.rwFromConstMem(file.data(), static_cast<int>(file.size()));
    if (reader == nullptr || m_sdl.loadWav(reader, 1, &piece.spec, &decoded, &piece.length) == nullptr) {
        m_place = m_end;
        return std::nullopt;
    }
    piece.samples = {decoded, m_sdl.freeWav};
    return piece;
}

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
        // The stream holds samples back until it gets the next piece; after the last piece they are flushed.
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
