#pragma once

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

    bool operator==(const MusicCommand&) const = default;
};

// Reads `open "PATH" type sequencer alias NAME`, `play NAME` and `close NAME`; none for anything else. The path may
// hold double quotes of its own.
std::optional<MusicCommand> parseMusicCommand(std::string_view command);

} // namespace trovarium
