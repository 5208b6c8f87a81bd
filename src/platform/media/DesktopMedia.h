// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/media/MediaService.h"
#include "platform/media/SoundPlayer.h"

#include <future>
#include <memory>

namespace trovarium {

class FileService;
class MpvLibrary;

// The media libraries of the desktop put together, each loaded when it is first needed. Outlives the films.
class DesktopMedia : public MediaService {
public:
    DesktopMedia(const FileService& files, Wait wait);

    void expectFilm() override;
    std::unique_ptr<FilgraphManager> newFilgraphManager() override;
    void sndPlaySound(std::string_view name) override { m_sound.sndPlaySound(name); }
    void mciSendString(std::string_view command) override { m_sound.mciSendString(command); }

private:
    const FileService& m_files;
    Wait m_wait;
    SoundPlayer m_sound;
    std::shared_future<std::shared_ptr<const MpvLibrary>> m_filmLibrary; // without a state until a film is expected
};

} // namespace trovarium
