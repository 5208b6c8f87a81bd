#include "platform/files/NamePattern.h"

#include "runtime/Text.h"

#include <algorithm>

namespace trovarium {

namespace {

std::size_t afterCharacter(std::string_view text, std::size_t position)
{
    do {
        ++position;
    } while (position < text.size() && (static_cast<unsigned char>(text[position]) & 0xC0) == 0x80);
    return position;
}

// Goes back to the last "*" alone, so that the work is at most the product of both lengths.
bool matchesOne(std::string_view pattern, std::string_view name)
{
    std::size_t inPattern = 0;
    std::size_t inName = 0;
    std::size_t star = std::string_view::npos; // none yet
    std::size_t afterStar = 0;
    while (inName < name.size()) {
        const char wanted = inPattern < pattern.size() ? pattern[inPattern] : '\0';
        if (wanted == '*') {
            star = inPattern++;
            afterStar = inName;
        } else if (wanted == '?' && inPattern < pattern.size()) {
            ++inPattern;
            inName = afterCharacter(name, inName);
        } else if (inPattern < pattern.size() && wanted == name[inName]) {
            ++inPattern;
            ++inName;
        } else if (star != std::string_view::npos) {
            inPattern = star + 1;
            afterStar = afterCharacter(name, afterStar);
            inName = afterStar;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', inPattern) == std::string_view::npos;
}

} // namespace

NamePattern::NamePattern(std::string_view patterns)
    : m_all(patterns.empty())
{
    while (!patterns.empty()) {
        const std::string_view pattern = patterns.substr(0, patterns.find(';'));
        m_all = m_all || pattern == "*.*" || pattern == "*";
        if (!pattern.empty())
            m_patterns.push_back(upper(trimmed(pattern)));
        patterns.remove_prefix(std::min(pattern.size() + 1, patterns.size()));
    }
}

bool NamePattern::matches(std::string_view capitals) const
{
    return m_all || std::any_of(m_patterns.begin(), m_patterns.end(), [&](const std::string& pattern) {
        return matchesOne(pattern, capitals);
    });
}

} // namespace trovarium
