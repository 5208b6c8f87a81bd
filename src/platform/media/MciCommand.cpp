#include "platform/media/MciCommand.h"

namespace trovarium {

// A quote may stand in the path itself: it ends where the rest of the command begins.
MciCommand readMciCommand(std::string_view command)
{
    constexpr std::string_view Open = "open \"";
    constexpr std::string_view Type = "\" type sequencer alias ";
    constexpr std::string_view Play = "play ";
    constexpr std::string_view Close = "close ";

    MciCommand read;
    const std::size_t type = command.rfind(Type);
    if (command.starts_with(Open) && type != command.npos && type >= Open.size()) {
        read.verb = MciCommand::Verb::Open;
        read.path = command.substr(Open.size(), type - Open.size());
        read.alias = command.substr(type + Type.size());
    } else if (command.starts_with(Play)) {
        read.verb = MciCommand::Verb::Play;
        read.alias = command.substr(Play.size());
    } else if (command.starts_with(Close)) {
        read.verb = MciCommand::Verb::Close;
        read.alias = command.substr(Close.size());
    }
    return read.alias.empty() ? MciCommand() : read;
}

} // namespace trovarium
