#pragma once

#include "platform/media/MediaService.h"

#include <functional>
#include <future>
#include <memory>

namespace trovarium {

class FileService;
class MpvLibrary;
class SoundPlayer;

// The media libraries of the desktop put together, each loaded when it is first needed.
class DesktopMedia : public MediaService {
public:
    // Waits for the condition as Desktop::waitUntil does.
    using Wait = std::function<bool(const std::function<bool()>& condition, int milliseconds)>;

    DesktopMedia(const FileService& files, Wait wait);
    ~DesktopMedia() override; // behind the films

    void expectFilm() override;
    std::unique_ptr<FilgraphManager> newFilgraphManager() override;
    void sndPlaySound(std::string_view name) override;
    void mciSendString(std::string_view command) override;

private:
    const FileService& m_files;
    Wait m_wait;
    std::unique_ptr<SoundPlayer> m_sound;
    std::shared_future<std::shared_ptr<const MpvLibrary>> m_filmLibrary; // without a state until a film is expected
};

} // namespace trovarium
