#include "platform/toolkit/OneLine.h"

namespace trovarium {

std::string oneLine(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        const bool secondOfPair = text[index] == '\n' && index > 0 && text[index - 1] == '\r';
        if (secondOfPair)
            continue;
        const bool lineEnd = text[index] == '\r' || text[index] == '\n';
        result += lineEnd ? ' ' : text[index];
    }
    return result;
}

} // namespace trovarium
