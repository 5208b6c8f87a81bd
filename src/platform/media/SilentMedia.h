#pragma once

#include "platform/media/FilgraphManager.h"
#include "platform/media/MediaService.h"
#include "runtime/Failure.h"

namespace trovarium {

// For a program without a media library: no film opens, and nothing sounds.
class SilentMedia : public MediaService {
public:
    void expectFilm() override { }
    std::unique_ptr<FilgraphManager> newFilgraphManager() override { throw Failure(FailureKind::DeviceUnavailable); }
    void sndPlaySound(std::string_view) override { }
    void mciSendString(std::string_view) override { }
};

} // namespace trovarium
