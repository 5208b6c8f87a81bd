#include "platform/media/MusicCommand.h"

namespace trovarium {

namespace {

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

} // namespace trovarium
