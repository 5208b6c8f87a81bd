// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/SoundDevice.h"

#include "runtime/Failure.h"

#include <utility>

namespace trovarium {

namespace {

// 12 ms: a clip sounds so soon after it is read.
constexpr int FramesAtOnce = 512;

// A thousand times what a piece has. Reading one takes up some thirty times its size.
constexpr std::int64_t LargestPiece = 10'000'000; // bytes

// Where Debian's package puts it, for a mixer that finds none by itself.
constexpr const char* SoundFont = "/usr/share/sounds/sf2/TimGM6mb.sf2";

constexpr std::string_view OpenHead = "open \"";
constexpr std::string_view OpenTail = "\" type sequencer alias ";

std::optional<MusicCommand> named(MusicCommand::Act act, std::string_view alias, std::string_view path = {})
{
    if (alias.empty() || alias.find(' ') != std::string_view::npos)
        return std::nullopt;
    return MusicCommand{act, std::string(alias), std::string(path)};
}

} // namespace

std::optional<MusicCommand> parseMusicCommand(std::string_view command)
{
    using Act = MusicCommand::Act;
    for (const auto& [head, act] : {std::pair("play ", Act::Play), std::pair("close ", Act::Close)}) {
        if (command.starts_with(head))
            return named(act, command.substr(std::string_view(head).size()));
    }
    const std::size_t tail = command.rfind(OpenTail);
    if (!command.starts_with(OpenHead) || tail == std::string_view::npos || tail < OpenHead.size())
        return std::nullopt;
    return named(
        Act::Open, command.substr(tail + OpenTail.size()), command.substr(OpenHead.size(), tail - OpenHead.size()));
}

SoundDevice::SoundDevice(const std::atomic<unsigned>& latestClip)
    : m_latestClip(latestClip)
{
    m_sdl.setMainReady();
    m_sdl.setHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    m_sdl.setHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "Trovarium"); // in the desktop's volume control
    if (m_sdl.initSubSystem(SDL_INIT_AUDIO) != 0)
        throw Failure(FailureKind::DeviceUnavailable);
    if (m_sdl.openAudioDevice(DeviceRate, DeviceFormat, DeviceChannels, FramesAtOnce, nullptr, 0) != 0) {
        m_sdl.quitSubSystem(SDL_INIT_AUDIO);
        throw Failure(FailureKind::DeviceUnavailable);
    }
    if (m_sdl.getSoundFonts() == nullptr)
        m_sdl.setSoundFonts(SoundFont);
    // The mixer's other synthesizer would read a "timidity.cfg" of the working folder, and what that names.
    m_sdl.setTimidityCfg("/dev/null");
    m_sdl.setPostMix(&SoundDevice::addClip, this);
}

SoundDevice::~SoundDevice()
{
    m_sdl.setPostMix(nullptr, nullptr);
    m_pieces.clear();
    m_sdl.closeAudio();
    m_sdl.quitSubSystem(SDL_INIT_AUDIO);
    m_sdl.tlsCleanup(); // which SDL does by itself for its own threads only
}

// A newer order may have to wait for a disk that the old clip is read from, but silences it at once.
void SoundDevice::addClip(void* device, Uint8* mixed, int length)
{
    auto& self = *static_cast<SoundDevice*>(device);
    const std::lock_guard lock(self.m_clipAccess);
    if (self.m_clip && self.m_clipOrder == self.m_latestClip)
        self.m_clip->mixInto(mixed, length);
}

// The old clip ends before the new one is read. It is freed outside the lock, so that the audio callback doesn't wait
// for that.
void SoundDevice::playClip(const std::string& native, unsigned order)
{
    const auto exchange = [this, order](std::unique_ptr<WaveClip> clip) {
        const std::lock_guard lock(m_clipAccess);
        m_clipOrder = order;
        std::swap(m_clip, clip);
        return clip;
    };
    exchange(nullptr).reset();
    if (!native.empty())
        exchange(WaveClip::open(m_sdl, native));
}

std::optional<std::chrono::milliseconds> SoundDevice::readOn()
{
    return m_clip ? m_clip->readOn() : std::nullopt;
}

void SoundDevice::openPiece(const MusicCommand& command)
{
    const SoundFile file(command.path);
    if (file.size() == 0 || file.size() > LargestPiece)
        return;
    const std::string bytes = file.read(0, static_cast<std::size_t>(file.size()));
    SDL_RWops* const reader = m_sdl.rwFromConstMem(bytes.data(), static_cast<int>(bytes.size()));
    if (Mix_Music* const piece = reader != nullptr ? m_sdl.loadMusic(reader, MUS_MID, 1) : nullptr)
        m_pieces.try_emplace(command.alias, piece, m_sdl.freeMusic);
}

void SoundDevice::carryOut(const MusicCommand& command)
{
    const auto piece = m_pieces.find(command.alias);
    const bool isOpen = piece != m_pieces.end();
    if (command.act == MusicCommand::Act::Open && !isOpen)
        openPiece(command);
    else if (command.act == MusicCommand::Act::Play && isOpen)
        m_sdl.playMusic(piece->second.get(), 1); // once
    else if (command.act == MusicCommand::Act::Close && isOpen)
        m_pieces.erase(piece);
}

} // namespace trovarium
