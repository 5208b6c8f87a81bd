#pragma once

#include "platform/files/Descriptor.h"
#include "platform/media/SdlLibrary.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace trovarium {

// Samples of a wave file, in the form that the file has them in.
struct WavePiece {
    SDL_AudioSpec spec{};
    std::unique_ptr<Uint8, std::function<void(Uint8*)>> samples;
    Uint32 length = 0; // in bytes
};

// Reads a wave file piece by piece, so that a long one begins as soon as a short one. Each piece is given to SDL as a
// file of its own, behind the file's format: so all formats are decoded that SDL knows.
class WaveFile {
public:
    WaveFile(const SdlLibrary& sdl, const std::string& native);

    // The next tenths of a second to seconds; none at the end, and for what is no wave file or can't be read.
    std::optional<WavePiece> next();

private:
    bool findSamples();
    bool takeFormat(const std::string& chunk);
    bool takeSamples(const std::string& chunk);
    std::string read(off_t place, std::size_t count) const; // fewer bytes at the end and behind a failure

    const SdlLibrary& m_sdl;
    Descriptor m_file;
    std::string m_format; // its chunk
    std::size_t m_blockSize = 1;
    off_t m_place = 0; // of the next piece
    off_t m_end = 0;
};

} // namespace trovarium
