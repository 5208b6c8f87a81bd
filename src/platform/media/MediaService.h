#pragma once

#include <memory>
#include <string_view>

namespace trovarium {

class FilgraphManager;

// Films and sound. Sound is never in the way: its calls return at once and never fail, whatever is missing.
class MediaService {
public:
    virtual ~MediaService() = default;

    // One may be opened soon: what that takes is got ready meanwhile.
    virtual void expectFilm() = 0;
    // For a film that is still to be opened. "Device unavailable" where none can be.
    virtual std::unique_ptr<FilgraphManager> newFilgraphManager() = 0;

    // Cuts off the wave clip that sounds, and plays this one; a name without a file, such as "0", only cuts off.
    virtual void sndPlaySound(std::string_view name) = 0;

    // The music sequencer: `open "PATH" type sequencer alias NAME`, `play NAME`, `close NAME`. A command that
    // can't be carried out, `close` without a name included, has no effect.
    virtual void mciSendString(std::string_view command) = 0;
};

} // namespace trovarium
