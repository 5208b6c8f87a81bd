#include "platform/media/WaveFile.h"

#include <algorithm>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <utility>

namespace trovarium {

namespace {

constexpr std::size_t PieceSize = 16 * 1024; // bytes; a few milliseconds of work in any format
constexpr std::size_t LargestFormat = 4096;  // bytes
constexpr int MostChunks = 10'000;           // before the samples; a damaged file may have millions

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

// Also a link to one. The opening alone would set some devices going.
Descriptor openRegular(const std::string& native)
{
    struct stat status = {};
    if (stat(native.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    return Descriptor(::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

} // namespace

// Of a regular file alone: a pipe, which may have come into its place, would block for ever.
WaveFile::WaveFile(const SdlLibrary& sdl, const std::string& native)
    : m_sdl(sdl)
    , m_file(openRegular(native))
{
    struct stat status = {};
    if (!m_file.isOpen() || fstat(m_file.handle(), &status) != 0 || !S_ISREG(status.st_mode))
        return;
    m_end = status.st_size;
    if (!findSamples())
        m_place = m_end = 0;
}

bool WaveFile::findSamples()
{
    const std::string head = read(0, FileHead);
    if (!head.starts_with("RIFF") || !head.ends_with("WAVE"))
        return false;
    m_place = FileHead;
    for (int i = 0; i < MostChunks; ++i) {
        const std::string chunk = read(m_place, ChunkHead);
        if (chunk.size() < ChunkHead || (chunk.starts_with("fmt ") && !takeFormat(chunk)))
            return false;
        if (chunk.starts_with("data"))
            return takeSamples(chunk);
        m_place += static_cast<off_t>(ChunkHead + sizeOf(chunk) + sizeOf(chunk) % 2);
    }
    return false;
}

bool WaveFile::takeFormat(const std::string& chunk)
{
    const std::size_t size = sizeOf(chunk);
    if (size > LargestFormat)
        return false;
    const std::size_t whole = ChunkHead + size + size % 2;
    m_format = read(m_place, whole);
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
    m_end = m_place + static_cast<off_t>(size - size % m_blockSize);
    return !m_format.empty();
}

std::string WaveFile::read(off_t place, std::size_t count) const
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

std::optional<WavePiece> WaveFile::next()
{
    const std::size_t blocks = std::max<std::size_t>(PieceSize / m_blockSize, 1);
    const std::size_t size = std::min(blocks * m_blockSize, static_cast<std::size_t>(m_end - m_place));
    std::string samples = read(m_place, size);
    samples.resize(samples.size() - samples.size() % m_blockSize); // of a file that has shrunk
    m_place += static_cast<off_t>(size);
    const std::string file = chunkOf("RIFF", "WAVE" + m_format + chunkOf("data", samples));
    WavePiece piece;
    Uint8* decoded = nullptr;
    SDL_RWops* const reader = m_sdl.rwFromConstMem(file.data(), static_cast<int>(file.size()));
    if (samples.empty() || reader == nullptr
        || m_sdl.loadWav(reader, 1, &piece.spec, &decoded, &piece.length) == nullptr) {
        m_place = m_end;
        return std::nullopt;
    }
    piece.samples = {decoded, m_sdl.freeWav};
    return piece;
}

} // namespace trovarium
