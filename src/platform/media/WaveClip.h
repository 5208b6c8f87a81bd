// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/Descriptor.h"
#include "platform/media/SdlLibrary.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace trovarium {

// A regular file that is read; one of size 0 for anything else: a pipe would block for ever.
class SoundFile {
public:
    explicit SoundFile(const std::string& native);

    std::int64_t size() const { return m_size; }
    std::string read(std::int64_t place, std::size_t count) const; // fewer bytes at the end and behind a failure

private:
    Descriptor m_file;
    std::int64_t m_size = 0;
};

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

    const SdlLibrary& m_sdl;
    SoundFile m_file;
    std::string m_format; // its chunk
    std::size_t m_blockSize = 1;
    std::int64_t m_place = 0; // of the next piece
    std::int64_t m_end = 0;
};

// What the device is opened with, and what all sound is turned into.
inline constexpr int DeviceRate = 44100; // frames a second
inline constexpr int DeviceChannels = 2;
inline constexpr SDL_AudioFormat DeviceFormat = AUDIO_S16SYS;

// A wave file that sounds from its start to its end. It is read a few seconds ahead, and turned into the device's form
// piece by piece: for a clip of three minutes the whole of it at once takes a quarter of a second.
class WaveClip {
public:
    // Null for what can't be played.
    static std::unique_ptr<WaveClip> open(const SdlLibrary& sdl, const std::string& native);

    // Reads the next piece where it is time for it, and tells for how long the clip can then be left alone; none: it is
    // read.
    std::optional<std::chrono::milliseconds> readOn();

    // Adds the next `length` bytes in the device's form; nothing behind the end. For the device's thread.
    void mixInto(Uint8* mixed, int length);

private:
    WaveClip(const SdlLibrary& sdl, const std::string& native);

    void add(WavePiece piece);
    bool isFarAhead();
    bool feed(int length); // false where nothing is ready

    const SdlLibrary& m_sdl;
    std::optional<WaveFile> m_file; // until it is read
    SDL_AudioSpec m_spec{};
    int m_bytesPerFrame = 0;
    std::unique_ptr<SDL_AudioStream, std::function<void(SDL_AudioStream*)>> m_stream; // the device's thread's
    std::vector<Uint8> m_mixed;

    std::mutex m_access; // to what both threads use
    std::deque<WavePiece> m_ready;
    Uint32 m_fed = 0;    // bytes of the first one
    Sint64 m_length = 0; // bytes of all, without those
    bool m_isRead = false;
};

} // namespace trovarium
