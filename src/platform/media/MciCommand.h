#pragma once

#include <string>
#include <string_view>

namespace trovarium {

// A command for the music sequencer, read: `open "PATH" type sequencer alias NAME`, `play NAME`, `close NAME`.
struct MciCommand {
    enum class Verb { None, Open, Play, Close }; // None: nothing that can be carried out

    Verb verb = Verb::None;
    std::string path; // of Open
    std::string alias;
};

MciCommand readMciCommand(std::string_view command);

} // namespace trovarium
