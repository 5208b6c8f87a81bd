// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/media/WaveClip.h"

#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace trovarium {

// A command of the music sequencer.
struct MusicCommand {
    enum class Act { Open, Play, Close };

    Act act;
    std::string alias; // never empty
    std::string path;  // of Open only
};

// Reads `open "PATH" type sequencer alias NAME`, `play NAME` and `close NAME`; none for anything else. The path may
// hold double quotes of its own.
std::optional<MusicCommand> parseMusicCommand(std::string_view command);

// The open sound device with what sounds on it: one wave clip and one piece of music, mixed. Used by one thread.
class SoundDevice {
public:
    // Only the clip whose order has the number `latestClip` is audible; another thread may raise that number at any
    // time. "Device unavailable".
    explicit SoundDevice(const std::atomic<unsigned>& latestClip);
    ~SoundDevice();
    SoundDevice(const SoundDevice&) = delete;
    SoundDevice& operator=(const SoundDevice&) = delete;

    // Stops the current clip and starts another one. With an empty path, or a file that can't be played, it only stops.
    void playClip(const std::string& native, unsigned order);
    // Reads the next part of the current clip. Returns how long the next call can wait; none if the clip is read.
    std::optional<std::chrono::milliseconds> readOn();
    // A piece of music is opened under an alias; the path is native. Playing one ends the one before.
    void carryOut(const MusicCommand& command);

private:
    void openPiece(const MusicCommand& command);
    static void addClip(void* device, Uint8* mixed, int length); // on the device's own thread

    const std::atomic<unsigned>& m_latestClip;
    SdlLibrary m_sdl;
    std::map<std::string, std::unique_ptr<Mix_Music, decltype(&Mix_FreeMusic)>> m_pieces;
    std::mutex m_clipAccess; // guards the clip; held only to mix or swap it, as the audio callback waits for it
    std::unique_ptr<WaveClip> m_clip;
    unsigned m_clipOrder = 0;
};

} // namespace trovarium
